// When the sound of a stream begins.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/rules.h"
#include "disc/clock.h"

namespace quorvelant {

// The first packs of a stream and the stamp of its first sound (ticks, on the VOB's clock).
struct AudioStart {
  Clock FirstScr;
  Clock SecondScr;
  std::int64_t FirstPts = 0;
};

// Of stream `index` of the `count` that a track carries. The sound begins `delayMs` after the first picture.
[[nodiscard]] AudioStart StartOfAudio(std::int64_t delayMs, std::size_t index, std::size_t count,
                                      const Rules& rules);

// Whether such a stream begins after the disc does, and within a day.
[[nodiscard]] bool IsDelayKept(std::int64_t delayMs, std::size_t index, std::size_t count,
                               const Rules& rules);

// The delays that are kept, in ms.
inline constexpr std::int64_t MostDelayAtAllMs = 24LL * 3600 * 1000;
[[nodiscard]] std::int64_t LeastDelayAtAllMs(std::size_t index, std::size_t count, const Rules& rules);

}  // namespace quorvelant
