// The length of a track and how its timecodes count.
#pragma once

#include <cstdint>
#include <string>

#include "base/text.h"
#include "base/timecode.h"
#include "model/tracks.h"

namespace quorvelant {

struct TrackTimes {
  explicit TrackTimes(const Track& track) : FramesPerSecond(quorvelant::FramesPerSecond(track.Standard)) {
    if (EqualNoCase(track.TrackType, "Motion")) {
      Frames = track.VideoFrames > 0 ? track.VideoFrames : track.FrameCount;
    }
  }

  bool IsNtsc() const { return FramesPerSecond == 30; }
  // Whether the frame lies past the end; never where the length is not known or does not bind.
  bool StartsPastEnd(std::int64_t frame) const { return Frames > 0 && frame >= Frames; }
  bool EndsPastEnd(std::int64_t frame) const { return Frames > 0 && frame > Frames; }
  std::string Timecode(std::int64_t frame) const { return FramesToTimecode(frame, FramesPerSecond); }
  std::string End() const { return Timecode(Frames); }

  int FramesPerSecond;      // as timecodes count: 25 or 30
  std::int64_t Frames = 0;  // 0 where the length is not known or does not bind: stills and slides
};

}  // namespace quorvelant
