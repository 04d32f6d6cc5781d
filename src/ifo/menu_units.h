// VMGM_PGCI_UT and VTSM_PGCI_UT: the menus of an entry, a unit a language.
#pragma once

#include "base/bytes.h"
#include "ifo/domain_records.h"

namespace quorvelant {

// An entry without a live language has one unit with one empty program chain.
Bytes BuildMenuUnits(const EntryRecords& records);

}  // namespace quorvelant
