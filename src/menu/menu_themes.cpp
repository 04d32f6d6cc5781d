#include "menu/menu_themes.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "base/file_text.h"
#include "base/text.h"
#include "menu/look_fields.h"
#include "menu/messages.h"
#include "menu/order_fields.h"
#include "menu/page_layout.h"

namespace quorvelant {

namespace {

constexpr const char* ThemeFile = "theme.toml";

// A colour as it is usually written.
constexpr Color Rgb(std::uint32_t rgb) {
  return rgb >> 16 | (rgb & 0xFF00) | (rgb & 0xFF) << 16;
}

struct BuiltInTheme {
  std::string_view Name;
  Backdrop Ground;
  Color Heading;
  Color Item;
  Color Dim;  // of the bottom row and numbers
  Color Accent;
  Color Selection;
  Color Action;
  Color Shade;
  int ShadePercent;
  std::string_view Font = "sans-serif";
  std::array<int, FontSlotCount> Pixels = {36, 30, 22, 22};
};

constexpr std::array Themes{
    BuiltInTheme{.Name = "Midnight",
                 .Ground = {.Top = Rgb(0x16233A),
                            .Bottom = Rgb(0x0B1220),
                            .Glow = Rgb(0x2C4A72),
                            .GlowX = 0.85,
                            .GlowY = 0.05,
                            .GlowRadius = 0.9},
                 .Heading = Rgb(0xF4F6FA),
                 .Item = Rgb(0xE3E8F0),
                 .Dim = Rgb(0xAEBACB),
                 .Accent = Rgb(0xF0B34A),
                 .Selection = Rgb(0xFFC45C),
                 .Action = Rgb(0xFFF0CC),
                 .Shade = Rgb(0x04070C),
                 .ShadePercent = 70},
    BuiltInTheme{.Name = "Ember",
                 .Ground = {.Top = Rgb(0x2B2024),
                            .Bottom = Rgb(0x151012),
                            .Glow = Rgb(0x6B3A34),
                            .GlowX = 0.15,
                            .GlowY = 1.0,
                            .GlowRadius = 0.9},
                 .Heading = Rgb(0xF8F2EC),
                 .Item = Rgb(0xEAE0D8),
                 .Dim = Rgb(0xBFAFA6),
                 .Accent = Rgb(0xE8804C),
                 .Selection = Rgb(0xFF9E66),
                 .Action = Rgb(0xFFE2CC),
                 .Shade = Rgb(0x0A0607),
                 .ShadePercent = 70},
    BuiltInTheme{.Name = "Daylight",
                 .Ground = {.Top = Rgb(0xD9DDDC),
                            .Bottom = Rgb(0xC3CACB),
                            .Glow = Rgb(0xE9ECEA),
                            .GlowX = 0.2,
                            .GlowY = 0.1,
                            .GlowRadius = 0.9},
                 .Heading = Rgb(0x1E2A30),
                 .Item = Rgb(0x2B383E),
                 .Dim = Rgb(0x4A585F),
                 .Accent = Rgb(0x0E7C86),
                 .Selection = Rgb(0xB4320F),
                 .Action = Rgb(0x7A1F06),
                 .Shade = Rgb(0xF4F6F5),
                 .ShadePercent = 60},
    BuiltInTheme{.Name = "Classic",
                 .Ground = {.Top = Rgb(0x1A3A7A), .Bottom = Rgb(0x081838), .Glow = Rgb(0x1A3A7A)},
                 .Heading = Rgb(0xFFFFFF),
                 .Item = Rgb(0xFFFFFF),
                 .Dim = Rgb(0xFFFFFF),
                 .Accent = Rgb(0xFFFFFF),
                 .Selection = Rgb(0xFFD040),
                 .Action = Rgb(0xFFFFFF),
                 .Shade = 0,
                 .ShadePercent = 0,
                 .Font = "MS Sans Serif",
                 // 24, 24, 24 and 14 points at 96 to the inch
                 .Pixels = {32, 32, 32, 19}},
};

constexpr auto Names = [] {
  std::array<std::string_view, Themes.size()> names{};
  std::transform(Themes.begin(), Themes.end(), names.begin(),
                 [](const BuiltInTheme& theme) { return theme.Name; });
  return names;
}();

const BuiltInTheme* FindTheme(std::string_view name) {
  const auto* const theme = std::find_if(
      Themes.begin(), Themes.end(), [name](const BuiltInTheme& one) { return EqualNoCase(one.Name, name); });
  return theme == Themes.end() ? nullptr : theme;
}

const BuiltInTheme& DefaultTheme(const Rules& rules) {
  return PagesFit(rules) ? Themes.front() : Themes.back();
}

// What is left open comes from `other`.
void Fill(MenuFont& font, const MenuFont& other) {
  if (font == MenuFont{}) {
    font = other;
    return;
  }
  font.Name = font.Name.empty() ? other.Name : font.Name;
  font.PixelHeight = font.PixelHeight > 0 ? font.PixelHeight : other.PixelHeight;
  font.Ink = font.Ink == ThemesColor ? other.Ink : font.Ink;
}

void Fill(Color& color, Color other) {
  color = color == ThemesColor ? other : color;
}

void Fill(MenuLook& look, const BuiltInTheme& theme) {
  const std::array<Color, FontSlotCount> inks{theme.Heading, theme.Item, theme.Dim, theme.Dim};
  for (std::size_t slot = 0; slot < FontSlotCount; ++slot) {
    Fill(look.Fonts.at(slot), {.Name = std::string(theme.Font),
                               .PixelHeight = theme.Pixels.at(slot),
                               .Bold = false,
                               .Ink = inks.at(slot)});
  }
  Fill(look.Selection, theme.Selection);
  Fill(look.Action, theme.Action);
  Fill(look.Accent, theme.Accent);
  look.Ground = theme.Ground;
  look.Shade = theme.Shade;
  look.ShadePercent = theme.ShadePercent;
}

void Fill(MenuLook& look, const MenuLook& theme) {
  for (std::size_t slot = 0; slot < FontSlotCount; ++slot) {
    Fill(look.Fonts.at(slot), theme.Fonts.at(slot));
  }
  for (std::size_t kind = 0; kind < PageKindCount; ++kind) {
    std::string& picture = look.Backgrounds.at(kind);
    picture = picture.empty() ? theme.Backgrounds.at(kind) : picture;
  }
  Fill(look.Selection, theme.Selection);
  Fill(look.Action, theme.Action);
  look.Accent = theme.Accent;
}

// A theme of the user's; its `Theme` is the built-in one that has the rest.
struct OwnTheme {
  MenuLook Look = {};
  std::vector<Message> Errors = {};
};

OwnTheme ReadThemeText(std::string_view text, const std::string& file) {
  OwnTheme theme;
  MenuLook& look = theme.Look;
  look.Theme = Names.front();
  look.Accent = ThemesColor;
  try {
    const toml::table root = toml::parse(text, file);
    OrderFields fields(file);
    const std::array keys{
        OrderField{
            "base",
            [&](const auto& value) { look.Theme = fields.OneOf(value, "base", Names).value_or(look.Theme); }},
        OrderField{
            "accent",
            [&](const auto& value) { look.Accent = fields.Ink(value, "accent").value_or(look.Accent); }},
        OrderField{"colors", [&](const auto& value) { ReadColors(fields, value, look); }},
        OrderField{"fonts", [&](const auto& value) { ReadFonts(fields, value, look); }},
        OrderField{"backgrounds", [&](const auto& value) { ReadBackgrounds(fields, value, look); }}};
    fields.ReadTable(root, "a theme", keys);
    theme.Errors = fields.Errors();
  } catch (const toml::parse_error& fault) {
    theme.Errors.push_back(MessageOf(
        message::OrderNoToml, fmt::format("{}:{}", file, fault.source().begin.line), fault.description()));
  }
  return theme;
}

// Of a name that no built-in theme has.
OwnTheme ReadTheme(const std::string& folder) {
  constexpr std::uint64_t MostThemeBytes = std::uint64_t{1} << 20U;
  std::error_code failed;
  if (!std::filesystem::is_directory(folder, failed)) {
    return {.Errors = {MessageOf(message::ThemeMissing, folder, folder, fmt::join(Names, ", "))}};
  }
  const std::string file = (std::filesystem::path(folder) / ThemeFile).string();
  const auto text = ReadWhole(file, MostThemeBytes);
  return text ? ReadThemeText(*text, file)
              : OwnTheme{.Errors = {MessageOf(message::OrderUnreadable, file, file)}};
}

}  // namespace

std::span<const std::string_view> MenuThemeNames() {
  return Names;
}

CompletedLook CompleteLook(const MenuLook& look, const Rules& rules) {
  MenuLook whole = look;
  whole.Accent = ThemesColor;
  const BuiltInTheme* theme = look.Theme.empty() ? &DefaultTheme(rules) : FindTheme(look.Theme);
  if (theme == nullptr) {
    OwnTheme own = ReadTheme(look.Theme);
    if (!own.Errors.empty()) {
      return {.Look = std::nullopt, .Errors = std::move(own.Errors)};
    }
    Fill(whole, own.Look);
    theme = FindTheme(own.Look.Theme);
  }
  Fill(whole, *theme);
  return {.Look = std::move(whole), .Errors = {}};
}

}  // namespace quorvelant
