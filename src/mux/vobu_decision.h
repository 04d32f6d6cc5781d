// Where a VOBU starts, and where a cell.
#pragma once

#include <cstdint>
#include <optional>

#include "base/rules.h"
#include "disc/clock.h"
#include "disc/video_standard.h"

namespace quorvelant {

// What is known at an I picture after a sequence header. Times are fields.
struct VobuQuestion {
  std::int64_t Elapsed = 0;              // in the track, before this picture
  std::int64_t InVobu = 0;               // in the VOBU, before this picture
  std::optional<std::int64_t> NextMark;  // in the track: where the next cell is wanted
  std::int64_t Ahead = 0;                // lengths of this picture and those after it; enough to tell a tail
  std::int64_t ToMarked = 0;             // to the first sequence header at or after a mark that is near
  bool EndsSequence = false;             // a sequence end code stands after this picture
  bool Still = false;                    // the track is a still
};

struct VobuDecision {
  bool Starts = false;
  bool OpensCell = false;
};

inline constexpr std::int64_t VobuMostTicks = 108000;  // 1.2 seconds, what players take at the end of a cell
std::int64_t MostVobuFields(const FrameTiming& timing);

// Whether the next mark is that near that a VOBU which starts now could not end at it.
bool MarkIsNear(const VobuQuestion& question, const FrameTiming& timing);

// A VOBU starts once it has its least frames, unless a cell mark is near, which it then waits for, or so
// little of the track is left that it joins the VOBU before. A mark that was met starts one in any case.
// Under the players' rules neither waiting nor joining may make a VOBU longer than players take: it starts
// all the same then, and is short, which the end of a cell allows.
VobuDecision DecideVobu(const VobuQuestion& question, const FrameTiming& timing, const Rules& rules);

}  // namespace quorvelant
