// How menus look: fonts, backgrounds, colours and the language of labels.
#pragma once

#include <array>
#include <map>
#include <string>

#include "menu/menu_page.h"
#include "model/tracks.h"

namespace quorvelant {

struct MenuFont {
  std::string Name;     // family; empty for the theme's
  int PixelHeight = 0;  // of the em; 0 for the theme's
  bool Bold = false;
  bool Italic = false;
  bool StrikeOut = false;
  bool Underline = false;
  Color Ink = 0xFFFFFF;
  bool operator==(const MenuFont&) const = default;
};

inline constexpr std::size_t PageKindCount = 5;

struct MenuLook {
  std::string Theme;  // the name of a built-in one, or a folder with a theme.toml
  std::array<MenuFont, FontSlotCount> Fonts;
  std::array<std::string, PageKindCount> Backgrounds;  // picture files by `PageKind`; empty for the theme's
  Color Selection = 0xFFFFFF;                          // of the button that is chosen
  Color Action = 0xFFFFFF;                             // of the one that is pressed
  std::string LabelLanguage = "English";
  std::map<std::string, std::string> OwnLabels;  // by the English label
  bool TrackNames = true;                        // root page and title choice name the films
};

}  // namespace quorvelant
