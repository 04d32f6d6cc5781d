// Backgrounds that the program paints itself.
#pragma once

#include "menu/menu_look.h"
#include "picture/picture.h"

namespace quorvelant {

// The same for the same values. Steps of the gradient are broken up, so that none shows.
[[nodiscard]] Picture PaintBackdrop(const Backdrop& backdrop, int width, int height);

}  // namespace quorvelant
