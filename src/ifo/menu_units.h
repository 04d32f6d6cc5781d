// VMGM_PGCI_UT and VTSM_PGCI_UT: the menus of an entry, a unit a language.
#pragma once

#include <string_view>

#include "base/bytes.h"
#include "ifo/domain_records.h"

namespace quorvelant {

// An entry without a live language has one unit with one empty program chain.
Bytes BuildMenuUnits(const EntryRecords& records);

// What a menu PGC is for, by its menu type, in any case and with or without " menu" behind it.
struct MenuKind {
  std::uint8_t Category = 0;   // of the search pointer: entry bit and menu id; 0 for no menu by itself
  std::uint8_t Existence = 0;  // of the language unit
};
MenuKind MenuKindOf(std::string_view menuType);

}  // namespace quorvelant
