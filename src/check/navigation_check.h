// The ways through the disc of a project, as findings.
#pragma once

#include <functional>
#include <string>

#include "base/rules.h"
#include "check/findings.h"
#include "model/project.h"
#include "player/nav_findings.h"

namespace quorvelant {

// Walks every way through the disc of a project whose structure is whole, and adds what it finds to what is
// told. `Place` is a key of the project, of commands with the command's own after it.
void CheckNavigation(const Project& project, const Rules& rules, Findings& told);

// The walk of a project by itself.
struct ProjectWalk {
  Findings Told;                    // what leads nowhere, or what keeps the project from being walked
  std::optional<NavSurvey> Survey;  // nothing where its structure is not whole
};
[[nodiscard]] ProjectWalk WalkProject(const Project& project, const Rules& rules);

// A command in the words of the one who reads: its place and its text.
struct NavCommandWords {
  std::string Place;
  std::string Text;
};
using NavNaming = std::function<NavCommandWords(const NavFinding&)>;
[[nodiscard]] Findings NavigationFindings(const NavSurvey& survey, const NavNaming& naming);
// Adds them to what is told. What is told of a place gains the way there, and is not told again.
void AddNavigation(const NavSurvey& survey, const NavNaming& naming, Findings& told);
// The names of a project's commands, and those of the bytes where there is no project.
[[nodiscard]] NavNaming NamingOf(const Project& project);
[[nodiscard]] NavCommandWords NameByBytes(const NavFinding& finding);
// Of a finished disc, by table and number. Discs of other programs may hold what nobody reaches, choose what
// is not there, lay unseen buttons over a picture that shows them, and keep buttons without a use: notes,
// where this program's own are warned of.
[[nodiscard]] Findings DiscNavigation(const NavSurvey& survey, bool isOurs);
// The same of a named disc: its name before the table's.
[[nodiscard]] Message WithDisc(Message finding, const std::string& disc);

// Whether a disc with the finding leads nowhere: what only `--force-navigation` makes a disc of.
[[nodiscard]] bool IsNavigationError(const Message& finding);

}  // namespace quorvelant
