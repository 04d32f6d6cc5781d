// The menus that a disc's buttons reach by themselves.
#pragma once

#include <cstdint>
#include <string_view>

namespace quorvelant {

// What a menu PGC is for, by its menu type, in any case and with or without " menu" after it.
struct MenuKind {
  std::uint8_t Category = 0;   // of the search pointer: entry bit and menu id; 0 for no menu by itself
  std::uint8_t Existence = 0;  // of the language unit
};
MenuKind MenuKindOf(std::string_view menuType);

}  // namespace quorvelant
