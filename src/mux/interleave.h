// Audio packs between the others.
#pragma once

#include <optional>

#include "mux/mux_state.h"

namespace quorvelant {

// Writes the audio packs that are due before a video pack at `videoScr`, each at its own clock. Returns
// the clock at which the video pack may go: never earlier than asked, and one sector after the last.
Clock InterleaveAudio(MuxState& state, Clock videoScr);

// Writes the audio packs due up to a navigation pack wanted at `navScr`, as long as that pack can still
// go before `decodeTime`.
void SendAudioAhead(MuxState& state, Clock navScr, Clock decodeTime);

// Writes the rest of the sound, up to the end of the last picture (ticks).
void DrainAudio(MuxState& state, std::int64_t endPts);

}  // namespace quorvelant
