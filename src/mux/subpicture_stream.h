// The subpicture streams of a track while it is written: which unit is due, and which one shows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "disc/vob_records.h"
#include "mux/arrivals.h"
#include "mux/mux_track.h"
#include "subpicture/spu_record.h"

namespace quorvelant {

struct MuxState;

// A unit that was sent.
struct SentUnit {
  std::int64_t StartPts = 0;
  std::int64_t StopPts = 0;  // NeverStops where it shows until the next one
  std::uint32_t Sector = 0;  // its first pack
};
inline constexpr std::int64_t NeverStops = std::numeric_limits<std::int64_t>::max();

struct SubpictureState {
  const MuxSubStream* Input = nullptr;
  std::vector<SPURecord> Units;     // of the whole track; their bitmaps are read when they are due
  std::size_t Next = 0;             // index of the next to go
  std::vector<SentUnit> Sent = {};  // the one showing and those after it
  SubpictureBuffer Buffer = {};
  bool Overfilled = false;  // told
  LateArrivals Late = {};
};

// The streams of a track, their units timed.
std::vector<SubpictureState> OpenSubpictures(const MuxInput& input, const Rules& rules);

// Sends the units that start at or before `duePts` (ticks), stream by stream, after the sector written
// last. No video pack may be open. Raises MuxFault where a unit can't be made.
void SendDueUnits(MuxState& state, std::int64_t duePts);

// SubSync of a VOBU that starts at `startPts`, its navigation pack in `sector`.
std::array<std::uint32_t, SubStreamCount> SubpictureSync(std::vector<SubpictureState>& streams,
                                                         std::int64_t startPts, std::uint32_t sector);

}  // namespace quorvelant
