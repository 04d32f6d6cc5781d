// When subtitles show: from the timecodes of a track's stream to the clock of its VOB.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/rules.h"
#include "model/project.h"
#include "subpicture/spu_record.h"

namespace quorvelant {

// How a track's timecodes become ticks of 90 kHz.
struct TrackClock {
  std::int64_t FramePeriod = 3600;  // ticks a frame: 3600, or 3003 for NTSC
  int FramesPerSecond = 25;         // as timecodes count: 25 or 30
  std::int64_t StartPts = 25257;    // of the track's first picture

  std::int64_t PtsOf(std::int64_t frame) const { return frame * FramePeriod + StartPts; }
};

struct SubStreamOptions {
  bool StillTrack = false;           // subtitles of a still stay
  bool ExtendFinalSubtitle = false;  // the last one stays
  bool StopDelayOnClock = false;     // see Rules
  std::string_view SourceFolder{};   // relative bitmap paths count from here
};

// Where a play starts and ends, in frames from the start of the track. Without an end the duration tells.
struct PlaySpan {
  std::int64_t Start = 0;
  std::int64_t End = 0;
};
PlaySpan SpanOf(const SubPicturePlay& play, int framesPerSecond);
PlaySpan SpanOf(const HighlightPlay& play, int framesPerSecond);

// Steps of 1024/90000 s that `frames` last, by the frame period or by the count of timecodes, cut to a whole
// number, at most 65535 and not below 0.
std::uint32_t StopDelayOf(std::int64_t frames, const TrackClock& clock, bool onClock);

// The entries that go on the disc: those used and with a file. `held` tells of each play of the stream
// whether its picture stays (see HeldPlays); plays beyond it do not.
std::vector<SPURecord> PrepareSPURecords(const SubtitleStream& stream, const std::vector<bool>& held,
                                         const TrackClock& clock, const SubStreamOptions& options);

// Of each scene of the track: whether a cell of the disc that plays it, in a title or a menu, has a still
// time.
std::vector<bool> ScenesWithStillTime(const Project& project, std::size_t trackIndex, const Rules& rules);

// Of each play of the stream: whether its picture keeps without a stop. It does when it is the last that
// starts within its scene, has no stop time of its own, and a cell holds that scene.
std::vector<bool> HeldPlays(const Track& track, const SubtitleStream& stream,
                            const std::vector<bool>& sceneHolds, int framesPerSecond);

}  // namespace quorvelant
