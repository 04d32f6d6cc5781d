// The sectors of a VOB set from first to last, read ahead of their use.
#pragma once

#include <functional>

#include "base/bytes.h"
#include "verify/disc_source.h"
#include "verify/vob_place.h"

namespace quorvelant {

// Hands every whole sector to `take`, until `stop` says so between blocks. While one block is used, the next
// are read in a thread; a few blocks are all the memory. Raises FileError.
void StreamSectors(DiscSource& source, const VobSetFiles& files, const std::function<void(ByteView)>& take,
                   const std::function<bool()>& stop);

}  // namespace quorvelant
