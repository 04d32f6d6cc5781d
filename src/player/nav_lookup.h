// What numbers and states mean on a disc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "player/nav_disc.h"
#include "player/nav_state.h"

namespace quorvelant {

inline constexpr std::uint16_t NoChain = 0;
inline constexpr std::uint16_t GoUpResumes = 0xFFFF;  // in place of the chain above
inline constexpr std::uint8_t TitleMenuId = 2;
inline constexpr std::uint8_t RootMenuId = 3;

// The unit of a language, or else the first one, as players choose it; nullptr where there is none.
[[nodiscard]] const NavMenus* MenusIn(const std::vector<NavMenus>& menus, std::uint16_t language);
[[nodiscard]] const NavSet* SetOf(const NavDisc& disc, std::size_t number);
// The number of the entry chain of a kind of menu; `NoChain` where there is none.
[[nodiscard]] std::uint16_t EntryChain(const NavMenus* menus, std::uint8_t menuId);
// The chain that a point is in; nullptr where the disc has none such.
[[nodiscard]] const NavChain* ChainAt(const NavDisc& disc, const NavPoint& point, std::uint16_t menuLanguage);
[[nodiscard]] const NavCell* CellAt(const NavDisc& disc, const NavState& state);
// Adds a page after the others; it ends by itself at so many ticks, or with its cell.
inline constexpr std::uint32_t NavForEver = 0xFFFFFFFF;
void AddPage(NavCell& cell, NavPage page, std::uint32_t end);
// The buttons that show; nullptr for none.
[[nodiscard]] const NavPage* PageAt(const NavDisc& disc, const NavState& state);

}  // namespace quorvelant
