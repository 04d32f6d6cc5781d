#include "app/command_author.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "analysis/picture_index.h"
#include "app/author_report.h"
#include "app/open_project.h"
#include "app/rules_option.h"
#include "app/run_voice.h"
#include "author/author.h"
#include "author/output_folder.h"
#include "base/random.h"
#include "check/check.h"
#include "check/source_judge.h"
#include "edit/chapter_analysis.h"
#include "edit/file_scanner.h"
#include "model/walk.h"
#include "platform/platform_pictures.h"
#include "script/load_findings.h"
#include "script/script_reader.h"
#include "verify/read_back.h"

namespace quorvelant {

namespace {

constexpr std::string_view SpaceTitle = "Disk Space";
constexpr std::string_view TooLittleSpace = "The disc needs about {}, and {} are free";
constexpr std::string_view StrictTitle = "Strict";
constexpr std::string_view StrictText =
    "There were warnings, and --strict makes them failures: no disc was made";
constexpr std::string_view StoppedTitle = "Stopped";
constexpr std::string_view StoppedText = "The run was stopped; the destination is as it was";
constexpr std::string_view LogTitle = "Log";
constexpr std::string_view LogNotWritten = "The log could not be written";
constexpr std::string_view ReadingStatus = "Reading back";

struct AuthorArguments {
  std::string Project;
  std::string Folder;
  RulesOption RuleSet;
  std::string LogFile;
  bool Analyse = false;
  bool Reindex = false;
  bool Force = false;
  bool Strict = false;
  bool DryRun = false;
  bool Json = false;

  const Rules& RulesUsed() const { return RuleSet.Used(); }
};

// Everything that a run needs behind its arguments.
struct Run {
  const AuthorArguments& Arguments;
  CommandContext& Context;
  RunVoice& Voice;
  PictureService& Pictures;

