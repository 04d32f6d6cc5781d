#include "app/command_index.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "analysis/picture_index.h"
#include "analysis/quick_scan.h"
#include "base/file_text.h"

namespace quorvelant {

namespace {

constexpr std::string_view IndexTitle = "Index Error";
constexpr std::string_view NoVideo = "it holds no MPEG video to index";
constexpr std::string_view BitmapText = "a bitmap has no index";
constexpr std::string_view OlderTitle = "Index Warning";
constexpr std::string_view OlderText = "the index is older than the file; --force rebuilds it";

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

// Why the file has no index; empty when it can have one.
std::string_view Refusal(const std::string& file, UserInterface& ui) {
  if (const std::string_view fault = WhyNotPlainFile(file); !fault.empty()) {
    return fault;
  }
  const auto seen = QuickScanVideo(file, ui);
  if (!seen) {
    return NoVideo;
  }
  return seen->Bitmap ? BitmapText : std::string_view();
}

bool IndexOne(const std::string& file, const IndexCommandOptions& options, CommandContext& context) {
  if (const std::string_view refusal = Refusal(file, context.Ui); !refusal.empty()) {
    TellError(context.Ui, IndexTitle, refusal, file);
    return false;
  }
  context.Ui.Status("Indexing " + file);
  const bool lettersMissing = options.Pictures && !std::filesystem::exists(LettersName(file));
  IndexStore store;
  const IndexRun run = BuildPictureIndex({{file, false}}, options.Pictures ? file : std::string(), store,
                                         context.Ui, options.Force || lettersMissing);
  if (!run.Complete || run.Files.empty()) {
    return false;
  }
  const FileIndex& result = run.Files.front();
  if (result.State == IndexState::Reused && IndexIsOlder(file)) {
    TellWarning(context.Ui, OlderTitle, OlderText, file);
  }
  context.Out << fmt::format("{}: {}, {} frames, {} entries\n", IndexName(file), StateText(result.State),
                             result.Index.TotalFrames, result.Index.Entries.size());
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
