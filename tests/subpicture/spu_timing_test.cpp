#include "subpicture/spu_timing.h"

#include <gtest/gtest.h>

namespace quorvelant {
namespace {

SubPicturePlay Play(const char* start, const char* end, const char* duration = "") {
  SubPicturePlay play;
  play.File = "subs\\a.bmp";
  play.Start = start;
  play.End = end;
  play.Duration = duration;
  return play;
}

constexpr TrackClock Pal{3600, 25, 25257};
constexpr TrackClock Ntsc{3003, 30, 25257};

TEST(SpuTiming, StopDelayIsCutAndHeldAtItsLimit) {
  const struct {
    std::int64_t Frames;
    TrackClock Clock;
    std::uint32_t ByCount, OnClock;
  } cases[] = {{0, Pal, 0, 0},
               {-5, Pal, 0, 0},
               {1, Pal, 3, 3},
               {50, Pal, 175, 175},
               {60, Ntsc, 175, 175},
               {3000, Ntsc, 8789, 8797},  // 3 frames apart
               {18641, Pal, 65534, 65534},
               {18642, Pal, 65535, 65535},
               {INT64_MAX, Pal, 65535, 65535}};
  for (const auto& test : cases) {
    EXPECT_EQ(StopDelayOf(test.Frames, test.Clock, false), test.ByCount) << test.Frames;
    EXPECT_EQ(StopDelayOf(test.Frames, test.Clock, true), test.OnClock) << test.Frames;
  }
}

TEST(SpuTiming, SpansComeFromEndStopTimeOrDuration) {
  SubtitleStream stream;
  stream.SubPlays = {Play("00:00:01:00", "00:00:03:00"), Play("00:00:04;00", "", "00:00:02:00"),
                     Play("00:00:07:00", "00:00:08:00")};
  stream.SubPlays[2].StopTime = "00:00:00:13";
  const auto records = PrepareSPURecords(stream, {}, Pal, {.SourceFolder = "/films"});
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].StartPTS, 25 * 3600 + 25257);
  EXPECT_EQ(records[0].EndPTS, 75 * 3600 + 25257);
  EXPECT_EQ(records[1].EndPTS, 150 * 3600 + 25257);
  EXPECT_EQ(records[0].StopDelay, 175U);
  EXPECT_EQ(records[1].StopDelay, 175U);
  EXPECT_EQ(records[2].StopDelay, 45U);  // 13 frames of 90000 / 1024 / 25 steps
  EXPECT_EQ(records[0].File, "/films/subs/a.bmp");
  EXPECT_EQ(PrepareSPURecords(stream, {}, Ntsc, {})[0].StartPTS, 30 * 3003 + 25257);
}

TEST(SpuTiming, UnusedEntriesStayOffAndTheLastOneMayStay) {
  SubtitleStream stream;
  stream.SubPlays = {Play("00:00:01:00", "00:00:03:00"), Play("00:00:04:00", "00:00:05:00"),
                     Play("00:00:06:00", "00:00:07:00"), Play("00:00:08:00", "00:00:09:00")};
  stream.SubPlays[1].Used = false;
  stream.SubPlays[3].File.clear();
  auto records = PrepareSPURecords(stream, {}, Pal, {.ExtendFinalSubtitle = true});
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[1].Entry, 2U);
  EXPECT_GT(records[0].StopDelay, 0U);
  EXPECT_EQ(records[1].StopDelay, 0U);
  for (const SPURecord& record : PrepareSPURecords(stream, {}, Pal, {.StillTrack = true})) {
    EXPECT_EQ(record.StopDelay, 0U);
  }
  EXPECT_EQ(PrepareSPURecords(stream, {true}, Pal, {})[0].StopDelay, 0U);
}

TEST(SpuTiming, TheLastOfASceneStaysWhereACellHoldsTheScene) {
  Project project;
  Track track;
  track.Scenes = {{"First", 0, {}}, {"Second", 100, {}}};
  track.SubStreams.resize(1);
  SubtitleStream& stream = track.SubStreams[0];
  stream.SubPlays = {Play("00:00:00:00", "00:00:01:00"), Play("00:00:03:24", "00:00:05:00"),
                     Play("00:00:04:00", "00:00:05:00"), Play("00:00:06:00", "00:00:07:00")};
  const std::vector<bool> both{true, true};
  EXPECT_EQ(HeldPlays(track, stream, both, 25), (std::vector<bool>{false, true, false, true}));
  EXPECT_EQ(HeldPlays(track, stream, {true, false}, 25), (std::vector<bool>{false, true, false, false}));
  stream.SubPlays[1].StopTime = "00:00:00:10";
  stream.SubPlays[3].Used = false;
  EXPECT_EQ(HeldPlays(track, stream, both, 25), (std::vector<bool>{false, false, true, false}));

  project.Tracks.Add(Track{});
  project.Tracks.Add(track);
  Cell_P& cell = project.Disc.Add({}).Title.Add({}).PGC.Add({}).PG.Add({}).Cell.Add({});
  cell.SegmentUsed = 1;
  cell.pScene = 1;
  cell.StillTime = 255;
  EXPECT_EQ(ScenesWithStillTime(project, 1, Rules::Players), (std::vector<bool>{false, true}));
  cell.StillTime = 0;  // the chain's own does the same to its last cell
  project.Disc.Item(1)->Title.Item(1)->PGC.Item(1)->StillTime = 5;
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    EXPECT_EQ(ScenesWithStillTime(project, 1, rules), (std::vector<bool>{false, rules.ChainStillHolds}));
  }
  EXPECT_TRUE(ScenesWithStillTime(project, 0, Rules::Players).empty());
}

}  // namespace
}  // namespace quorvelant
