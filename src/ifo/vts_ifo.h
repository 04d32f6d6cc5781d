// VTS_nn_0.IFO whole.
#pragma once

#include "base/bytes.h"
#include "base/log.h"
#include "ifo/domain_records.h"

namespace quorvelant {

inline constexpr std::string_view TimeMapFailed =
    "Error generating TMAPTI tables DOH!, No TMAPTI table will be written in this IFO";

// The file of one title set, a multiple of 2048 bytes. Sectors that depend on other files are put in by
// the fix-up pass; until then the title VOBs are taken to follow the IFO at once.
Bytes BuildTitleSetIfo(const EntryRecords& records, Log& log);

}  // namespace quorvelant
