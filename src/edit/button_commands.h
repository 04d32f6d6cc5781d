// The commands of buttons, which the cells hold that play their scene.
#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <vector>

#include "model/tracks.h"

namespace quorvelant {

class Change;

// A button by its place among the sets of a track.
struct ButtonPlace {
  std::size_t Set = 0;
  std::size_t Button = 0;
  auto operator<=>(const ButtonPlace&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};

// For each button of each set as it is now, which one it was before; nothing for a new one.
using ButtonOrigins = std::vector<std::vector<std::optional<ButtonPlace>>>;

// The scene that begins with this set: the one in which it starts, unless another set starts before it there.
[[nodiscard]] std::optional<std::size_t> SceneShowing(const Track& track, std::size_t set);

// After the sets of the track have changed, the commands of its live cells follow: each stays with its
// button, a removed button takes its command along, a new one gets "NOP". The commands of a cell are dealt,
// in a row, to the sets that start within its scene, in the order of their starts. Of the cells of a scene in
// one domain the first that has commands speaks; a silent one beside it stays silent. Commands without a
// button stay after the others.
void CarryButtonCommands(Change& change, std::size_t track, const std::vector<HighlightPlay>& before,
                         const ButtonOrigins& origins);

}  // namespace quorvelant
