// How the texts of a page are drawn.
#pragma once

#include "menu/menu_look.h"
#include "menu/menu_page.h"
#include "picture/picture_service.h"

namespace quorvelant {

// Soft letters in the ink of their slot.
[[nodiscard]] inline TextStyle StyleOf(const PageText& text, const MenuLook& look) {
  const MenuFont& font = look.Fonts[static_cast<std::size_t>(text.Slot)];
  return {.Font = font.Name,
          .PixelHeight = text.PixelHeight,
          .Bold = font.Bold,
          .Italic = font.Italic,
          .Underline = font.Underline,
          .StrikeOut = font.StrikeOut,
          .Stretch = text.Stretch,
          .Smooth = true,
          .Color = font.Ink};
}

}  // namespace quorvelant