  bool StrictFails() const { return Arguments.Strict && Voice.Warnings() > 0; }
};

// Builds the indexes of a track's video files anew.
void Reindex(const Run& run, const Project& project, std::size_t track, IndexStore& store) {
  std::vector<IndexSource> files;
  for (const VideoPlay* play : Live(project.Tracks[track].VideoPlays)) {
    const std::string path = SystemPath(play->File, project.SourceFolder());
    if (!play->File.empty() && !IsPicture(path)) {
      files.push_back({path});
    }
  }
  BuildPictureIndex(files, {}, store, run.Voice, true);
}

bool Load(const Run& run, Project& project) {
  SilentBoxes quiet(run.Voice);  // the report holds what the load would say
  const FileScanner scanner(run.Arguments.RulesUsed(), quiet);
  IndexStore store;
  LoadOptions options{.Rules = run.Arguments.RulesUsed(), .Scanner = &scanner};
  options.AnalyseChapters = [&](Project& whole, std::size_t track) {
    if (run.Arguments.Reindex) {
      Reindex(run, whole, track, store);
    }
    if (run.Arguments.Analyse) {
      AnalyseChapters(whole, track, store, run.Voice);
    }
  };
  const LoadResult loaded = LoadScriptFile(run.Arguments.Project, project, options, quiet);
  Findings findings = LoadFindings(loaded);
  Append(findings, CheckProject(project));
  for (const Message& finding : findings) {
    run.Voice.Tell(finding);
  }
  return loaded.MayAuthor() && !HasErrors(findings);
}

// Tells what the plan found and what is to come; false when the run cannot start.
bool Announce(const Run& run, const DiscPlan& plan) {
  for (const Message& finding : plan.Findings) {
    run.Voice.Tell(finding);
  }
  const auto freeBytes = FreeBytes(run.Arguments.Folder);
  if (run.Voice.Events()) {
    run.Voice.Write(PlanJson(plan, freeBytes));
  } else {
    run.Context.Out << PlanText(plan, freeBytes) << std::flush;
  }
  if (plan.HasErrors()) {
    return false;
  }
  if (freeBytes && *freeBytes < plan.NeededBytes()) {
    // Surely too little below the sources' own size; otherwise the estimate may be wrong.
    const bool sure = *freeBytes < plan.VideoBytes + plan.AudioBytes && !run.Arguments.DryRun;
    const std::string text =
        fmt::format(fmt::runtime(TooLittleSpace), SizeText(plan.NeededBytes()), SizeText(*freeBytes));
    run.Voice.Tell(
        {sure ? Severity::Error : Severity::Warning, std::string(SpaceTitle), text, run.Arguments.Folder});
    return !sure;
  }
  return true;
}

AuthorResult WriteFiles(const Run& run, const DiscPlan& plan, const std::string& folder) {
  Log log = StartLog(run.Arguments.LogFile.empty() ? run.Context.LogFile : run.Arguments.LogFile);
  AuthorOptions options = OptionsOf(run.Context.Options, run.Arguments.RulesUsed());
  options.Folder = folder;
  options.TellSuccess = false;
  options.DryRun = run.Arguments.DryRun;
  options.Pictures = &run.Pictures;
  AuthorResult result = AuthorDisc(plan, options, run.Voice, log);
  if (const std::string& file = run.Arguments.LogFile; !file.empty() && !std::filesystem::exists(file)) {
    TellWarning(run.Voice, LogTitle, LogNotWritten, file);
  }
  return result;
}

// Reads the folder back and gives it its name.
bool Complete(const Run& run, OutputFolder& folder) {
  run.Voice.Status(ReadingStatus);
  const auto faults = ReadBack(folder.Path(), run.Voice);
  for (const Message& fault : faults) {
    run.Voice.Tell(fault);
  }
  if (!faults.empty()) {
    return false;
  }
  if (run.StrictFails()) {
    TellError(run.Voice, StrictTitle, StrictText);
    return false;
  }
  return folder.Place(run.Voice);
}

AuthorOutcome Author(const Run& run, const DiscPlan& plan, AuthorResult& result) {
  if (run.Arguments.DryRun) {
    if (!OutputFolder::Judge(run.Arguments.Folder, run.Arguments.Force, run.Voice)) {
      return AuthorOutcome::Failed;
    }
    result = WriteFiles(run, plan, run.Arguments.Folder);
    return run.StrictFails() ? AuthorOutcome::Failed : result.Outcome;
  }
  auto folder = OutputFolder::Prepare(run.Arguments.Folder, run.Arguments.Force, run.Voice);
  if (!folder) {
    return AuthorOutcome::Failed;
  }
  result = WriteFiles(run, plan, folder->Path());
  if (result.Outcome != AuthorOutcome::Done) {
    return result.Outcome;
  }
  return Complete(run, *folder) ? AuthorOutcome::Done : AuthorOutcome::Failed;
}

void Summarise(const Run& run, const DiscPlan& plan, const AuthorResult& result) {
  const AuthorArguments& arguments = run.Arguments;
  if (run.Voice.Events()) {
    run.Voice.Write(ResultJson(result, plan, arguments.Folder, arguments.DryRun));
  } else if (result.Outcome == AuthorOutcome::Done) {
    run.Context.Out << ResultText(result, plan, arguments.Folder, arguments.DryRun) << std::flush;
  }
  if (result.Outcome == AuthorOutcome::Stopped) {
    run.Voice.Tell({Severity::Information, std::string(StoppedTitle), std::string(StoppedText), {}});
  }
}

bool RunAuthor(const AuthorArguments& arguments, CommandContext& context) {
  RunVoice voice(context.Ui, context.Out, arguments.Json);
  const auto pictures = MakePlatformPictures();
  const Run run{arguments, context, voice, *pictures};
  Project project;
  if (!Load(run, project)) {
    return false;
  }
  DiscPlan plan = PlanDisc(project, arguments.RulesUsed(), voice, pictures.get());
  if (!Announce(run, plan)) {
    return false;
  }
  plan.Findings.clear();  // told
  if (run.StrictFails()) {
    TellError(voice, StrictTitle, StrictText);
    return false;
  }
  AuthorResult result;
  result.Outcome = Author(run, plan, result);
  Summarise(run, plan, result);
  return result.Outcome == AuthorOutcome::Done;
}

}  // namespace

AuthorOptions OptionsOf(const Settings& settings, const Rules& rules) {
  const Settings used = rules.GoesBySettings ? settings : Settings{};
  AuthorOptions options;
  for (std::size_t i = 0; i < Regions.size(); ++i) {
    options.Regions.at(static_cast<std::size_t>(Regions.at(i) - 1)) = used.RegionAllowed.at(i);
  }
  options.RemoveSeqEnd = used.RemoveSeqEnd;
  return options;
}

void AddAuthorCommand(CLI::App& program, CommandContext& context) {
  const auto arguments = std::make_shared<AuthorArguments>();
  CLI::App* command = program.add_subcommand("author", "Makes the disc of a project: a VIDEO_TS folder");
  command->add_option("project", arguments->Project, "Project script of either dialect")
      ->required()
      ->type_name("PROJECT");
  command->add_option("-o,--output", arguments->Folder, "Folder that becomes the disc's VIDEO_TS")
      ->required()
      ->type_name("FOLDER");
  command->add_flag("--analyse", arguments->Analyse,
                    "Move chapter times onto pictures where a chapter can start");
  command->add_flag("--reindex", arguments->Reindex, "Build picture indexes anew");
  command->add_flag("--force", arguments->Force, "Replace the disc that a former run made");
  AddRulesOption(*command, arguments->RuleSet, "What players expect, or every traditional number");
  command->add_flag("--strict", arguments->Strict, "Make no disc when there are warnings");
  command->add_flag("--dry-run", arguments->DryRun, "Do everything but write");
  command->add_flag("--json", arguments->Json, "Print one JSON object an event");
  command->add_option("--log-file", arguments->LogFile, "Log of the run instead of the usual one")
      ->type_name("FILE");
  command->callback(
      [arguments, &context] { context.ExitStatus = RunAuthor(*arguments, context) ? ExitDone : ExitFailed; });
}

}  // namespace quorvelant
