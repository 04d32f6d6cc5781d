// The commands of buttons, as text.
#pragma once

#include <cstddef>
#include <string>

#include "base/rules.h"
#include "menu/menu_page.h"

namespace quorvelant {

// Where a button stands.
struct MenuButtonPlace {
  PageKind Kind = PageKind::Root;
  int Set = 1;              // number of the film's title set
  std::size_t Page = 0;     // of the group, from 0
  std::size_t Running = 1;  // number of the button through all pages of the group
};

// What a press on the button does. Names are those that `MakeMenuStructure` gives.
[[nodiscard]] std::string CommandOfButton(const MenuButton& button, const MenuButtonPlace& place,
                                          const Rules& rules);

// Hides subtitles.
[[nodiscard]] std::string SubtitlesOffText(const Rules& rules);
// Shows a stream of them, counted from 1.
[[nodiscard]] std::string SubtitlesOnText(int number);

// The names of a film's elements: "VTS2_Root", "VTS2_Title1".
[[nodiscard]] std::string MenuChainName(PageKind kind, int set);
[[nodiscard]] std::string FilmTitleName(int set);
[[nodiscard]] std::string FilmChainName(int set);
// "JumpSS vts_2, vts_ttn_1 : RootMenu".
[[nodiscard]] std::string JumpToRootText(int set);

}  // namespace quorvelant
