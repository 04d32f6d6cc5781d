// Stills and slides in finished sectors: when pictures show, how long, and what holds them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>

#include "codec/still_encoder.h"
#include "mux_run.h"
#include "picture/bmp.h"
#include "support/media.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Slides : public testing::Test {
 protected:
  // A track of bitmaps of one colour each; a slide of 0 frames has no time of its own.
  MuxInput Track(const std::vector<std::int64_t>& frames, bool ntsc = false, bool halfSize = false) {
    MuxInput input = MotionTrack({}, ntsc);
    input.Kind = TrackKind::SlideShow;
    for (const std::int64_t hold : frames) {
      Picture picture(halfSize ? 360 : 720, (ntsc ? 480 : 576) / (halfSize ? 2 : 1));
      std::ranges::fill(picture.Pixels, static_cast<std::uint8_t>(40 * input.Video.size() + 50));
      const std::string name = "slide" + std::to_string(input.Video.size()) + ".BMP";
      input.Video.push_back({.Path = Saved(Folder, WriteBmp(picture), name),
                             .ImageSource = true,
                             .HoldFlag = hold > 0,
                             .HoldFrames = hold});
    }
    return input;
  }
  TempFolder Folder;
};

// Frames that each VOBU lasts, by its navigation pack.
std::vector<std::int64_t> VobuFrames(const MuxRun& run, std::int64_t frameTicks) {
  const Bytes sectors = run.Sectors();
  std::vector<std::int64_t> frames;
  for (const std::uint32_t nav : run.Records.VobuAddressList) {
    const auto time = [&](std::size_t at) {
      return static_cast<std::int64_t>(GetBytes(sectors, nav * SectorBytes + at, 4));
    };
    frames.push_back((time(61) - time(57)) / frameTicks);
  }
  return frames;
}

// Presentation times of the pictures, in frames from the start.
std::vector<std::int64_t> PictureFrames(const MuxRun& run, std::int64_t frameTicks) {
  std::vector<std::int64_t> frames;
  for (const ReadPack& pack : run.PacksOf(VideoPack)) {
    if (pack.Pts) {
      EXPECT_EQ(*pack.Dts, *pack.Pts - frameTicks);
      EXPECT_LT(pack.Scr / 300, *pack.Dts);
      EXPECT_EQ((*pack.Pts - 25257) % frameTicks, 0);
      frames.push_back((*pack.Pts - 25257) / frameTicks);
    }
  }
  return frames;
}

void ExpectClockRuns(const MuxRun& run) {
  std::int64_t last = -1000000;
  for (const ReadPack& pack : run.Packs()) {
    EXPECT_GE(pack.Scr - last, 2048 * 300 / 14) << "packs may not share a clock";
    last = pack.Scr;
  }
}

TEST_F(Slides, LastAsToldAndStepByTheRules) {
  struct Case {
    bool Ntsc;
    Rules Rule;
    std::vector<std::int64_t> Slides, Vobus;
  };
  const Case cases[] = {
      {false, Rules::Players, {45, 10, 0}, {12, 11, 11, 11, 10, 12}},
      {false, Rules::Players, {31, 30}, {12, 19, 12, 18}},
      {false, Rules::Classic, {31, 30}, {12, 11, 8, 12, 18}},
      {false, Rules::Classic, {18, 24}, {18, 24}},
      {true, Rules::Players, {40, 30}, {15, 25, 30}},
      {true, Rules::Classic, {40, 0, 31}, {15, 14, 11, 15, 15, 16}},
  };
  for (const Case& each : cases) {
    const std::int64_t frameTicks = each.Ntsc ? 3003 : 3600;
    MuxRun run(each.Rule);
    ASSERT_EQ(run.Mux(Track(each.Slides, each.Ntsc, each.Ntsc)), MuxOutcome::Done);
    EXPECT_THAT(run.Ui.Messages, IsEmpty());
    EXPECT_EQ(VobuFrames(run, frameTicks), each.Vobus);
    std::vector<std::int64_t> starts;
    std::int64_t start = 0;
    for (const std::int64_t frames : each.Slides) {
      starts.push_back(start);
      start += frames != 0 ? frames : each.Ntsc ? 15 : 12;
    }
    EXPECT_EQ(PictureFrames(run, frameTicks), starts);
    ExpectClockRuns(run);
    EXPECT_THAT(run.Complaints(), IsEmpty());
  }
}

