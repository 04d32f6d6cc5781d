// Makes texts fit the room they have.
#pragma once

#include <string>
#include <vector>

#include "menu/menu_look.h"
#include "menu/menu_page.h"
#include "menu/page_layout.h"

namespace quorvelant {

// What a text covers, box and ink together, from the corner at which it is drawn.
struct Footprint {
  int Left = 0;  // 0 or less
  int Top = 0;   // 0 or less
  int Right = 0;
  int Bottom = 0;
  [[nodiscard]] int Width() const { return Right - Left; }
  [[nodiscard]] int Height() const { return Bottom - Top; }
};

// No text is shrunk below this.
inline constexpr int LeastPixels = 22;

class TextFitter {
 public:
  // `stretch` as `PageText` has it.
  TextFitter(const MenuLook& look, const TextMeasure& measure, int stretch)
      : look_(look), measure_(measure), stretch_(stretch) {}

  [[nodiscard]] Footprint Covers(const PageText& text) const;
  // Whether all texts fit the room in that size.
  [[nodiscard]] bool Fit(const std::vector<std::string>& texts, FontSlot slot, int pixels, int width,
                         int height) const;
  // The size of the slot's font, or the next smaller one at which all texts fit, down to `LeastPixels`.
  [[nodiscard]] int SizeFor(const std::vector<std::string>& texts, FontSlot slot, int width,
                            int height) const;
  // The text, cut with an ellipsis where it is wider, so that what it covers begins at (left, top).
  [[nodiscard]] PageText Line(const std::string& text, FontSlot slot, int pixels, int left, int top,
                              int width) const;

 private:
  [[nodiscard]] PageText Raw(std::string text, FontSlot slot, int pixels) const;

  const MenuLook& look_;
  const TextMeasure& measure_;
  int stretch_;
};

}  // namespace quorvelant
