// Links between buttons that nobody has to draw.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/rules.h"
#include "edit/button_rules.h"

namespace quorvelant {

enum class Route : std::uint8_t {
  // Left and up go to the button before it in the array, right and down to the one after it, from the ends to
  // the other end.
  Ring,
  // To the nearest in each direction. Where none lies that way, round to the far side of its row or column,
  // or else on through the rows. No button links to itself, unless it is alone, and every one can be reached
  // from every other.
  Geometry,
};

// The ways on offer, the best first.
[[nodiscard]] std::vector<Route> OfferedRoutes(const Rules& rules);

// Links the live buttons. Where they lie is taken from the group `area` (0 to 2).
void AutoRoute(std::span<EditedButton> buttons, Route route, std::size_t area = 0);
void AutoRoute(std::span<HighlightButton> buttons, Route route = Route::Ring, std::size_t area = 0);

}  // namespace quorvelant
