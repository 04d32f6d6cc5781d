#include "app/command_convert.h"

#include <filesystem>
#include <memory>
#include <string>

#include "app/messages.h"
#include "app/open_project.h"
#include "base/random.h"
#include "check/findings.h"
#include "script/load_findings.h"
#include "script/script_writer.h"

namespace quorvelant {

namespace {

struct ConvertOptions {
  std::string In;
  std::string Out;
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

// Lines that are passed over and commands without a target are reported; what could be read is saved.
int Run(const ConvertOptions& options, CommandContext& context) {
  Project project;
  SilentBoxes quiet(context.Ui);
  const LoadResult load = OpenProject(options.In, project, Rules::Players, quiet);
  const Findings findings = LoadFindings(load);
  for (const Message& finding : findings) {
    context.Ui.Tell(finding);
  }
  if (!load.Loaded || !SaveDataLike(project, OwnScriptText(load), options.Out, context.Ui)) {
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
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
