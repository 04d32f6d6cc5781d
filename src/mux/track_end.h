// What is done when the last picture of a track is written.
#pragma once

#include "mux/mux_state.h"

namespace quorvelant {

// Drains the sound, closes the records, writes the navigation packs and adds the VOB to `records`.
void EndTrack(MuxState& state, VobSetRecords& records);

}  // namespace quorvelant
