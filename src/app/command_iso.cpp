#include "app/command_iso.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "app/image_words.h"
#include "app/message_json.h"
#include "app/messages.h"
#include "app/output_file.h"
#include "author/message_recorder.h"
#include "edit/outline_json.h"

namespace quorvelant {

namespace {

struct IsoOptions {
  std::string Folder;
  std::string Image;
  std::string Label;
  bool Force = false;
  bool NoSync = false;
  bool Json = false;
};

std::optional<ImageOrder> OrderFrom(const IsoOptions& options, const CommandContext& context,
                                    UserInterface& ui) {
  const auto label = LabelFor(options.Label, std::filesystem::path(options.Image).stem().string(), ui);
  const auto time = ImageTimeFrom(context.SourceDate, ui);
  if (!label || !time || !MayWrite(options.Image, options.Folder, options.Force, ui) ||
      !HasFolder(options.Image, ui)) {
    return std::nullopt;
  }
  return ImageOrder{.Folder = options.Folder,
                    .Path = options.Image,
                    .Label = *label,
                    .Time = *time,
                    .Replace = options.Force,
                    .Sync = !options.NoSync};
}

int Run(const IsoOptions& options, CommandContext& context) {
  MessageRecorder told(context.Ui);
  ImageResult result;
  if (const auto order = OrderFrom(options, context, told)) {
    result = MakeImage(*order, told);
  }
  if (result.Outcome == ImageOutcome::Stopped) {
    told.Tell(MessageOf(message::ImageStopped, {}));
  }
  const bool done = result.Outcome == ImageOutcome::Done;
  if (options.Json) {
    const nlohmann::ordered_json json{{"version", JsonVersion},
                                      {"ok", done},
                                      {"folder", options.Folder},
                                      {"image", ImageJson(result, options.Image)},
                                      {"messages", MessagesJson(told.Release())}};
    context.Out << JsonText(json) << '\n';
  } else if (done) {
    context.Report(ImageText(result, options.Image));
  }
  return done ? ExitDone : ExitFailed;
}

}  // namespace

void AddIsoCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<IsoOptions>();
  CLI::App* command = program.add_subcommand("iso", "Makes an image to burn of a disc's folder");
  command->add_option("folder", options->Folder, "The disc's VIDEO_TS, or the folder that holds it")
      ->required()
      ->type_name("FOLDER");
  command->add_option("-o,--output", options->Image, "Image to write (.iso)")->required()->type_name("IMAGE");
  command->add_option("--label", options->Label, "Name of the volume; else one made of the image's name")
      ->type_name("NAME");
  command->add_flag("--force", options->Force, "Replace an image that is there");
  command->add_flag("--no-sync", options->NoSync, "Do not wait until the image is safe from a power cut");
  command->add_flag("--json", options->Json, "Print one JSON object");
  command->callback([options, &context] {
    if (options->Image.empty()) {
      throw CLI::RequiredError("--output");
    }
    context.ExitStatus = Run(*options, context);
  });
}

}  // namespace quorvelant
