#include "player/nav_lookup.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvelant {

namespace {

const NavChain* ChainOf(const std::vector<NavChain>& chains, std::size_t number) {
  return number >= 1 && number <= chains.size() ? &chains[number - 1] : nullptr;
}

}  // namespace

const NavMenus* MenusIn(const std::vector<NavMenus>& menus, std::uint16_t language) {
  const auto found = std::ranges::find(menus, language, &NavMenus::Language);
  if (found != menus.end()) {
    return &*found;
  }
  return menus.empty() ? nullptr : &menus.front();
}

const NavSet* SetOf(const NavDisc& disc, std::size_t number) {
  return number >= 1 && number <= disc.Sets.size() ? &disc.Sets[number - 1] : nullptr;
}

std::uint16_t EntryChain(const NavMenus* menus, std::uint8_t menuId) {
  if (menus == nullptr) {
    return 0;
  }
  const auto found = std::ranges::find_if(
      menus->Chains, [menuId](const NavChain& chain) { return chain.IsEntry && chain.MenuId == menuId; });
  return found == menus->Chains.end()
             ? std::uint16_t{0}
             : static_cast<std::uint16_t>(std::distance(menus->Chains.begin(), found) + 1);
}

const NavChain* ChainAt(const NavDisc& disc, const NavPoint& point, std::uint16_t menuLanguage) {
  switch (point.Domain) {
    case NavDomain::FirstPlay:
      return disc.FirstPlay ? &*disc.FirstPlay : nullptr;
    case NavDomain::ManagerMenu: {
      const NavMenus* menus = MenusIn(disc.Menus, menuLanguage);
      return menus == nullptr ? nullptr : ChainOf(menus->Chains, point.Chain);
    }
    case NavDomain::SetMenu: {
      const NavSet* set = SetOf(disc, point.Set);
      const NavMenus* menus = set == nullptr ? nullptr : MenusIn(set->Menus, menuLanguage);
      return menus == nullptr ? nullptr : ChainOf(menus->Chains, point.Chain);
    }
    case NavDomain::Title: {
      const NavSet* set = SetOf(disc, point.Set);
      return set == nullptr ? nullptr : ChainOf(set->Titles, point.Chain);
    }
  }
  return nullptr;
}

const NavCell* CellAt(const NavDisc& disc, const NavState& state) {
  const NavChain* chain = ChainAt(disc, state.At, state.Registers.Of(Sprm::MenuLanguage));
  const std::size_t number = state.At.Cell;
  return chain != nullptr && number >= 1 && number <= chain->Cells.size() ? &chain->Cells[number - 1]
                                                                          : nullptr;
}

void AddPage(NavCell& cell, NavPage page, std::uint32_t end) {
  if (!cell.Pages.empty() && cell.Pages.back().Buttons.empty() && page.Start <= cell.Pages.back().Start) {
    cell.Pages.pop_back();  // nothing lies between the two
  }
  cell.Pages.push_back(std::move(page));
  if (end != NavForEver) {
    cell.Pages.push_back({.Start = end});
  }
}

const NavPage* PageAt(const NavDisc& disc, const NavState& state) {
  const NavCell* cell = state.Phase == NavPhase::Stopped ? nullptr : CellAt(disc, state);
  if (cell == nullptr || state.Page < 1 || state.Page > cell->Pages.size()) {
    return nullptr;
  }
  const NavPage& page = cell->Pages[state.Page - 1U];
  return page.Buttons.empty() ? nullptr : &page;
}

}  // namespace quorvelant
