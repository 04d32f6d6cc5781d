// Sound and subpictures against the player's clock and buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>

#include "disc/clock.h"

namespace quorvelant {

struct MuxState;

inline constexpr std::int64_t SubpictureBufferBytes = 53248;  // 52 KB of one stream

// What came after its time.
struct LateArrivals {
  std::int64_t Count = 0;
  std::int64_t WorstTicks = 0;
  std::int64_t FirstPts = 0;  // of the first of them

  // Something that shows or sounds at `pts` has arrived with the sector at `scr`.
  void Note(Clock scr, std::int64_t pts);
};

// The units of one subpicture stream that wait in the player's buffer; each leaves it when it shows.
class SubpictureBuffer {
 public:
  // Enters a unit that has arrived with the sector at `scr`; returns the bytes held then.
  std::int64_t Enter(Clock scr, std::int64_t pts, std::size_t bytes);

 private:
  struct Unit {
    std::int64_t Pts = 0;
    std::int64_t Bytes = 0;
  };
  std::deque<Unit> units_;
  std::int64_t fill_ = 0;
};

// Warns of what came late, stream by stream.
void WarnOfLateArrivals(const MuxState& state);
// Of units that a track left behind at its end.
void WarnOfUnsentUnits(const MuxState& state);

}  // namespace quorvelant
