#include "app/command_convert.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <string>

#include "app/messages.h"
#include "app/output_file.h"
#include "base/random.h"
#include "check/findings.h"
#include "desk/open_project.h"
#include "script/load_findings.h"

namespace quorvelant {

namespace {

struct ConvertOptions {
  std::string In;
  std::string Out;
  bool Force = false;
};

bool IsRelative(const std::string& file) {
  const bool hasDrive = file.size() > 1 && file[1] == ':';
  return !file.empty() && !hasDrive && std::filesystem::path(SystemPath(file)).is_relative();
}

std::size_t CountRelative(const Project& project) {
  std::size_t count = 0;
  const auto add = [&count](const auto& plays) {
    for (const auto& play : plays) {
      count += std::size_t{IsRelative(play.File)};
    }
  };
  for (const Track& track : project.Tracks) {
    add(track.VideoPlays);
    for (const AudioStream& stream : track.AudioStreams) {
      add(stream.AudioPlays);
    }
    for (const SubtitleStream& stream : track.SubStreams) {
      add(stream.SubPlays);
    }
  }
  return count;
}

std::filesystem::path FolderOf(const std::string& file) {
  std::error_code failed;
  return std::filesystem::weakly_canonical(std::filesystem::path(SystemPath(file)), failed).parent_path();
}

// A script that moves to another folder no longer finds the files that it names by relative paths.
void TellMovedSources(const ConvertOptions& options, const Project& project, UserInterface& ui) {
  const std::size_t count = CountRelative(project);
  if (count > 0 && FolderOf(options.In) != FolderOf(options.Out)) {
    ui.Tell(
        MessageOf(message::SourcesMoved, options.Out, options.Out, count, FolderOf(options.Out).string()));
  }
}

// A script written over itself loses for good what was not understood, or what its dialect says otherwise.
bool MayReplaceItself(const LoadResult& load, const ConvertOptions& options, UserInterface& ui) {
  const bool loses = load.SkippedCount > 0 || load.IsScenarist;
  if (loses && !options.Force) {
    const std::string what =
        load.SkippedCount > 0 ? fmt::format("{} line{}", load.SkippedCount, load.SkippedCount == 1 ? "" : "s")
                              : "The dialect";
    ui.Tell(MessageOf(message::ConvertLosesLines, options.Out, what));
  }
  return !loses || options.Force;
}

bool MayConvert(const LoadResult& load, const ConvertOptions& options, UserInterface& ui) {
  if (!load.Loaded) {
    return false;  // told
  }
  if (!IsReadWhole(load)) {
    ui.Tell(MessageOf(message::ScriptNotWhole, options.Out));
    return false;
  }
  return IsSameFile(options.In, options.Out) ? MayReplaceItself(load, options, ui)
                                             : MayWrite(options.Out, options.In, options.Force, ui);
}

// Lines that are passed over and commands without a target are reported; what could be read is saved, once
// the script and the heads of its sources were read whole.
int Run(const ConvertOptions& options, CommandContext& context) {
  Project project;
  ReadFaults faults(context.Ui);
  const FileScanner scanner(Rules::Players, faults);
  const LoadResult load =
      LoadScriptFile(options.In, project, {.Rules = Rules::Players, .Scanner = &scanner}, faults);
  Findings findings = LoadFindings(load);
  Append(findings, faults.Told);
  for (const Message& finding : findings) {
    context.Ui.Tell(finding);
  }
  if (!faults.Told.empty() || !MayConvert(load, options, context.Ui) ||
      !SaveLoaded(project, load, options.Out, context.Ui)) {
    return ExitFailed;
  }
  TellMovedSources(options, project, context.Ui);
  return !HasErrors(findings) ? ExitDone : ExitFailed;
}

}  // namespace

void AddConvertCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* command = program.add_subcommand(
      "convert", "Reads a project (.qvp) or a script of the other dialect (.scp) and writes it as a project");
  command->add_option("in", options->In, "Script to read")->required()->type_name("IN");
  command->add_option("out", options->Out, "Project script to write")->required()->type_name("OUT.qvp");
  command->add_flag("--force", options->Force,
                    "Replace a file that is there, also the script itself where lines would be lost");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
