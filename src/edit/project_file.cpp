#include "edit/project_file.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/file_text.h"
#include "base/random.h"
#include "check/read_faults.h"
#include "edit/chapter_analysis.h"
#include "edit/file_scanner.h"
#include "edit/messages.h"
#include "edit/source_paths.h"
#include "model/walk.h"
#include "script/load_findings.h"
#include "script/script_reader.h"
#include "script/script_writer.h"

namespace quorvelant {

namespace {

constexpr std::uint64_t MostScriptBytes = std::uint64_t{1} << 28U;

// Whether the file holds what this session knows of it, or the user gives up what it holds now.
bool MayReplace(const EditSession& session, const std::string& path, UserInterface& ui) {
  std::error_code missing;
  const bool isOwn = !session.File().empty() &&
                     (path == session.File() ||
                      std::filesystem::equivalent(SystemPath(path), SystemPath(session.File()), missing));
  const auto there = isOwn ? ReadHead(SystemPath(path), MostScriptBytes) : std::nullopt;
  if (!there || *there == session.Script()) {
    return true;
  }
  const Message question = MessageOf(message::AskScriptChanged, path, path);
  return ui.Ask(question.Title, question.Text, false);
}

void TellLeftOut(const Project& project, const std::string& path, UserInterface& ui) {
  std::vector<std::string_view> tracks;
  std::ptrdiff_t unused = 0;
  for (const Track* track : Live(project.Tracks)) {
    const auto plays = Live(track->VideoPlays);
    if (std::ranges::all_of(plays, [](const VideoPlay* play) { return play->File.empty(); })) {
      tracks.push_back(track->TrackName);
      continue;
    }
    for (const SubtitleStream* stream : Live(track->SubStreams)) {
      unused += std::ranges::count(stream->SubPlays, false, &SubPicturePlay::Used);
    }
  }
  if (!tracks.empty()) {
    ui.Tell(MessageOf(message::TracksLeftOut, path, fmt::join(tracks, "\", \"")));
  }
  if (unused > 0) {
    ui.Tell(MessageOf(message::SubtitlesLeftOut, path, unused));
  }
}

void TellLoad(const LoadResult& load, const ReadFaults& faults, UserInterface& ui) {
  for (const Message& finding : LoadFindings(load)) {
    ui.Tell(finding);
  }
  for (const Message& fault : faults.Told) {
    ui.Tell(fault);
  }
}

}  // namespace

bool MayLeave(EditSession& session, UserInterface& ui) {
  const bool saves =
      session.IsUnsaved() && ui.Ask(message::AskSaveFirst.Title, message::AskSaveFirst.Text, false);
  return !saves || SaveProject(session, false, ui);
}

std::string ScriptTextOf(const std::string& script) {
  return ReadHead(SystemPath(script), MostScriptBytes).value_or(std::string());
}

bool NewProject(EditSession& session, UserInterface& ui) {
  if (!ui.Ask(message::AskNewProject.Title, message::AskNewProject.Text, false) || !MayLeave(session, ui)) {
    return false;
  }
  session.StartAnew();
  return true;
}

std::optional<OpenedProject> ReadProjectFile(const std::string& script, const Rules& rules, UserInterface& ui,
                                             const TrackAnalysis& analyse) {
  OpenedProject opened{.Work = {}, .File = script, .Script = ScriptTextOf(script)};
  ReadFaults faults(ui);  // the findings hold what the load would say besides
  const FileScanner scanner(rules, faults);
  const LoadOptions options{.Rules = rules, .Scanner = &scanner, .AnalyseChapters = analyse};
  const LoadResult load = LoadScriptFile(script, opened.Work, options, faults);
  TellLoad(load, faults, ui);
  if (!load.Loaded) {
    return std::nullopt;
  }
  // What was not read or understood would be lost in the script's own file; the other dialect is not written.
  const bool isWhole = IsReadWhole(load) && load.SkippedCount == 0 && faults.Told.empty();
  if (!isWhole) {
    ui.Tell(MessageOf(message::OpenedInPart, script, script));
  }
  if (!isWhole || load.IsScenarist) {
    opened.File.clear();
    opened.Script.clear();
  }
  return opened;
}

std::optional<OpenedProject> ReadProjectText(const std::string& text, const std::string& name,
                                             const Rules& rules, UserInterface& ui) {
  OpenedProject opened;
  ReadFaults faults(ui);
  const FileScanner scanner(rules, faults);
  std::istringstream script(text);
  const LoadResult load =
      LoadScript(script, text.size(), name, opened.Work, {.Rules = rules, .Scanner = &scanner}, faults);
  TellLoad(load, faults, ui);
  return load.Loaded ? std::optional(std::move(opened)) : std::nullopt;
}

void TakeProject(EditSession& session, OpenedProject opened) {
  if (opened.Work.DestinationFolder.empty()) {
    opened.Work.DestinationFolder = session.Options().DestinationFolder;
  }
  session.Replace(std::move(opened.Work), std::move(opened.File), std::move(opened.Script));
}

bool OpenProjectFile(EditSession& session, const std::string& script, bool analyse, UserInterface& ui) {
  if (!MayLeave(session, ui)) {
    return false;
  }
  TrackAnalysis analysis;
  if (analyse) {
    analysis = [&session, &ui](Project& whole, std::size_t track) {
      AnalyseChapters(whole, track, session.Indexes(), ui);
    };
  }
  auto opened = ReadProjectFile(script, session.RulesInForce(), ui, analysis);
  if (!opened) {
    return false;
  }
  TakeProject(session, *std::move(opened));
  return true;
}

bool SaveProject(EditSession& session, bool otherPath, UserInterface& ui) {
  if (!otherPath && !session.File().empty()) {
    return SaveProjectAs(session, session.File(), ui);
  }
  const auto path = ui.AskText(SavePathTitle, SavePathFilter, session.File());
  return path && !path->empty() && SaveProjectAs(session, *path, ui);
}

bool SaveProjectAs(EditSession& session, const std::string& path, UserInterface& ui) {
  session.Commands();
  if (!MayReplace(session, path, ui)) {
    return false;
  }
  std::string script = ScriptLike(ForScriptAt(session.Work(), path), session.Script());
  if (!SaveScriptText(script, path, ui)) {
    return false;
  }
  TellLeftOut(session.Work(), path, ui);
  session.MarkSaved(path, std::move(script));
  return true;
}

}  // namespace quorvelant
