// Times as the disc holds them: hours, minutes, seconds and frames in BCD.
#pragma once

#include <algorithm>
#include <cstdint>

#include "disc/record.h"

namespace quorvelant {

// Four BCD bytes; the two top bits of the last name the rate, 01 for 25 and 11 for 30 frames a second.
// Negative counts as 0; beyond 99 hours the hours stay at 99. There is no drop-frame handling.
constexpr disc::BcdTime ToBcdTime(std::int64_t frames, int framesPerSecond) {
  const auto bcd = [](std::int64_t value) {
    return static_cast<std::uint32_t>(value / 10 << 4 | value % 10);
  };
  const std::int64_t count = std::max<std::int64_t>(frames, 0);
  const std::int64_t seconds = count / framesPerSecond;
  const std::uint32_t rate = framesPerSecond == 25 ? 0b01 : 0b11;
  return {bcd(std::min<std::int64_t>(seconds / 3600, 99)) << 24 | bcd(seconds / 60 % 60) << 16 |
          bcd(seconds % 60) << 8 | rate << 6 | bcd(count % framesPerSecond)};
}

}  // namespace quorvelant
