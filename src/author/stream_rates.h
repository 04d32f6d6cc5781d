// What the streams of a track ask of a disc together.
#pragma once

#include <string>

#include "check/findings.h"
#include "mux/mux_track.h"

namespace quorvelant {

// That the sound of a track leaves no room for its picture, on `place`.
[[nodiscard]] Findings JudgeRates(const MuxInput& input, const std::string& place, const Rules& rules);

}  // namespace quorvelant
