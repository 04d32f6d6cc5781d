// The sectors of a VOB set from first to last, read ahead of their use.
#pragma once

#include <functional>

#include "verify/disc_source.h"
#include "verify/pack_block.h"
#include "verify/vob_place.h"

namespace quorvelant {

// Hands all packs to `take`, until `stop` says so between blocks. Two threads read, parse and call, one of
// them the caller's, but both functions run in one at a time. A few blocks are all the memory. What cannot be
// read is named with the packs. Raises FileError where the disc no longer opens, and what `take` or `stop`
// raise.
void StreamSectors(const DiscSource& source, const VobSetFiles& files, bool isOurs,
                   const std::function<void(const PackBlock&)>& take, const std::function<bool()>& stop);

}  // namespace quorvelant
