// Lays the pages of menus out.
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "base/rules.h"
#include "menu/menu_look.h"
#include "menu/menu_offer.h"
#include "menu/menu_page.h"
#include "picture/picture_service.h"

namespace quorvelant {

// What a line of text takes.
using TextMeasure = std::function<TextSize(std::string_view text, const TextStyle& style)>;

// Whether pages are measured and kept inside the safe area.
[[nodiscard]] bool PagesFit(const Rules& rules);

// Whether the title menu of the disc is the root page of its film, which then leads to no other.
[[nodiscard]] bool RootIsTitleMenu(bool isOnlyFilm, const Rules& rules);

// `look` is complete (`CompleteLook`). The menus of one film. On a disc of several its root page leads to the
// title choice.
[[nodiscard]] FilmMenus LayOutFilm(const FilmOffer& film, const MenuLook& look, bool isOnlyFilm,
                                   const TextMeasure& measure, const Rules& rules);
// All films, and the title choice where there are several.
[[nodiscard]] DiscMenus LayOutMenus(std::span<const FilmOffer> films, const MenuLook& look,
                                    const TextMeasure& measure, const Rules& rules);

// Gives the letters of a page the sizes that the fonts of `look` have now.
void TakeFontSizes(MenuPage& page, const MenuLook& look);

}  // namespace quorvelant
