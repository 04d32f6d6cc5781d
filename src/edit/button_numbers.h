// Commands that select a button by its number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "model/project.h"
#include "vm/command_aims.h"

namespace quorvelant {

// The set whose buttons get other numbers: the first of a scene of a track, which shows when a cell of the
// scene begins. `Numbers` holds the new number of each old one; 0 for a button that is gone.
struct RenumberedSet {
  std::size_t Track = 0;
  std::size_t Scene = 0;
  std::span<const std::int32_t> Numbers;
};

// The live commands that select one of its buttons, with texts that select it again: links that arrive at a
// cell which plays the scene, in whatever PGC, and within a PGC whose every cell does also those from no
// certain cell and "SetHL_BTNN". A button that is gone becomes none, or the first where one must be named.
// "RSM" is left alone: it leads back to wherever the menu was called.
[[nodiscard]] std::vector<CommandEdit> FollowButtons(const Project& project, const CommandAims& aims,
                                                     const RenumberedSet& set);

}  // namespace quorvelant
