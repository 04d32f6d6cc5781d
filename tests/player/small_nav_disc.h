// A disc with a title menu, one set with a root menu of two pages, and two titles.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "disc/command_hex.h"
#include "player/nav_disc.h"

namespace quorvelant {

inline std::vector<NavCommand> CommandsOf(std::initializer_list<std::string_view> digits) {
  std::vector<NavCommand> commands;
  for (const std::string_view hex : digits) {
    commands.push_back(ParseCommandHex(hex));
  }
  return commands;
}

// Buttons in a column, the last above the first.
inline NavPage PageOf(std::initializer_list<std::string_view> digits) {
  NavPage page;
  for (const NavCommand& command : CommandsOf(digits)) {
    const auto number = static_cast<std::uint8_t>(page.Buttons.size() + 1);
    const auto count = static_cast<std::uint8_t>(digits.size());
    page.Buttons.push_back({.Command = command,
                            .Up = static_cast<std::uint8_t>(number == 1 ? count : number - 1),
                            .Down = static_cast<std::uint8_t>(number == count ? 1 : number + 1)});
  }
  page.ByNumber = static_cast<std::uint8_t>(digits.size());
  page.ForcedSelect = 1;
  return page;
}

inline NavChain MenuOf(std::uint8_t menuId, NavPage page) {
  NavChain chain;
  chain.Programs = {1};
  chain.Cells = {{.Name = "", .StillTime = StillForEver, .Pages = {std::move(page)}}};
  chain.MenuId = menuId;
  chain.IsEntry = menuId != 0;
  return chain;
}

// A cell a program.
inline NavChain FilmOf(std::uint8_t title, int programs) {
  NavChain chain;
  for (int i = 1; i <= programs; ++i) {
    chain.Programs.push_back(static_cast<std::uint8_t>(i));
    chain.Cells.push_back({.Name = "", .Ticks = 90000});
  }
  chain.Title = title;
  chain.IsEntry = true;
  return chain;
}

inline NavDisc SmallNavDisc() {
  NavDisc disc;
  disc.FirstPlay.emplace();
  disc.FirstPlay->Pre = CommandsOf({"3006000000420000"});  // to the title menu
  NavMenus manager{.Language = 0x656E};
  manager.Chains = {MenuOf(2, PageOf({"3002000000010000", "3002000000020000", "3006000101830000"}))};
  disc.Menus = {manager};
  disc.Titles = {{.Name = "", .Set = 1, .Number = 1}, {.Name = "", .Set = 1, .Number = 2}};
  NavSet set;
  NavMenus root{.Language = 0x656E};
  root.Chains = {MenuOf(3, PageOf({"2001000000000010", "2004000000000002", "3005000200010000"})),
                 MenuOf(0, PageOf({"2001000000000800", "3006000000420000"}))};
  set.Menus = {root};
  set.Titles = {FilmOf(1, 3), FilmOf(2, 2)};
  set.Titles[0].Post = CommandsOf({"3008000001830000"});  // the root menu; it comes back to cell 1
  set.Titles[1].Post = CommandsOf({"3008000000420000"});  // the title menu
  set.Parts = {{{1, 1}, {1, 2}, {1, 3}}, {{2, 1}, {2, 2}}};
  disc.Sets = {set};
  return disc;
}

}  // namespace quorvelant
