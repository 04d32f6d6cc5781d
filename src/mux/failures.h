// What can go wrong between the stream and the player's buffers.
#pragma once

#include <cstdint>

#include "mux/mux_state.h"

namespace quorvelant {

// Of a disc that does not play as its project says: ends the build by rules that refuse such a disc,
// otherwise warns.
void RefuseOrWarn(MuxBuild& build, Message message);

// Tells where a film's sequence headers stand so far apart that it can't be searched.
void CheckSequenceDistance(MuxState& state);

// The GOP of the current picture is longer than players take: ends the build.
void CheckGopLength(const MuxState& state);

// A navigation pack would come after the decoding time of the picture it leads: ends the build.
void CheckBitRate(const MuxState& state, Clock navScr);

// The video buffer is full and nothing can leave it. Asks; returns when the buffer is to be cleared.
void ReportBufferFault(MuxState& state);

// A picture was due `missingBytes` before it was complete. Asks at the first time in a build.
void ReportUnderflow(MuxState& state, std::int64_t missingBytes);

// Warns if the current picture is the last of its file and the file ends within it.
void WarnOfCutPicture(const MuxState& state);

// Warns of damaged pictures: once a kind and file, with the first place and the count.
void WarnOfDamage(const MuxState& state);

// Warns of sound files that hold bytes of no frame.
void WarnOfDamagedSound(const MuxState& state);

// Warns of sound that is more than a second shorter or longer than the picture, which ends at `endPts`, and
// refuses sound that would start after it.
void WarnOfAudioLengths(MuxState& state, std::int64_t endPts);

// Refuses buttons that start after the picture's end, and warns of those that a later set hides.
void CheckButtonTimes(MuxState& state, std::int64_t endPts);

}  // namespace quorvelant
