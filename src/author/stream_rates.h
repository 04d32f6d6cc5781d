// What the streams of a track ask of a disc together.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "check/findings.h"
#include "mux/mux_track.h"

namespace quorvelant {

// What the video of a track asks for.
struct VideoDemand {
  std::optional<int> Kbps;  // the least of its files; 0 where one has no constant rate
  std::uint64_t Bytes = 0;
};

// That the sound of a track leaves no room for its picture, or both together ask for more than a disc
// carries, on `place`.
[[nodiscard]] Findings JudgeRates(const MuxInput& input, const VideoDemand& video, const std::string& place,
                                  const Rules& rules);

}  // namespace quorvelant
