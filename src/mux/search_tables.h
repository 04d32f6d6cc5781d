// VOBU_SRI: where a player jumps from a VOBU when it scans forwards or backwards.
#pragma once

#include <cstddef>
#include <span>

#include "base/bytes.h"
#include "disc/clock.h"
#include "disc/video_standard.h"
#include "disc/vob_records.h"

namespace quorvelant {

// Fills the search rows of the navigation pack of record `index`. A jump never leaves the cell: players
// take the end of a cell from NEXT_VOBU, and one that led on would play the following cell twice.
void PutSearchTables(std::span<const VobuRecord> records, std::size_t index, const FrameTiming& timing,
                     ByteSpan sector);

}  // namespace quorvelant
