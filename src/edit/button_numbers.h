// Commands that select a button by its number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"
#include "vm/command_aims.h"

namespace quorvelant {

// The number of a "button=" or "HL_BTTN=" in a text; nothing where there is none, or 0 for no button.
[[nodiscard]] std::optional<std::int32_t> SelectedButton(std::string_view text);
// The text with another number there.
[[nodiscard]] std::string WithSelectedButton(std::string_view text, std::int32_t number);

// The set whose buttons get other numbers: the first of a scene of a track, which shows when a cell of the
// scene begins. `Numbers` holds the new number of each old one; 0 for a button that is gone.
struct RenumberedSet {
  std::size_t Track = 0;
  std::size_t Scene = 0;
  std::span<const std::int32_t> Numbers;
};

// The live commands that select one of its buttons, with texts that select it again: links to a cell that
// plays the scene, and within a PGC whose every cell does also those to no certain cell and "SetHL_BTNN". A
// button that is gone becomes none, or the first where one must be named. Links to the parts of other titles
// and "RSM" are left alone.
[[nodiscard]] std::vector<CommandEdit> FollowButtons(const Project& project, const CommandAims& aims,
                                                     const RenumberedSet& set);

}  // namespace quorvelant
