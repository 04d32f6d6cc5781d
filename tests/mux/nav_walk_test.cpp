// Every figure of the navigation packs against what a walk through the finished sectors finds, in tracks
// long enough for all search rows.
#include <gtest/gtest.h>

#include "mux_run.h"
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
  };
  GopPlan ntsc{.Gops = 90, .GopLength = 15, .Pulldown = true, .BytesI = 9000, .BytesP = 4000, .BytesB = 1500};
  ntsc.Sequence.FrameRateCode = 4;
  ntsc.Sequence.Height = 480;
  const Case cases[] = {
      {"PAL", {.Gops = 300, .GopLength = 12, .BytesI = 9000, .BytesP = 4000, .BytesB = 1500}, false, {}, 1},
      {"PAL, cells", {.Gops = 40, .GopLength = 7, .Closed = false}, false, {40, 41, 100, 222}, 4},
      {"NTSC, pulldown", ntsc, true, {333, 1000}, 3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    MuxRun run;
    const Bytes stream = BuildStream(c.Plan);
    MuxInput input =
        MotionTrack({run.Folder.Write("film.m2v", std::string(stream.begin(), stream.end()))}, c.Ntsc);
    for (const std::int64_t mark : c.Marks) {
      input.Marks.push_back(MarkAt(mark, static_cast<int>(input.Marks.size())));
    }
    input.Audio = {Ac3Stream(SampleAc3({.Channels = 1, .Kbps = 96, .Seconds = 30}), 3)};
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    CheckNavFigures(WalkVobs({run.Base() + "_1.VOB"}), {c.Ntsc ? 3003 : 3600, c.Ntsc ? 30 : 25});
    EXPECT_EQ(run.Records.Vobs.at(0).Cells.size(), c.Cells);
  }
}

}  // namespace
}  // namespace quorvelant
