#include "desk/made_disc.h"

#include <filesystem>
#include <sstream>
#include <utility>

#include "check/read_faults.h"
#include "desk/open_project.h"
#include "desk/project_findings.h"
#include "edit/file_scanner.h"
#include "script/script_reader.h"
#include "script/script_writer.h"

namespace quorvelant {

std::string PagesOf(const std::string& project) {
  return std::filesystem::path(project).replace_extension(".menus").string();
}

Findings FindingsOfScript(EditSession& session, const std::string& path, UserInterface& ui) {
  session.Commands();  // settles their digits
  const Rules& rules = session.RulesInForce();
  const std::string text = WriteScript(session.Work());
  std::istringstream script(text);
  Project project;
  ReadFaults faults(ui);
  const FileScanner scanner(rules, faults);
  const LoadResult load =
      LoadScript(script, text.size(), path, project, {.Rules = rules, .Scanner = &scanner}, faults);
  Findings findings = FindingsWithSources(load, project, rules, ui);
  AppendReadFaults(findings, faults);
  return OnceEach(std::move(findings));
}

}  // namespace quorvelant
