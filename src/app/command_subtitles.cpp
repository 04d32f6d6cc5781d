#include "app/command_subtitles.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "app/messages.h"
#include "app/output_file.h"
#include "app/rules_option.h"
#include "author/message_recorder.h"
#include "base/counted.h"
#include "base/random.h"
#include "base/rules.h"
#include "base/text.h"
#include "desk/open_project.h"
#include "edit/file_scanner.h"
#include "edit/import_subtitles.h"
#include "edit/new_track.h"
#include "model/cls_dvd.h"
#include "model/walk.h"
#include "script/script_reader.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoLanguage =
    "{} is no language that a disc can name: say it in English, or by its two or three letters, as German, "
    "de or "
    "deu (docs/lists.md has them all)";

struct SubtitlesOptions {
  std::string Project;
  std::string Script;
  std::string Track;
  std::size_t Stream = 0;  // from 1; 0 for a new one
  std::string Language;    // empty: as it is, English for a new stream
  bool SubRip = false;
  RulesOption RuleSet;
  std::string Output;  // empty: the project itself
  bool Force = false;
};

// The index of the live track with that number, counted from 1, or that name.
std::optional<std::size_t> FindTrack(const Project& project, const std::string& wanted) {
  for (const auto& [index, track] : LiveWithIndex(project.Tracks)) {
    if (track.TrackName == wanted || std::to_string(index + 1) == wanted) {
      return index;
    }
  }
  return std::nullopt;
}

std::string LanguageFault(const std::string& text) {
  return CLsDVD::LanguageCalled(text) ? std::string() : fmt::format(fmt::runtime(NoLanguage), text);
}

// The index of the stream to fill; a new one where none is named.
std::optional<std::size_t> StreamToFill(Track& track, std::size_t wanted, UserInterface& ui) {
  if (wanted > 0) {
    if (wanted > track.SubStreams.size() || !IsLive(track.SubStreams[wanted - 1])) {
      ui.Tell(MessageOf(message::SubtitleStreamNotFound, {}, track.TrackName, wanted));
      return std::nullopt;
    }
    return wanted - 1;
  }
  if (AddEmptySubtitleStream(track, ui) == nullptr) {
    if (!track.SubStreams.empty()) {
      ui.Tell(MessageOf(message::SubtitleStreamsFull, {}, track.TrackName));
    }
    return std::nullopt;
  }
  return track.SubStreams.size() - 1;
}

// Whether the project's own file can take the changed project without losing anything.
bool MayReplace(const LoadResult& load, const std::string& file, UserInterface& ui) {
  if (load.IsScenarist) {
    ui.Tell(MessageOf(message::OtherDialect, file));
    return false;
  }
  if (load.SkippedCount > 0) {
    ui.Tell(MessageOf(message::LinesWouldBeLost, file, load.SkippedCount));
    return false;
  }
  return true;
}

// Whether the file that is to hold the project may be written.
bool MaySave(const LoadResult& load, const SubtitlesOptions& options, UserInterface& ui) {
  return options.Output.empty() || IsSameFile(options.Output, options.Project)
             ? MayReplace(load, options.Project, ui)
             : MayWrite(options.Output, options.Script, options.Force, ui);
}

bool HoldsReadFault(const std::vector<Message>& told) {
  return std::ranges::any_of(told, [](const Message& one) { return one.Is(message::SourceReadFailed); });
}

int Run(const SubtitlesOptions& options, CommandContext& context) {
  UserInterface& ui = context.Ui;
  const Rules& rules = options.RuleSet.Used();
  MessageRecorder told(ui);
  const FileScanner scanner(rules, told);
  Project project;
  const LoadResult load = LoadScriptFile(options.Project, project, {.Rules = rules, .Scanner = &scanner}, ui);
  const bool whole = IsReadWhole(load) && !HoldsReadFault(told.Release());
  if (load.Loaded && !whole) {
    ui.Tell(MessageOf(message::ScriptNotWhole, options.Project));
  }
  if (!whole || !MaySave(load, options, ui)) {
    return ExitFailed;
  }
  const auto trackIndex = FindTrack(project, options.Track);
  if (!trackIndex) {
    ui.Tell(MessageOf(message::TrackNotFound, options.Project, options.Track));
    return ExitFailed;
  }
  Track& track = project.Tracks[*trackIndex];
  const auto streamIndex = StreamToFill(track, options.Stream, ui);
  if (!streamIndex) {
    return ExitFailed;
  }
  SubtitleStream& stream = track.SubStreams[*streamIndex];
  if (!options.Language.empty()) {
    stream.Language = CLsDVD::LanguageArray()[*CLsDVD::LanguageCalled(options.Language)];
  }
  const std::size_t before = stream.SubPlays.size();
  const bool ripped = options.SubRip || context.Options.Subrip;
  if (!ImportSubtitleScript(project, *trackIndex, *streamIndex, options.Script, ripped, rules, ui)) {
    return ExitFailed;
  }
  WarnOfMissingBitmaps(project, std::span(stream.SubPlays).subspan(before), ui);
  const std::string& output = options.Output.empty() ? options.Project : options.Output;
  if (!SaveLoaded(project, load, output, ui)) {
    return ExitFailed;
  }
  context.Report(fmt::format("{} added to {} ({}) of {}, written to {}\n",
                             Counted(stream.SubPlays.size() - before, "subtitle"), stream.StreamName,
                             stream.Language, track.TrackName, output));
  return ExitDone;
}

}  // namespace

void AddSubtitlesCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<SubtitlesOptions>();
  CLI::App* command = program.add_subcommand(
      "subtitles", "Adds the subtitles of a script (.sst) to a track and writes the project back");
  command->add_option("project", options->Project, "Project script")->required()->type_name("PROJECT");
  command->add_option("script", options->Script, "Subtitle script")->required()->type_name("SCRIPT.sst");
  command->add_option("--track", options->Track, "Track: its number from 1, or its name")
      ->required()
      ->type_name("N");
  command
      ->add_option("--stream", options->Stream, "Subtitle stream of the track, from 1 (default: a new one)")
      ->check(CLI::Range(1, 32))
      ->type_name("M");
  command->add_option("--language", options->Language, "Language, as German, de or deu (default: English)")
      ->check(LanguageFault, "", "language")
      ->type_name("NAME");
  command->add_flag("--subrip", options->SubRip,
                    "The script was made by SubRip: times 7 frames early, colours from 0");
  AddRulesOption(*command, options->RuleSet, "Whether the script may force subtitles");
  command->add_option("-o,--output", options->Output, "Write the project to this file instead of its own")
      ->type_name("FILE");
  command->add_flag("--force", options->Force, "Replace another file that is there with --output");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
