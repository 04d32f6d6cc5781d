#include "model/menu_kind.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/text.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

struct MenuRow {
  std::string_view Type;
  MenuKind Kind;
};
constexpr std::array<MenuRow, 7> MenuRows{{{"titlemenu", {0x82, 0x80}},
                                           {"title", {0x82, 0x80}},
                                           {"root", {0x83, 0x80}},
                                           {"subpicture", {0x84, 0x40}},
                                           {"audio", {0x85, 0x20}},
                                           {"angle", {0x86, 0x10}},
                                           {"ptt", {0x87, 0x08}}}};

}  // namespace

MenuKind MenuKindOf(std::string_view menuType) {
  constexpr std::string_view Suffix = " menu";
  const std::string lower = Lower(menuType);
  std::string_view type = Trim(lower);
  if (type.ends_with(Suffix)) {
    type = Trim(type.substr(0, type.size() - Suffix.size()));
  }
  const auto* row = std::ranges::find(MenuRows, type, &MenuRow::Type);
  return row == MenuRows.end() ? MenuKind{} : row->Kind;
}

bool HasMenu(const Lang_P& language, std::int32_t menu) {
  constexpr unsigned MenuBits = 0x0F;
  return std::ranges::any_of(Live(language.PGC), [menu](const PGC_P* chain) {
    const unsigned category = MenuKindOf(chain->MenuType).Category;
    return category != 0 && static_cast<std::int32_t>(category & MenuBits) == menu;
  });
}

}  // namespace quorvelant
