#include "mux/vobu_decision.h"

#include <gtest/gtest.h>

namespace quorvelant {
namespace {

// In frames: the decision counts fields.
struct Case {
  std::int64_t InVobu;
  std::int64_t Ahead = 100;     // to the end of the track
  std::int64_t Mark = -1;       // from here; -1 for none
  std::int64_t ToMarked = 0;    // to the sequence header behind it
  const char* Expected = "VV";  // players, classic: 'V' a VOBU starts, 'C' with a cell, '-' none does
  bool EndsSequence = false;
  bool Still = false;
};

char Decision(const Case& c, const FrameTiming& timing, const Rules& rules) {
  VobuQuestion question{.Elapsed = 200,
                        .InVobu = 2 * c.InVobu,
                        .NextMark = {},
                        .Ahead = 2 * c.Ahead,
                        .ToMarked = 2 * c.ToMarked,
                        .EndsSequence = c.EndsSequence,
                        .Still = c.Still};
  if (c.Mark >= 0) {
    question.NextMark = 200 + 2 * c.Mark;
  }
  const VobuDecision decision = DecideVobu(question, timing, rules);
  return decision.OpensCell ? 'C' : decision.Starts ? 'V' : '-';
}

TEST(VobuDecision, FollowsFramesMarksAndTheEnd) {
  const Case pal[] = {
      {.InVobu = 9, .Expected = "--"},
      {.InVobu = 10},
      {.InVobu = 1, .Ahead = 1, .Still = true},  // at each sequence header
      // A mark within the least frames is waited for, but players take 30 frames at the end of a cell.
      {.InVobu = 12, .Mark = 11, .ToMarked = 24},
      {.InVobu = 12, .Mark = 10, .ToMarked = 12, .Expected = "--"},
      {.InVobu = 12, .Mark = 1, .ToMarked = 12, .Expected = "--"},
      {.InVobu = 18, .Mark = 10, .ToMarked = 12, .Expected = "--"},
      {.InVobu = 19, .Mark = 10, .ToMarked = 12, .Expected = "V-"},
      // One that was met needs no least frames.
      {.InVobu = 12, .Mark = 0, .Expected = "CC"},
      {.InVobu = 3, .Ahead = 3, .Mark = 0, .Expected = "CC"},
      // A short rest of the track joins the VOBU before, under the same bound.
      {.InVobu = 12, .Ahead = 9, .Expected = "--"},
      {.InVobu = 12, .Ahead = 10},
      {.InVobu = 21, .Ahead = 9, .Expected = "--"},
      {.InVobu = 22, .Ahead = 9, .Expected = "V-"},
      {.InVobu = 12, .Ahead = 1, .EndsSequence = true},
  };
  for (const Case& c : pal) {
    EXPECT_EQ(Decision(c, PalTiming, Rules::Players), c.Expected[0]) << &c - pal;
    EXPECT_EQ(Decision(c, PalTiming, Rules::Classic), c.Expected[1]) << &c - pal;
  }
  EXPECT_EQ(Decision({.InVobu = 11}, NtscTiming, Rules::Players), '-');
  EXPECT_EQ(Decision({.InVobu = 12}, NtscTiming, Rules::Players), 'V');
}

}  // namespace
}  // namespace quorvelant