TEST_F(Slides, StandAloneWithCellsAtTheirMarks) {
  MuxInput input = Track({36, 50});
  input.Video.push_back({.Path = SampleVideo({.Frames = 1}), .HoldFlag = true, .HoldFrames = 14});
  input.Marks = MarksAt({36, 60, 86});
  MuxRun run;
  ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
  ASSERT_EQ(run.Ui.Messages.size(), 1U) << "the mark within the second slide";
  EXPECT_THAT(run.Ui.Messages[0].Text, HasSubstr("\"Scene3\""));
  std::vector<std::int64_t> cells;
  for (const CellRecord& cell : run.Records.Vobs.at(0).Cells) {
    cells.push_back((cell.StartPts - 25257) / 3600);
  }
  EXPECT_THAT(cells, ElementsAre(0, 36, 70, 86));
  const Bytes video = run.Stream(VideoPack);
  const std::array<std::uint8_t, 4> endCode{0, 0, 1, 0xB7};
  Bytes stills;
  BmpLoader loader;
  for (std::size_t i = 0; i < 2; ++i) {
    const Bytes still = EncodeBitmap(loader.Load(input.Video[i].Path), {}, Rules::Players);
    stills.insert(stills.end(), still.begin(), still.end());
    stills.insert(stills.end(), endCode.begin(), endCode.end());
  }
  ASSERT_GT(video.size(), stills.size());
  EXPECT_TRUE(std::equal(stills.begin(), stills.end(), video.begin())) << "as coded, each with its end code";
  EXPECT_TRUE(std::equal(endCode.rbegin(), endCode.rend(), video.rbegin()));
  const Bytes sectors = run.Sectors();
  for (const std::uint32_t nav : run.Records.VobuAddressList) {
    const std::uint64_t start = GetBytes(sectors, nav * SectorBytes + 57, 4);
    const bool picture = sectors[(nav + 1) * SectorBytes + 17] == 0xE0;
    EXPECT_EQ(GetBytes(sectors, nav * SectorBytes + 65, 4), picture ? start + 3600 : 0);
  }
}

TEST_F(Slides, SoundRunsThroughAndTheLastSlideWaitsForIt) {
  for (const bool extends : {false, true}) {
    MuxInput input = Track({30, 30, 30});
    input.ExtendSlideForAudio = extends;
    input.Audio = {Ac3Stream(SampleAc3({.Seconds = 6})), PcmStream(SampleWav({.Seconds = 5}), 16, 2, 48, 1)};
    MuxRun run;
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    if (!extends) {  // ffmpeg looks for a picture in the last 500 KB, which are sound otherwise
      EXPECT_THAT(run.Complaints(), IsEmpty());
    }
    ExpectClockRuns(run);
    EXPECT_THAT(PictureFrames(run, 3600), ElementsAre(0, 30, 60));
    const std::vector<std::int64_t> vobus = VobuFrames(run, 3600);
    // 6 s are 188 frames of AC3, which end within frame 151.
    EXPECT_EQ(std::accumulate(vobus.begin(), vobus.end(), std::int64_t{0}), extends ? 151 : 90);
    std::int64_t frames = 0;
    for (const ReadPack& pack : run.PacksOf(0x80)) {
      EXPECT_GE(pack.Pts.value_or(1LL << 40), pack.Scr / 300 + 146);
      frames += pack.Frames;
    }
    EXPECT_EQ(frames, extends ? 188 : 113) << "up to the end of the last slide";
  }
}

TEST_F(Slides, AStillThatWaitsForEver) {
  MuxInput input = Track({0});
  input.Kind = TrackKind::Still;
  input.Infinite = true;
  MuxRun silent;
  ASSERT_EQ(silent.Mux(input), MuxOutcome::Done);
  EXPECT_THAT(VobuFrames(silent, 3600), ElementsAre(12));
  input.Audio = {Ac3Stream(SampleAc3({.Seconds = 3}))};
  MuxRun sounding;
  ASSERT_EQ(sounding.Mux(input), MuxOutcome::Done);
  std::int64_t frames = 0;
  for (const ReadPack& pack : sounding.PacksOf(0x80)) {
    frames += pack.Frames;
  }
  EXPECT_EQ(frames, 94) << "all of its sound";
  const std::vector<std::int64_t> vobus = VobuFrames(sounding, 3600);
  const std::int64_t shown = std::accumulate(vobus.begin(), vobus.end(), std::int64_t{0});
  EXPECT_GE(shown, 76);
  EXPECT_LE(shown, 76 + 22);
  EXPECT_THAT(sounding.Complaints(), IsEmpty());
}

TEST_F(Slides, ALoneNavigationPackAtACellsEndIsPaddedForPlayers) {
  MuxInput input = Track({40, 30});
  input.Marks = MarksAt({40});
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    MuxRun run(rules);
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    const CellRecord& cell = run.Records.Vobs.at(0).Cells.at(0);
    EXPECT_EQ(cell.EndSector - cell.LastVobuStartSector, rules.PadLoneNavPack ? 1U : 0U);
    EXPECT_EQ(run.Packs().back().StreamId, rules.PadLoneNavPack ? 0xBE : 0xBB);
    ExpectClockRuns(run);
  }
}

TEST_F(Slides, WhatCannotBeASlideIsToldByName) {
  const auto complaint = [](const MuxInput& input) {
    MuxRun run;
    EXPECT_EQ(run.Mux(input), MuxOutcome::Failed);
    return run.Ui.Messages.empty() ? Message() : run.Ui.Messages[0];
  };
  MuxInput input = Track({30, 30});
  input.Ntsc = true;
  EXPECT_EQ(complaint(input).Title, "Image size error");
  input = Track({30, 30});
  Folder.Write("slide1.BMP", "BM");
  EXPECT_EQ(complaint(input).Place, input.Video[1].Path);
  input.Video[1] = {.Path = SampleVideo({.Frames = 2})};
  EXPECT_THAT(complaint(input).Text, HasSubstr("more than one picture"));
}

}  // namespace
}  // namespace quorvelant
