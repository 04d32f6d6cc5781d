#include "menu/look_fields.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvelant {

namespace {

constexpr std::array<std::pair<std::string_view, PageKind>, PageKindCount> PageWords{
    {{"root", PageKind::Root},
     {"audio", PageKind::Audio},
     {"subtitles", PageKind::Subtitle},
     {"chapters", PageKind::Chapter},
     {"titles", PageKind::TitleChoice}}};
constexpr std::array<std::pair<std::string_view, FontSlot>, FontSlotCount> FontWords{
    {{"heading", FontSlot::PageTitle},
     {"item", FontSlot::Item},
     {"main", FontSlot::Main},
     {"small", FontSlot::Small}}};

template <class Value>
void Take(std::optional<Value> value, Value& into) {
  if (value) {
    into = *std::move(value);
  }
}

void ReadFont(OrderFields& fields, const toml::node& table, std::string_view slot, MenuFont& font) {
  const auto flag = [&fields](std::string_view key, bool& into) {
    return OrderField{
        key, [&fields, key, &into](const toml::node& value) { Take(fields.Flag(value, key), into); }};
  };
  const std::array keys{
      OrderField{"name", [&](const auto& value) { Take(fields.Text(value, "name"), font.Name); }},
      OrderField{"size",
                 [&](const auto& value) { Take(fields.Number(value, "size", 8, 200), font.PixelHeight); }},
      OrderField{"color", [&](const auto& value) { Take(fields.Ink(value, "color"), font.Ink); }},
      flag("bold", font.Bold),
      flag("italic", font.Italic),
      flag("underline", font.Underline),
      flag("strikeout", font.StrikeOut)};
  fields.ReadTable(table, slot, keys);
}

}  // namespace

void ReadBackgrounds(OrderFields& fields, const toml::node& value, MenuLook& look) {
  std::vector<OrderField> keys;
  for (const auto& row : PageWords) {
    std::string& background = look.Backgrounds.at(static_cast<std::size_t>(row.second));
    keys.push_back({row.first, [&fields, &row, &background](const toml::node& picture) {
                      Take(fields.Path(picture, row.first), background);
                    }});
  }
  fields.ReadTable(value, "backgrounds", keys);
}

void ReadFonts(OrderFields& fields, const toml::node& value, MenuLook& look) {
  std::vector<OrderField> keys;
  for (const auto& row : FontWords) {
    MenuFont& font = look.Fonts.at(static_cast<std::size_t>(row.second));
    keys.push_back({row.first, [&fields, &row, &font](const toml::node& table) {
                      ReadFont(fields, table, row.first, font);
                    }});
  }
  fields.ReadTable(value, "fonts", keys);
}

void ReadColors(OrderFields& fields, const toml::node& value, MenuLook& look) {
  const std::array keys{
      OrderField{"selection",
                 [&](const auto& color) { Take(fields.Ink(color, "selection"), look.Selection); }},
      OrderField{"action", [&](const auto& color) { Take(fields.Ink(color, "action"), look.Action); }}};
  fields.ReadTable(value, "colors", keys);
}

}  // namespace quorvelant
