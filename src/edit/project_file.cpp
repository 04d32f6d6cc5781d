#include "edit/project_file.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

#include "base/file_text.h"
#include "base/text.h"
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

// Whether the present work may be given up: it is saved, or need not be.
bool MayLeave(EditSession& session, UserInterface& ui) {
  const bool saves =
      session.IsUnsaved() && ui.Ask(message::AskSaveFirst.Title, message::AskSaveFirst.Text, false);
  return !saves || SaveProject(session, false, ui);
}

bool IsOwnScript(const std::string& path) {
  return Lower(path).ends_with(".qvp");
}

}  // namespace

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
  const FileScanner scanner(session.RulesInForce(), ui);
  LoadOptions options{.Rules = session.RulesInForce(), .Scanner = &scanner};
  if (analyse) {
    options.AnalyseChapters = [&session, &ui](Project& whole, std::size_t track) {
      AnalyseChapters(whole, track, session.Indexes(), ui);
    };
  }
  const LoadResult load = LoadScriptFile(script, project, options, ui);
  if (!load.Loaded) {
    return false;  // told
  }
  for (const Message& finding : LoadFindings(load)) {
    ui.Tell(finding);
  }
  // A script of the other dialect is saved as a project beside it.
  session.Replace(std::move(project), load.IsScenarist ? std::string() : script);
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
  const std::string original = IsOwnScript(session.File())
                                   ? ReadHead(SystemPath(session.File()), MostScriptBytes).value_or("")
                                   : std::string();
  if (!SaveDataLike(ForScriptAt(session.Work(), path), original, path, ui)) {
    return false;
  }
  session.MarkSaved(path);
  return true;
}

}  // namespace quorvelant
