#include "edit/project_file.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

#include "base/disk.h"
#include "base/file_text.h"
#include "base/random.h"
#include "base/text.h"
#include "check/read_faults.h"
#include "edit/chapter_analysis.h"
#include "edit/file_scanner.h"
#include "edit/messages.h"
#include "edit/source_paths.h"
#include "script/load_findings.h"
#include "script/messages.h"
#include "script/script_reader.h"
#include "script/script_writer.h"

namespace quorvelant {

namespace {

constexpr std::uint64_t MostScriptBytes = std::uint64_t{1} << 28U;

bool IsOwnScript(const std::string& path) {
  return Lower(path).ends_with(".qvp");
}

}  // namespace

bool MayLeave(EditSession& session, UserInterface& ui) {
  const bool saves =
      session.IsUnsaved() && ui.Ask(message::AskSaveFirst.Title, message::AskSaveFirst.Text, false);
  return !saves || SaveProject(session, false, ui);
}

bool NewProject(EditSession& session, UserInterface& ui) {
  if (!ui.Ask(message::AskNewProject.Title, message::AskNewProject.Text, false) || !MayLeave(session, ui)) {
    return false;
  }
  session.StartAnew();
  return true;
}

bool OpenProjectFile(EditSession& session, const std::string& script, bool analyse, UserInterface& ui) {
  if (!MayLeave(session, ui)) {
    return false;
  }
  Project project;
  ReadFaults faults(ui);  // the findings hold what the load would say besides
  const FileScanner scanner(session.RulesInForce(), faults);
  LoadOptions options{.Rules = session.RulesInForce(), .Scanner = &scanner};
  if (analyse) {
    options.AnalyseChapters = [&session, &ui](Project& whole, std::size_t track) {
      AnalyseChapters(whole, track, session.Indexes(), ui);
    };
  }
  const LoadResult load = LoadScriptFile(script, project, options, faults);
  for (const Message& finding : LoadFindings(load)) {
    ui.Tell(finding);
  }
  for (const Message& fault : faults.Told) {
    ui.Tell(fault);
  }
  if (!load.Loaded) {
    return false;
  }
  // What was not read or understood would be lost in the script's own file; the other dialect is not written.
  const bool isWhole = IsReadWhole(load) && load.SkippedCount == 0 && faults.Told.empty();
  if (!isWhole) {
    ui.Tell(MessageOf(message::OpenedInPart, script, script));
  }
  if (project.DestinationFolder.empty()) {
    project.DestinationFolder = session.Options().DestinationFolder;
  }
  session.Replace(std::move(project), isWhole && !load.IsScenarist ? script : std::string());
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
  const std::string& former = session.File();
  const bool hasFormer = SystemDisk().KindOf(SystemPath(former)) == FileKind::Plain && IsOwnScript(former);
  const auto original = hasFormer ? ReadHead(SystemPath(former), MostScriptBytes) : std::string();
  if (!original) {  // its comments would be lost
    ui.Tell(MessageOf(message::ScriptReadFailed, former, former));
    return false;
  }
  if (!SaveDataLike(ForScriptAt(session.Work(), path), *original, path, ui)) {
    return false;
  }
  session.MarkSaved(path);
  return true;
}

}  // namespace quorvelant
