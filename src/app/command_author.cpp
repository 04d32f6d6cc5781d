#include "app/command_author.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

#include "analysis/picture_index.h"
#include "app/author_report.h"
#include "app/image_words.h"
#include "app/log_file.h"
#include "app/messages.h"
#include "app/output_file.h"
#include "app/run_reporter.h"
#include "author/author.h"
#include "author/message_recorder.h"
#include "base/random.h"
#include "check/findings.h"
#include "check/navigation_check.h"
#include "desk/author_options.h"
#include "desk/open_project.h"
#include "desk/place_names.h"
#include "desk/project_findings.h"
#include "edit/chapter_analysis.h"
#include "model/picture_file.h"
#include "model/walk.h"
#include "platform/platform_pictures.h"
#include "script/script_reader.h"
#include "script/source_scanner.h"

namespace quorvelant {

namespace {

// Builds the indexes of a track's video files anew. False where one cannot be read; that is told.
bool Reindex(const Project& project, std::size_t track, IndexStore& store, UserInterface& ui) {
  std::vector<IndexSource> files;
  for (const VideoPlay* play : Live(project.Tracks[track].VideoPlays)) {
    const std::string path = SystemPath(play->File, project.SourceFolder());
    if (!play->File.empty() && !IsPicture(path)) {
      files.push_back({path});
    }
  }
  return BuildPictureIndex(files, {}, store, ui, true).Complete;
}

// Whether a disc may be made of what was loaded; what was found is told.
bool Load(const AuthorArguments& arguments, const std::string& cacheFolder, Project& project,
          PictureLoader& pictures, UserInterface& ui) {
  ReadFaults faults(ui);  // the findings hold what the load would say
  const FileScanner scanner(arguments.RulesUsed(), faults);
  IndexStore store(arguments.DryRun, cacheFolder);
  LoadOptions options{.Rules = arguments.RulesUsed(), .Scanner = &scanner};
  bool indexed = true;  // chapters of a track without an index would stand where nobody wants them
  options.AnalyseChapters = [&](Project& whole, std::size_t track) {
    const bool hasFiles = std::ranges::any_of(Live(whole.Tracks[track].VideoPlays),
                                              [](const VideoPlay* play) { return !play->File.empty(); });
    if (arguments.Reindex && !Reindex(whole, track, store, ui)) {
      indexed = false;
    } else if (arguments.Analyse && !AnalyseChapters(whole, track, store, ui)) {
      indexed = indexed && !hasFiles;
    }
  };
  const LoadResult loaded = LoadScriptFile(arguments.Project, project, options, faults);
  Findings findings = ProjectFindings(loaded, project, arguments.RulesUsed());
  const auto isRefused = [&](const Message& one) {
    return one.Level == Severity::Error && !(arguments.ForceNavigation && IsNavigationError(one));
  };
  if (std::ranges::any_of(findings, isRefused) ||
      !faults.Told.empty()) {  // no disc follows, and what else is wrong is told at once
    findings = FindingsWithSources(loaded, project, arguments.RulesUsed(), ui, &pictures);
  }
  AppendReadFaults(findings, faults);
  for (Message& finding : findings) {
    const bool isForced = arguments.ForceNavigation && IsNavigationError(finding);
    finding.Level = isForced ? Severity::Warning : finding.Level;
    ui.Tell(finding);
  }
  return indexed && loaded.MayAuthor() && !HasErrors(findings);
}

// Whether the image that is asked for may be made; its order goes into `order`.
bool AddImage(const AuthorArguments& arguments, const CommandContext& context, AuthorOrder& order,
              UserInterface& ui) {
  if (arguments.Image.empty()) {
    return true;
  }
  const auto label = LabelFor(arguments.Label, std::filesystem::path(arguments.Project).stem().string(), ui);
  const auto time = ImageTimeFrom(context.SourceDate, ui);
  if (!label || !time || !MayWrite(arguments.Image, arguments.Project, arguments.Force, ui) ||
      !HasFolder(arguments.Image, ui)) {
    return false;
  }
  if (!arguments.Folder.empty() && IsWithin(arguments.Image, arguments.Folder)) {
    ui.Tell(MessageOf(message::OutputInDisc, arguments.Image));
    return false;
  }
  order.Image = ImageOrder{.Path = arguments.Image,
                           .Label = *label,
                           .Time = *time,
                           .Replace = arguments.Force,
                           .Sync = !arguments.NoSync};
  return true;
}

AuthorOrder OrderFrom(const AuthorArguments& arguments, const CommandContext& context) {
  AuthorOrder order = OrderOf(context.Options, arguments.RulesUsed());
  order.Folder = arguments.Folder;
  order.Force = arguments.Force;
  order.Strict = arguments.Strict;
  order.DryRun = arguments.DryRun;
  order.Sync = !arguments.NoSync;
  order.Verify = arguments.Verify;
  order.ForceNavigation = arguments.ForceNavigation;
  order.MustLog = !arguments.LogFile.empty();
  order.LogFile = order.MustLog ? arguments.LogFile : context.LogFile;
  order.Announce = [&](const DiscPlan& plan, std::optional<std::uint64_t> freeBytes) {
    if (arguments.Json) {
      context.Out << PlanJson(plan, freeBytes) << '\n' << std::flush;
    } else {
      context.Report(PlanText(plan, freeBytes));
    }
  };
  return order;
}

AuthorResult LoadAndAuthor(const AuthorArguments& arguments, CommandContext& context, Project& project,
                           UserInterface& ui) {
  MessageRecorder loading(ui);
  const auto pictures = MakePlatformPictures();
  if (!Load(arguments, context.CacheFolder, project, *pictures, loading)) {
    return {};
  }
  if (!arguments.LogFile.empty() &&
      !MayLog(arguments.LogFile, arguments.Project, arguments.Folder, project, ui)) {
    return {};
  }
  AuthorOrder order = OrderFrom(arguments, context);
  if (!AddImage(arguments, context, order, ui)) {
    return {};
  }
  order.WarnedBefore = loading.HasWarnings();
  order.Pictures = pictures.get();
  return Author(project, order, ui);
}

}  // namespace

bool RunAuthor(const AuthorArguments& arguments, CommandContext& context) {
  Project project;
  PlaceNames named(context.Ui, project);
  RunReporter reporter(named, context.Out, arguments.Json);
  if (arguments.Json) {
    context.Out << BeginJson(arguments.Project) << '\n' << std::flush;
  }
  const AuthorResult result = LoadAndAuthor(arguments, context, project, reporter);
  if (result.Outcome == AuthorOutcome::Stopped) {
    reporter.Tell(MessageOf(message::RunStopped, {}));
  }
  const bool done = result.Outcome == AuthorOutcome::Done;
  const ReportedRun reported{arguments.Folder, arguments.Image, arguments.DryRun};
  if (arguments.Json) {
    context.Out << ResultJson(result, reported) << '\n' << std::flush;
  } else if (done) {
    context.Report(ResultText(result, reported));
  }
  return done;
}

void AddAuthorCommand(CLI::App& program, CommandContext& context) {
  const auto arguments = std::make_shared<AuthorArguments>();
  CLI::App* command = program.add_subcommand("author", "Makes the disc of a project: a VIDEO_TS folder");
  command
      ->add_option("project", arguments->Project, "Project (.qvp), or a script of the other dialect (.scp)")
      ->required()
      ->type_name("PROJECT");
  command->add_option("-o,--output", arguments->Folder, "Folder that becomes the disc's VIDEO_TS")
      ->type_name("FOLDER");
  CLI::Option* image = command
                           ->add_option("--iso", arguments->Image,
                                        "Image of the disc, to burn; without --output no folder stays")
                           ->type_name("IMAGE");
  command
      ->add_option("--label", arguments->Label, "Name of the image's volume; else one made of the project's")
      ->type_name("NAME")
      ->needs(image);
  command->add_flag("--analyse", arguments->Analyse,
                    "Move chapter times onto pictures where a chapter can start");
  command->add_flag("--reindex", arguments->Reindex, "Build picture indexes anew");
  command->add_flag("--force", arguments->Force, "Replace the disc that a former run made");
  command->add_flag("--force-navigation", arguments->ForceNavigation,
                    "Make a disc whose menus and commands lead nowhere");
  AddRulesOption(*command, arguments->RuleSet, "What players expect, or every traditional number");
  command->add_flag("--strict", arguments->Strict, "Make no disc when there are warnings");
  command->add_flag("--dry-run", arguments->DryRun, "Do everything but write");
  command->add_flag("--no-sync", arguments->NoSync, "Do not wait until the disc is safe from a power cut");
  command->add_flag("--verify", arguments->Verify, "Read the finished disc whole and prove it");
  command->add_flag("--json", arguments->Json, "Print one JSON object an event");
  command->add_option("--log-file", arguments->LogFile, "Log of the run instead of the usual one")
      ->type_name("FILE");
  command->callback([arguments, &context] {
    if (arguments->Folder.empty() && arguments->Image.empty()) {
      throw CLI::RequiredError("--output or --iso");
    }
    context.ExitStatus = RunAuthor(*arguments, context) ? ExitDone : ExitFailed;
  });
}

}  // namespace quorvelant
