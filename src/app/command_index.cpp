#include "app/command_index.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "analysis/picture_index.h"
#include "analysis/quick_scan.h"
#include "app/messages.h"
#include "base/counted.h"
#include "base/file_text.h"

namespace quorvelant {

namespace {

struct IndexCommandOptions {
  std::vector<std::string> Files;
  bool Pictures = false;
  bool Force = false;
};

std::string_view StateText(IndexState state) {
  switch (state) {
    case IndexState::Built:
      return "built";
    case IndexState::Reused:
      return "there already";
    case IndexState::KeptInMemory:
      return "not written";
    case IndexState::NotIndexed:
      break;
  }
  return "not indexed";
}

// Why the file has no index; nothing when it can have one.
std::optional<Message> WhyRefused(const std::string& file, UserInterface& ui) {
  if (const std::string_view fault = WhyNotPlainFile(file); !fault.empty()) {
    return MessageOf(message::IndexRefused, file, fault);
  }
  const auto seen = QuickScanVideo(file, ui);
  if (!seen) {
    return MessageOf(message::IndexWithoutVideo, file);
  }
  return seen->Bitmap ? std::optional(MessageOf(message::IndexOfBitmap, file)) : std::nullopt;
}

bool IndexOne(const std::string& file, const IndexCommandOptions& options, CommandContext& context) {
  if (const auto refusal = WhyRefused(file, context.Ui)) {
    context.Ui.Tell(*refusal);
    return false;
  }
  context.Ui.Status("Indexing " + file);
  const bool lettersMissing = options.Pictures && !std::filesystem::exists(LettersName(file));
  IndexStore store(false, context.CacheFolder);
  const IndexRun run = BuildPictureIndex({{file, false}}, options.Pictures ? file : std::string(), store,
                                         context.Ui, options.Force || lettersMissing);
  if (!run.Complete || run.Files.empty()) {
    return false;
  }
  const FileIndex& result = run.Files.front();
  context.Report(fmt::format("{}: {}, {}, {} entr{}\n", result.Path.empty() ? IndexName(file) : result.Path,
                             StateText(result.State), Counted(result.Index.TotalFrames, "frame"),
                             result.Index.Entries.size(), result.Index.Entries.size() == 1 ? "y" : "ies"));
  return result.State == IndexState::Built || result.State == IndexState::Reused;
}

int Run(const IndexCommandOptions& options, CommandContext& context) {
  bool good = true;
  for (const std::string& file : options.Files) {
    good = IndexOne(file, options, context) && good;
    if (context.Ui.StopRequested()) {
      return ExitFailed;
    }
  }
  return good ? ExitDone : ExitFailed;
}

}  // namespace

void AddIndexCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<IndexCommandOptions>();
  CLI::App* command =
      program.add_subcommand("index", "Builds the picture index (.qvi) beside each video file");
  command->add_option("file", options->Files, "MPEG video elementary streams")->required()->type_name("FILE");
  command->add_flag("--pictures", options->Pictures, "Write the picture types as well (.gpi)");
  command->add_flag("--force", options->Force, "Rebuild an index that is there already");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
