#include "app/command_still.h"

#include <fmt/format.h>

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>

#include "analysis/remedies.h"
#include "app/messages.h"
#include "app/output_file.h"
#include "app/rules_option.h"
#include "base/file_text.h"
#include "base/rules.h"
#include "codec/still_encoder.h"
#include "picture/bitmap_size.h"
#include "platform/platform_pictures.h"

namespace quorvelant {

namespace {

constexpr std::string_view SequenceEndCode{"\x00\x00\x01\xB7", 4};

struct StillOptions {
  std::string Input;
  std::string Output;
  RulesOption RuleSet;
  bool Wide = false;
  bool Force = false;
};

int TellSize(const StillOptions& options, const BitmapSize& size, UserInterface& ui) {
  const std::string line = fmt::format("ffmpeg -i {} -vf scale=720:576 {}", ShellWord(options.Input),
                                       ShellWord(options.Output + ".png"));
  ui.Tell(MessageOf(message::StillSizeOther, options.Input, size.Width, size.Height, line));
  return ExitFailed;
}

int Run(const StillOptions& options, CommandContext& context) {
  UserInterface& ui = context.Ui;
  if (!MayWrite(options.Output, options.Input, options.Force, ui)) {
    return ExitFailed;
  }
  if (const auto oversize = ReadOversize(options.Input)) {
    return TellSize(options, *oversize, ui);
  }
  const Picture bitmap = MakePlatformPictures()->Load(options.Input);
  const Rules& rules = options.RuleSet.Used();
  const Bytes still = EncodeBitmap(bitmap, {.Wide = options.Wide}, rules);
  if (still.empty()) {
    return TellSize(options, {bitmap.Width, bitmap.Height}, ui);
  }
  std::string stream(still.begin(), still.end());
  stream += SequenceEndCode;
  if (const int refused = WriteAside(options.Output, stream); refused != 0) {
    const std::string reason = std::generic_category().message(refused);
    ui.Tell(MessageOf(message::StillNotWritten, options.Output, reason));
    return ExitFailed;
  }
  context.Report(fmt::format("{} bytes, written to {}\n", stream.size(), options.Output));
  return ExitDone;
}

}  // namespace

void AddStillCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<StillOptions>();
  CLI::App* command =
      program.add_subcommand("still", "Turns a picture of a disc's size into a stream of one video picture");
  command
      ->add_option("input", options->Input,
                   "Picture (BMP, PNG, JPEG) of 720x576, 720x480, 360x288 or 360x240")
      ->required()
      ->type_name("IN.bmp");
  command->add_option("output", options->Output, "Video stream to write")->required()->type_name("OUT.m2v");
  command->add_flag("--wide", options->Wide, "For a screen of 16:9");
  command->add_flag("--force", options->Force, "Replace the output file that is there");
  AddRulesOption(*command, options->RuleSet, "Whether colours are rounded or cut");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
