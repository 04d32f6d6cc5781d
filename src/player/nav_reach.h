// What no way through a disc comes to.
#pragma once

#include <memory>
#include <vector>

#include "player/nav_findings.h"
#include "player/nav_walk.h"

namespace quorvelant {

// Of each menu language.
using NavWalks = std::vector<std::unique_ptr<NavWalk>>;

// Titles, chapters, menu pages and streams that nobody reaches, and keys of the remote that do nothing.
void JudgeReach(const NavDisc& disc, const NavWalks& walks, std::vector<NavFinding>& findings);

}  // namespace quorvelant
