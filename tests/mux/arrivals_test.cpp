#include "mux/arrivals.h"

#include <gtest/gtest.h>

#include "mux/messages.h"
#include "subtitled_track.h"
#include "support/media.h"

namespace quorvelant {
namespace {

TEST(Arrivals, UnitsLeaveTheBufferWhenTheyShow) {
  SubpictureBuffer buffer;
  EXPECT_EQ(buffer.Enter(Clock::FromTicks(900), 1000, 7000), 7000);
  EXPECT_EQ(buffer.Enter(Clock::FromTicks(999), 1200, 8000), 15000);
  EXPECT_EQ(buffer.Enter(Clock::FromTicks(1000), 1300, 100), 8100);
  LateArrivals late;
  late.Note(Clock::FromTicks(1000), 1146);
  late.Note(Clock::FromTicks(1000), 1100);
  late.Note(Clock::FromTicks(2000), 2000);
  EXPECT_EQ(late.Count, 2);
  EXPECT_EQ(late.FirstPts, 1100);
  EXPECT_EQ(late.WorstTicks, 146);
}

// Each of them fits by itself.
TEST(Arrivals, TooMuchAtOnceIsRefusedForPlayers) {
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    MuxRun run(rules);
    std::vector<TestSubtitle> entries;
    for (int i = 0; i < 20; ++i) {
      entries.push_back({200, 200, 100, 100, 40 + i, 41 + i, false, 1});
    }
    const SubtitleStream stream = StreamOf(run.Folder, "a", entries, false);
    MuxInput input = MotionTrack({SampleVideo({.Frames = 75})});
    input.Subpictures = {{0, &stream, {}}};
    EXPECT_EQ(run.Mux(input), rules.RefusesDeadDiscs ? MuxOutcome::Failed : MuxOutcome::Done);
    EXPECT_TRUE(run.Ui.Messages.at(0).Is(message::SubtitlesOverfill));
  }
}

}  // namespace
}  // namespace quorvelant
