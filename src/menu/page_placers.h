// Gives the contents of a page their places.
#pragma once

#include "menu/menu_look.h"
#include "menu/menu_page.h"
#include "menu/page_contents.h"
#include "menu/page_layout.h"

namespace quorvelant {

// The page's standard and shape, and those of the film whose scenes it shows.
struct PageGround {
  bool IsNtsc = false;
  bool IsWide = false;
  bool FilmIsWide = false;
};

// At the traditional places, whatever the texts measure.
[[nodiscard]] MenuPage PlaceFixed(const PageContents& contents, const PageGround& ground,
                                  const MenuLook& look, const TextMeasure& measure);
// Inside the safe area, measured.
[[nodiscard]] MenuPage PlaceFitted(const PageContents& contents, const PageGround& ground,
                                   const MenuLook& look, const TextMeasure& measure);

}  // namespace quorvelant
