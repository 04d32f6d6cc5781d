#include "mux/vobu_decision.h"

namespace quorvelant {
namespace {

std::int64_t LeastFields(const FrameTiming& timing) {
  return 2 * std::int64_t{timing.VobuMinFrames};
}

}  // namespace

std::int64_t MostVobuFields(const FrameTiming& timing) {
  return 2 * VobuMostTicks / timing.FramePeriod;
}

bool MarkIsNear(const VobuQuestion& question, const FrameTiming& timing) {
  return question.NextMark && question.Elapsed < *question.NextMark &&
         *question.NextMark <= question.Elapsed + LeastFields(timing);
}

VobuDecision DecideVobu(const VobuQuestion& question, const FrameTiming& timing, const Rules& rules) {
  const std::int64_t least = LeastFields(timing);
  const auto fits = [&](std::int64_t fields) {
    return !rules.LimitVobuLength || question.InVobu + fields <= MostVobuFields(timing);
  };
  const bool enough = question.InVobu >= least;
  const bool markMet = question.NextMark && question.Elapsed >= *question.NextMark;
  const bool forced = markMet || (question.EndsSequence && enough);
  const bool waits = MarkIsNear(question, timing) && fits(question.ToMarked);
  const bool joins = !question.Still && !forced && question.Ahead < least && fits(question.Ahead);
  const bool starts = (enough || question.Still || forced) && !waits && !joins;
  return {starts, starts && markMet};
}

}  // namespace quorvelant
