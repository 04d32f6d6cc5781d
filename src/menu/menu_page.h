// Pages of menus as plain values: what stands where. Positions and sizes are pixels of the page, 720 wide and
// 480 or 576 high, counted from its top left corner.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvelant {

enum class PageKind : std::uint8_t { Root, Audio, Subtitle, Chapter, TitleChoice };

// What a text is, which decides its font.
enum class FontSlot : std::uint8_t { PageTitle, Item, Main, Small };
inline constexpr std::size_t FontSlotCount = 4;

// The keys of buttons that do not stand for a number.
namespace menu_key {
inline constexpr const char* Play = "Play";
inline constexpr const char* Audio = "Audio";
inline constexpr const char* Subtitle = "Subtitle";
inline constexpr const char* Chapter = "Chapter";
inline constexpr const char* Main = "Main";
inline constexpr const char* Previous = "Previous";
inline constexpr const char* Next = "Next";
inline constexpr const char* SubtitlesOff = "Subtitles OFF";
}  // namespace menu_key

// A button's area, its colour scheme (1 to 3), and what it leads to: one of the keys above, or the number of
// a stream, chapter or title as text.
struct MenuButton {
  std::int16_t X1 = 0;
  std::int16_t X2 = 0;
  std::int16_t Y1 = 0;
  std::int16_t Y2 = 0;
  std::int16_t ColorScheme = 1;
  std::string Key;
  bool operator==(const MenuButton&) const = default;
};

// A line of text; (X, Y) is the top left corner of its box.
struct PageText {
  std::string Text;
  int X = 0;
  int Y = 0;
  FontSlot Slot = FontSlot::Item;
  int PixelHeight = 24;  // of the font's em on this page
  int Stretch = 100;     // width of letters, percent: pixels of a wide page are wide themselves
  bool operator==(const PageText&) const = default;
};

struct PageThumbnail {
  std::size_t Scene = 0;  // of the film's track, from 0
  int X = 0;
  int Y = 0;
  int Width = 0;
  int Height = 0;
  bool operator==(const PageThumbnail&) const = default;
};

// A filled box; both ends belong to it.
struct PageBox {
  int X1 = 0;
  int X2 = 0;
  int Y1 = 0;
  int Y2 = 0;
  bool operator==(const PageBox&) const = default;
};

// What lights up for a button: a box, the button's text, or both. Rows are those of the sublayer picture,
// which shows `SublayerRise` lines lower.
struct PageMark {
  std::optional<PageBox> Box = std::nullopt;
  int Frame = 0;  // width of the box's rim, which alone is painted; 0 for all of the box
  std::optional<PageText> Text = std::nullopt;
  bool operator==(const PageMark&) const = default;
};
inline constexpr int SublayerRise = 2;

struct MenuPage {
  std::vector<PageText> Texts;  // of the normal picture
  std::vector<PageThumbnail> Thumbnails;
  std::vector<PageBox> Accents;  // in the theme's accent colour
  std::vector<PageMark> Marks;   // of the sublayer, one a button
  std::vector<MenuButton> Buttons;
  std::size_t FirstItem = 0;  // how many items stand on the pages before
  bool operator==(const MenuPage&) const = default;
};

// The pages of one menu PGC, which become one track.
struct PageGroup {
  PageKind Kind = PageKind::Root;
  bool IsWide = false;  // laid out for 16:9
  std::vector<MenuPage> Pages;
  bool operator==(const PageGroup&) const = default;
};

// The menus of one film, in the order in which their tracks are made: audio, subtitle and chapter pages as
// far as there are any, the root page last.
struct FilmMenus {
  std::size_t Track = 0;  // of the film, index in `Tracks`
  std::vector<PageGroup> Groups;
};

struct DiscMenus {
  std::vector<FilmMenus> Films;
  std::optional<PageGroup> Choice;  // of titles, on a disc of several
};

}  // namespace quorvelant
