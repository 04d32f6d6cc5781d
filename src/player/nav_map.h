// A disc's navigation as a chart: its chains, and what leads from one to another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "player/nav_state.h"
#include "player/nav_walk.h"

namespace quorvelant {

// A chain and whether a way leads into it.
struct NavMapChain {
  std::string Name;
  NavPoint At;
  std::string Words;  // with the language, where menus have several
  bool IsReached = false;
};
struct NavMapArrow {
  std::size_t From = 0;
  std::size_t To = 0;
  auto operator<=>(const NavMapArrow&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};
struct NavMap {
  std::vector<NavMapChain> Chains;
  std::vector<NavMapArrow> Arrows;  // what some command leads to
};

// Of each menu language.
using NavWalks = std::vector<std::unique_ptr<NavWalk>>;

// The menus of each language, and the titles, which all share. A chain is reached if any walk reaches it.
[[nodiscard]] NavMap MapOf(const NavWalks& walks);

}  // namespace quorvelant
