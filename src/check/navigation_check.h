// The ways through the disc of a project, as findings.
#pragma once

#include <functional>
#include <string>

#include "base/rules.h"
#include "check/findings.h"
#include "model/project.h"
#include "player/nav_findings.h"

namespace quorvelant {

// Walks every way. What `told` says of a command's place is not said again; where a command has no digits,
// nothing is walked. `Place` is a key of the project, of commands with the command's own after it.
[[nodiscard]] Findings CheckNavigation(const Project& project, const Rules& rules, const Findings& told);

// A command in the words of the one who reads: its place and its text.
struct NavCommandWords {
  std::string Place;
  std::string Text;
};
using NavNaming = std::function<NavCommandWords(const NavFinding&)>;
[[nodiscard]] Findings NavigationFindings(const NavSurvey& survey, const NavNaming& naming);
// Those at whose place nothing was told.
[[nodiscard]] Findings NewFindings(Findings findings, const Findings& told);
// The names of a project's commands, and those of the bytes where there is no project.
[[nodiscard]] NavNaming NamingOf(const Project& project);
[[nodiscard]] NavCommandWords NameByBytes(const NavFinding& finding);
// Of a finished disc, by table and number. Discs of other programs may hold what nobody reaches, and choose
// what is not there: notes, where this program's own are warned of.
[[nodiscard]] Findings DiscNavigation(const NavSurvey& survey, bool isOurs);

// Whether a disc with the finding leads nowhere: what only `--force-navigation` makes a disc of.
[[nodiscard]] bool IsNavigationError(const Message& finding);

}  // namespace quorvelant
