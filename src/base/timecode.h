// Timecodes "HH:MM:SS:FF" and frame counts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvelant {

// Frames a second of a video standard's text: 30 for "NTSC" in any case, otherwise 25.
int FramesPerSecond(std::string_view standard);

// Hours, minutes, seconds and frames, each at least two digits. Negative counts as 0.
std::string FramesToTimecode(std::int64_t frames, int framesPerSecond);

// The frame count of a timecode; ";" counts as ":", missing fields and an empty text as 0.
std::int64_t TimecodeToFrames(std::string_view timecode, int framesPerSecond);

enum class DropFrame { Add, Remove };
// Drop-frame correction at 30 frames a second: two frames for each whole minute that is not a multiple
// of ten. `Add` adds them; `Remove` takes them off and computes once more on the corrected count.
std::int64_t CorrectDropFrame(std::int64_t frames, DropFrame direction);

}  // namespace quorvelant
