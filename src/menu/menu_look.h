// How menus look: fonts, backgrounds, colours and the language of labels.
#pragma once

#include <array>
#include <map>
#include <string>

#include "menu/menu_page.h"
#include "model/tracks.h"

namespace quorvelant {

// What the theme has; no colour of a pixel.
inline constexpr Color ThemesColor = 0xFF000000;

struct MenuFont {
  std::string Name = {};  // family; empty for the theme's
  int PixelHeight = 0;    // of the em; 0 for the theme's
  bool Bold = false;
  bool Italic = false;
  bool StrikeOut = false;
  bool Underline = false;
  Color Ink = ThemesColor;
  bool operator==(const MenuFont&) const = default;
};

// A background that is painted: one colour runs into another from the top to the bottom, with a glow.
struct Backdrop {
  Color Top = 0;
  Color Bottom = 0;
  Color Glow = 0;
  double GlowX = 0.5;       // of the page's width, from its left
  double GlowY = 0;         // of its height, from the top
  double GlowRadius = 0.8;  // of the width
  bool operator==(const Backdrop&) const = default;
};

inline constexpr std::size_t PageKindCount = 5;

struct MenuLook {
  std::string Theme = {};  // the name of a built-in one, or a folder with a theme.toml
  std::array<MenuFont, FontSlotCount> Fonts = {};
  std::array<std::string, PageKindCount> Backgrounds =
      {};                         // picture files by `PageKind`; empty for the theme's
  Color Selection = ThemesColor;  // of the button that is chosen
  Color Action = ThemesColor;     // of the one that is pressed
  std::string LabelLanguage = "English";
  std::map<std::string, std::string> OwnLabels = {};  // by the English label
  bool TrackNames = true;                             // root page and title choice name the films

  // What a theme alone says (`CompleteLook`).
  Backdrop Ground = {};
  Color Accent = 0;
  Color Shade = 0;       // around letters
  int ShadePercent = 0;  // how dense it is
};

}  // namespace quorvelant
