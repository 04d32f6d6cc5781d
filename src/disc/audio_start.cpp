#include "disc/audio_start.h"

#include <algorithm>

namespace quorvelant {
namespace {

// Packs are first sent at fixed times before the first picture: 134 and 153 sectors.
constexpr Clock FirstAudioScr{134 * SectorTicks.Units};
constexpr Clock SecondAudioScr{153 * SectorTicks.Units};
// A delay beyond these bounds moves the packs too.
constexpr std::int64_t LeastDelayMs = -60;
constexpr std::int64_t MostDelayMs = 300;
constexpr std::int64_t TicksPerMs = 90;

Clock Steps(std::size_t count) {
  return {SectorTicks.Units * static_cast<std::int64_t>(count)};
}

// The latest step of the grid at or before `scr` from which a pack arrives before `stamp`, whatever is under
// way and whichever stream goes first.
Clock InTimeFor(std::int64_t stamp, Clock scr, std::size_t streams) {
  const Clock late = scr - (Clock::FromTicks(stamp) - Steps(streams + 1));
  const std::int64_t steps = (late.Units + SectorTicks.Units - 1) / SectorTicks.Units;
  return late.Units > 0 ? scr - Clock{steps * SectorTicks.Units} : scr;
}

}  // namespace

AudioStart StartOfAudio(std::int64_t delayMs, std::size_t index, std::size_t count, const Rules& rules) {
  const std::int64_t beyond = delayMs - std::clamp(delayMs, LeastDelayMs, MostDelayMs);
  const Clock shift = Clock::FromTicks(TicksPerMs * beyond);
  const Clock early = Clock::FromTicks(TicksPerMs * std::min(delayMs - beyond, std::int64_t{0}));
  AudioStart start{.FirstScr = FirstAudioScr + Steps(index) + shift,
                   .SecondScr = SecondAudioScr + Steps(index + 1 == count ? 0 : index + 1) + shift + early,
                   .FirstPts = VideoStartPts + TicksPerMs * delayMs};
  if (rules.FirstAudioMeetsItsStamp) {
    start.FirstScr = InTimeFor(start.FirstPts, start.FirstScr, count);
  }
  return start;
}

bool IsDelayKept(std::int64_t delayMs, std::size_t index, std::size_t count, const Rules& rules) {
  return delayMs <= MostDelayAtAllMs &&
         StartOfAudio(delayMs, index, count, rules).FirstScr >= Steps(index + 1);
}

std::int64_t LeastDelayAtAllMs(std::size_t index, std::size_t count, const Rules& rules) {
  std::int64_t delay = -1000;  // too early for every stream
  while (!IsDelayKept(delay, index, count, rules)) {
    ++delay;
  }
  return delay;
}

}  // namespace quorvelant
