// Navigation packs of finished sectors against a walk through them.
#include <gtest/gtest.h>

#include "mux_run.h"
#include "subtitled_track.h"
#include "support/media.h"
#include "support/nav_figures.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

GopPlan Light(const SequenceFields& sequence, int gops, int length, bool pulldown = false) {
  return {.Sequence = sequence,
          .Gops = gops,
          .GopLength = length,
          .Pulldown = pulldown,
          .BytesI = 9000,
          .BytesP = 4000,
          .BytesB = 1500};
}

// Tracks long enough for all search rows: every figure is what a walk through the finished sectors finds.
TEST(NavPack, EveryFigureIsWhatAWalkFinds) {
  struct Case {
    const char* Name;
    GopPlan Plan;
    std::vector<std::int64_t> Marks;
    std::size_t Cells;
    Rules Rule = Rules::Players;
    std::uint32_t Split = MostVobSectors;
  };
  const GopPlan open{.Gops = 40, .GopLength = 4, .Closed = false};
  const Case cases[] = {
      {"PAL", Light({}, 300, 12), {}, 1},
      // Marks on headers in a row make VOBUs of few frames; VOBUs lie across files.
      {"PAL, cells", open, {40, 41, 44, 100}, 4, Rules::Players, 700},
      {"PAL, cells, classic", {.Gops = 40, .GopLength = 4}, {40, 44, 100}, 4, Rules::Classic},
      {"NTSC, pulldown", Light({.Height = 480, .FrameRateCode = 4}, 90, 15, true), {333, 1000}, 3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    const bool ntsc = c.Plan.Pulldown;
    MuxRun run(c.Rule);
    run.Split = c.Split;
    const SubtitleStream stream =
        StreamOf(run.Folder, "a", {{64, 32, 600, 300, 5, 20}, {64, 32, 600, 300, 30, 90}}, ntsc);
    MuxInput input = MotionTrack({Saved(run.Folder, BuildStream(c.Plan))}, ntsc);
    input.Marks = MarksAt(c.Marks);
    for (MuxMark& mark : input.Marks) {
      mark.UopMask = 0x100U << mark.Scene;
      mark.Plays = false;  // one of them opens no cell
    }
    // Sound that ends before the film, and some that begins late.
    input.Audio = {Ac3Stream(SampleAc3({.Channels = 1, .Kbps = 96, .Seconds = 3}), 3),
                   Ac3Stream(SampleAc3({.Kbps = 448, .Seconds = 30}), 0)};
    input.Audio[1].DelayMs = 900;
    input.Subpictures = {{7, &stream, {}}};
    ASSERT_EQ(run.Mux({input, input}), MuxOutcome::Done);
    EXPECT_EQ(run.Records.Vobs.at(1).Cells.size(), c.Cells);
    const std::vector<WalkedVobu> vobus = WalkVobs(run.VobFiles());
    CheckNavFigures(vobus, {ntsc ? 3003 : 3600, ntsc ? 30 : 25, c.Rule.AudioSyncLeavesVobu});
    std::vector<std::uint32_t> addresses;
    for (const WalkedVobu& vobu : vobus) {
      const VobRecord& vob = run.Records.Vobs.at(vobu.Field(1055, 2) - 1);
      const CellRecord& cell = vob.Cells.at(vobu.Field(1058, 1) - 1);
      EXPECT_EQ(vobu.Field(53, 4), 0x100U << cell.Scene) << "VOBU_UOP_CTL";
      addresses.push_back(vobu.Sector);
    }
    EXPECT_EQ(addresses, run.Records.VobuAddressList);
  }
}

}  // namespace
}  // namespace quorvelant
