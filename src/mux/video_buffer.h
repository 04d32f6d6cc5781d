// The player's video buffer, played while the stream is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>

#include "disc/clock.h"

namespace quorvelant {

inline constexpr std::int64_t VideoBufferBytes = 237560;  // 8 below the 232 KiB that the packs declare

// A picture in the buffer, or still on its way into it.
struct QueuedPicture {
  std::int64_t Dts = 0;   // ticks
  std::int64_t Size = 0;  // bytes
};

// Time in the model is in units of 100 microseconds (nine ticks); data arrives at 1008 bits a unit.
struct VideoBuffer {
  std::int64_t Fill = 0;            // bytes; below 0 a picture was due before its data
  std::int64_t Deficit = 0;         // bytes still to arrive for pictures already decoded
  std::deque<QueuedPicture> Queue;  // in decoding order; the last one is the one being sent
};

// Enters a picture whose data begins to arrive.
void QueuePicture(VideoBuffer& buffer, QueuedPicture picture);

// Takes the pictures out that are decoded before `time` (units of 100 microseconds). True when a picture
// is left whose data is complete, so that the buffer will empty further.
bool ReleasePictures(VideoBuffer& buffer, std::int64_t time);

// When a pack of `bytes` of video may go, at `scr` or later: the clock moves on in quarters of a sector
// until there is room. `Stuck` tells that the buffer is full and nothing can ever leave it; the clock is
// then the one at which the pack may go once the buffer was cleared.
struct VideoBufferWait {
  Clock Scr;
  bool Stuck = false;
};
VideoBufferWait WaitForVideoBuffer(VideoBuffer& buffer, Clock scr, std::size_t bytes);

// Charges a pack that goes at `scr`. The answer is the number of bytes by which a picture fell short that
// was due before the pack is through, 0 when all is well; the buffer goes on as if it had been empty.
std::int64_t ChargeVideoBuffer(VideoBuffer& buffer, Clock scr, std::size_t bytes);

}  // namespace quorvelant
