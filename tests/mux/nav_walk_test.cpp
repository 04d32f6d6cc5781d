// Every figure of the navigation packs against what a walk through the finished sectors finds, in tracks
// long enough for all search rows.
#include <gtest/gtest.h>

#include "mux_run.h"
#include "subtitled_track.h"
#include "support/media.h"
#include "support/nav_figures.h"
#include "support/stream_builder.h"
#include "support/vob_walk.h"

namespace quorvelant {
namespace {

TEST(NavWalk, EveryFigureIsWhatAWalkFinds) {
  struct Case {
    const char* Name;
    GopPlan Plan;
    bool Ntsc;
    std::vector<std::int64_t> Marks;
    std::size_t Cells;
    Rules Rule = Rules::Players;
    std::uint32_t Split = SplitSectors;
  };
  GopPlan ntsc{.Gops = 90, .GopLength = 15, .Pulldown = true, .BytesI = 9000, .BytesP = 4000, .BytesB = 1500};
  ntsc.Sequence.FrameRateCode = 4;
  ntsc.Sequence.Height = 480;
  const Case cases[] = {
      {"PAL", {.Gops = 300, .GopLength = 12, .BytesI = 9000, .BytesP = 4000, .BytesB = 1500}, false, {}, 1},
      // Marks on headers in a row make VOBUs of few frames; VOBUs lie across files.
      {"PAL, cells",
       {.Gops = 40, .GopLength = 4, .Closed = false},
       false,
       {40, 41, 44, 100},
       4,
       Rules::Players,
       700},
      {"PAL, cells, classic", {.Gops = 40, .GopLength = 4}, false, {40, 44, 100}, 4, Rules::Classic},
      {"NTSC, pulldown", ntsc, true, {333, 1000}, 3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    MuxRun run(c.Rule);
    run.Split = c.Split;
    const SubtitleStream stream =
        StreamOf(run.Folder, "a", {{64, 32, 600, 300, 5, 20}, {64, 32, 600, 300, 30, 90}}, c.Ntsc);
    MuxInput input = MotionTrack({Saved(run.Folder, BuildStream(c.Plan))}, c.Ntsc);
    input.Marks = MarksAt(c.Marks);
    for (MuxMark& mark : input.Marks) {
      mark.UopMask = 0x100U << mark.Scene;
    }
    // Sound that ends ahead of the film, and some that begins late.
    input.Audio = {Ac3Stream(SampleAc3({.Channels = 1, .Kbps = 96, .Seconds = 3}), 3),
                   Ac3Stream(SampleAc3({.Kbps = 448, .Seconds = 30}), 0)};
    input.Audio[1].DelayMs = 900;
    input.Subpictures = {{7, &stream, {}}};
    ASSERT_EQ(run.Mux({input, input}), MuxOutcome::Done);
    EXPECT_EQ(run.Records.Vobs.at(1).Cells.size(), c.Cells);
    const std::vector<WalkedVobu> vobus = WalkVobs(run.VobFiles());
    CheckNavFigures(vobus, {c.Ntsc ? 3003 : 3600, c.Ntsc ? 30 : 25, c.Rule.AudioSyncLeavesVobu});
    std::size_t next = 0;
    for (const WalkedVobu& vobu : vobus) {
      const auto& cells = run.Records.Vobs.at(vobu.Field(1055, 2) - 1).Cells;
      const CellRecord& cell = cells.at(vobu.Field(1058, 1) - 1);
      EXPECT_EQ(vobu.Field(53, 4), 0x100U << cell.Scene) << "VOBU_UOP_CTL";
      EXPECT_EQ(vobu.Sector, run.Records.VobuAddressList.at(next++));
    }
  }
}

}  // namespace
}  // namespace quorvelant
