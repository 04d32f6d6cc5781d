#include "mux/vobu_decision.h"

#include <gtest/gtest.h>

namespace quorvelant {
namespace {

constexpr std::int64_t Plenty = 100;

// Frames of the question, doubled: the decision counts half frames.
VobuQuestion Frames(std::int64_t elapsed, std::int64_t inVobu, std::int64_t ahead = Plenty) {
  return {.Elapsed = 2 * elapsed, .InVobu = 2 * inVobu, .NextMark = {}, .Ahead = 2 * ahead};
}

VobuQuestion Marked(VobuQuestion question, std::int64_t mark, std::int64_t toMarked) {
  question.NextMark = 2 * mark;
  question.ToMarked = 2 * toMarked;
  return question;
}

TEST(VobuDecision, StartsOnceTheLeastFramesArePassed) {
  EXPECT_FALSE(DecideVobu(Frames(100, 9), PalTiming).Starts);
  EXPECT_TRUE(DecideVobu(Frames(100, 10), PalTiming).Starts);
  EXPECT_FALSE(DecideVobu(Frames(100, 11), NtscTiming).Starts);
  EXPECT_TRUE(DecideVobu(Frames(100, 12), NtscTiming).Starts);
  VobuQuestion still = Frames(1, 1, 1);
  still.Still = true;
  EXPECT_TRUE(DecideVobu(still, PalTiming).Starts) << "a still starts one at each sequence header";
}

TEST(VobuDecision, WaitsForAMarkThatIsNearAndOpensItsCell) {
  struct Case {
    std::int64_t Elapsed, InVobu, Mark, ToMarked;
    bool Starts, OpensCell;
  };
  const Case cases[] = {
      {100, 12, 111, 24, true, false},   // beyond the least frames: no reason to wait
      {100, 12, 110, 12, false, false},  // exactly the least frames away
      {100, 12, 101, 12, false, false}, {100, 12, 100, 0, true, true},
      {100, 3, 99, 0, true, true},       // a mark that was met needs no least frames
      {100, 18, 110, 12, false, false},  // 30 frames, 1.2 seconds: the longest end of a cell
      {100, 19, 110, 12, true, false},   // one more would be too long
  };
  for (const Case& c : cases) {
    const VobuDecision decision =
        DecideVobu(Marked(Frames(c.Elapsed, c.InVobu), c.Mark, c.ToMarked), PalTiming);
    EXPECT_EQ(decision.Starts, c.Starts) << &c - cases;
    EXPECT_EQ(decision.OpensCell, c.OpensCell) << &c - cases;
  }
}

TEST(VobuDecision, AShortTailJoinsTheVobuBefore) {
  EXPECT_FALSE(DecideVobu(Frames(100, 12, 9), PalTiming).Starts);
  EXPECT_TRUE(DecideVobu(Frames(100, 12, 10), PalTiming).Starts);
  EXPECT_FALSE(DecideVobu(Frames(100, 21, 9), PalTiming).Starts);
  EXPECT_TRUE(DecideVobu(Frames(100, 22, 9), PalTiming).Starts) << "31 frames are more than 1.2 seconds";
  EXPECT_TRUE(DecideVobu(Marked(Frames(100, 5, 3), 98, 0), PalTiming).OpensCell) << "a mark is forced";
  VobuQuestion single = Frames(100, 12, 1);
  single.EndsSequence = true;
  EXPECT_TRUE(DecideVobu(single, PalTiming).Starts);
}

}  // namespace
}  // namespace quorvelant
