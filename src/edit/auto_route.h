// Links between buttons that nobody has to draw.
#pragma once

#include <span>

#include "edit/button_rules.h"

namespace quorvelant {

// Links the buttons in a ring in the order of the array: left and up go to the one ahead, right and down
// to the one after it, from the ends to the other end. Removed buttons get no links, but stand in the ring.
void AutoRoute(std::span<EditedButton> buttons);
void AutoRoute(std::span<HighlightButton> buttons);

}  // namespace quorvelant
