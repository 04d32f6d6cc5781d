// The VOBUs and cells of the track being written: when they open and what is recorded of them.
#pragma once

#include <cstdint>

#include "mux/mux_state.h"

namespace quorvelant {

// Opens the VOB with its first navigation pack, at clock 0.
void OpenVob(MuxState& state);

// Opens a VOBU, and a cell, with the current picture if the time has come.
void OpenVobuIfDue(MuxState& state);

// Opens a VOBU, and a cell where a mark was met, after all that was shown so far: while a picture is held.
// It has no video until a picture goes into it. Its navigation pack goes at `wanted` or later.
void OpenHeldVobu(MuxState& state, Clock wanted);

// Notes the sector in which the picture just written ends, for the jumps of fast playback.
void NotePictureEnd(MuxState& state);

// Notes an audio pack at `sector` whose first frame sounds at `pts`, in stream `index` of the state.
void NoteAudioPack(MuxState& state, std::size_t index, std::uint32_t sector, std::int64_t pts);

// Gives the last VOBU and the last cell their ends: the last sector written and the time `endPts`.
void CloseRecords(MuxState& state, std::int64_t endPts);

}  // namespace quorvelant
