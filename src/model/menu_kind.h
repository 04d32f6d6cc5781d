// The menus that a disc's buttons reach by themselves.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/my_dvd.h"

namespace quorvelant {

// What a menu PGC is for, by its menu type, in any case and with or without " menu" after it.
struct MenuKind {
  std::uint8_t Category = 0;   // of the search pointer: entry bit and menu id; 0 for no menu by itself
  std::uint8_t Existence = 0;  // of the language unit
};
MenuKind MenuKindOf(std::string_view menuType);

// Whether a language has a PGC for the menu of that number in commands: 2 title, 3 root, 4 subpicture, 5
// audio, 6 angle, 7 part of title.
[[nodiscard]] bool HasMenu(const Lang_P& language, std::int32_t menu);

}  // namespace quorvelant
