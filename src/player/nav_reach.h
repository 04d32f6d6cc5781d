// What no way through a disc comes to.
#pragma once

#include <vector>

#include "player/nav_findings.h"
#include "player/nav_map.h"

namespace quorvelant {

// Titles, chapters, menu pages and streams that nobody reaches, and keys of the remote that do nothing.
void JudgeReach(const NavDisc& disc, const NavWalks& walks, std::vector<NavFinding>& findings);

}  // namespace quorvelant
