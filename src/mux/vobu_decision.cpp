#include "mux/vobu_decision.h"

namespace quorvelant {
namespace {

std::int64_t LeastHalves(const FrameTiming& timing) {
  return 2 * std::int64_t{timing.VobuMinFrames};
}

// 1.2 seconds: two GOPs of the greatest length.
std::int64_t MostHalves(const FrameTiming& timing) {
  return 4 * std::int64_t{timing.MostTemporalReference};
}

}  // namespace

bool MarkIsNear(const VobuQuestion& question, const FrameTiming& timing) {
  return question.NextMark && question.Elapsed < *question.NextMark &&
         *question.NextMark <= question.Elapsed + LeastHalves(timing);
}

VobuDecision DecideVobu(const VobuQuestion& question, const FrameTiming& timing) {
  const std::int64_t least = LeastHalves(timing);
  const std::int64_t most = MostHalves(timing);
  const bool enough = question.InVobu >= least;
  const bool markMet = question.NextMark && question.Elapsed >= *question.NextMark;
  const bool forced = markMet || (question.EndsSequence && enough);
  const bool waits = MarkIsNear(question, timing) && question.InVobu + question.ToMarked <= most;
  const bool joins =
      !question.Still && !forced && question.Ahead < least && question.InVobu + question.Ahead <= most;
  const bool starts = (enough || question.Still || forced) && !waits && !joins;
  return {starts, starts && markMet};
}

}  // namespace quorvelant
