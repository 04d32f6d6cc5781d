// Stills and slides in finished sectors: when pictures show, how long, and what holds them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <tuple>

#include "codec/still_encoder.h"
#include "mux/messages.h"
#include "mux_run.h"
#include "picture/bmp.h"
#include "support/media.h"
#include "support/stream_builder.h"

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
  std::vector<std::int64_t> frames;
  for (const WalkedVobu& vobu : WalkVobs(run.VobFiles())) {
    frames.push_back(static_cast<std::int64_t>(vobu.Field(61, 4) - vobu.Field(57, 4)) / frameTicks);
  }
  return frames;
}

// Presentation times of the pictures, in frames from the start; no two packs share a clock.
std::vector<std::int64_t> PictureFrames(const MuxRun& run, std::int64_t frameTicks) {
  std::vector<std::int64_t> frames;
  std::int64_t last = -1000000;
  for (const ReadPack& pack : run.Packs()) {
    EXPECT_GE(pack.Scr - last, 2048 * 300 / 14);
    last = pack.Scr;
    if (pack.StreamId == VideoPack && pack.Pts) {
      EXPECT_EQ(*pack.Dts, *pack.Pts - frameTicks);
      EXPECT_LT(pack.Scr / 300, *pack.Dts);
      EXPECT_EQ((*pack.Pts - 25257) % frameTicks, 0);
      frames.push_back((*pack.Pts - 25257) / frameTicks);
    }
  }
  return frames;
}

// Frames of sound in AC3 stream 0, each there in time.
int SoundFrames(const MuxRun& run) {
  int frames = 0;
  for (const ReadPack& pack : run.PacksOf(0x80)) {
    EXPECT_GE(pack.Pts.value_or(1LL << 40), pack.Scr / 300 + 146);
    frames += pack.Frames;
  }
  return frames;
}

TEST_F(Slides, LastAsToldAndStepByTheRules) {
  struct Case {
    bool Ntsc;
    Rules Rule;
    std::vector<std::int64_t> Slides, Starts, Vobus;
  };
  const Case cases[] = {
      {false, Rules::Players, {45, 10, 0}, {0, 45, 55}, {12, 11, 11, 11, 10, 12}},
      {false, Rules::Players, {31, 30}, {0, 31}, {12, 19, 12, 18}},
      {false, Rules::Classic, {31, 30}, {0, 31}, {12, 11, 8, 12, 18}},
      {false, Rules::Classic, {18, 24}, {0, 18}, {18, 24}},
      {false, Rules::Players, {1, 30, 1}, {0, 1, 31}, {1, 12, 18, 1}},
      {false, Rules::Classic, {1, 30}, {0, 1}, {13, 18}},
      {true, Rules::Players, {40, 30}, {0, 40}, {15, 25, 30}},
      {true, Rules::Classic, {40, 0, 31}, {0, 40, 55}, {15, 14, 11, 15, 15, 16}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.Vobus));
    const std::int64_t frameTicks = c.Ntsc ? 3003 : 3600;
    MuxRun run(c.Rule);
    ASSERT_EQ(run.Mux(Track(c.Slides, c.Ntsc, c.Ntsc)), MuxOutcome::Done);
    EXPECT_THAT(run.Ui.Messages, IsEmpty());
    EXPECT_EQ(VobuFrames(run, frameTicks), c.Vobus);
    EXPECT_EQ(PictureFrames(run, frameTicks), c.Starts);
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
  StreamBuilder stills;
  BmpLoader loader;
  for (std::size_t i = 0; i < 2; ++i) {
    stills.Raw(EncodeBitmap(loader.Load(input.Video[i].Path), {}, Rules::Players)).SequenceEnd();
  }
  ASSERT_GT(video.size(), stills.Size());
  EXPECT_TRUE(std::ranges::equal(stills.Data(), ByteView(video).first(stills.Size()))) << "as coded";
  EXPECT_TRUE(std::ranges::equal(StreamBuilder().SequenceEnd().Data(), ByteView(video).last(4)));
  for (const WalkedVobu& vobu : WalkVobs(run.VobFiles())) {
    EXPECT_EQ(vobu.Field(65, 4), vobu.HasVideo ? vobu.Field(57, 4) + 3600 : 0) << "VOBU_SE_E_PTM";
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
    EXPECT_THAT(PictureFrames(run, 3600), ElementsAre(0, 30, 60));
    const std::vector<std::int64_t> vobus = VobuFrames(run, 3600);
    // 6 s are 188 frames of AC3, which end within frame 151.
    EXPECT_EQ(std::accumulate(vobus.begin(), vobus.end(), std::int64_t{0}), extends ? 151 : 90);
    EXPECT_EQ(SoundFrames(run), extends ? 188 : 113) << "up to the end of the last slide";
  }
}

TEST_F(Slides, AStillThatWaitsForEverPlaysAllOfItsSound) {
  MuxInput input = Track({0});
  input.Kind = TrackKind::Still;
  input.Infinite = true;
  MuxRun silent;
  ASSERT_EQ(silent.Mux(input), MuxOutcome::Done);
  EXPECT_THAT(VobuFrames(silent, 3600), ElementsAre(12));
  input.Audio = {Ac3Stream(SampleAc3({.Seconds = 3}))};
  MuxRun sounding;
  ASSERT_EQ(sounding.Mux(input), MuxOutcome::Done);
  EXPECT_EQ(SoundFrames(sounding), 94);
  const std::vector<std::int64_t> vobus = VobuFrames(sounding, 3600);
  EXPECT_NEAR(std::accumulate(vobus.begin(), vobus.end(), 0.0), 76 + 11, 11);
  EXPECT_THAT(sounding.Complaints(), IsEmpty());
}

TEST_F(Slides, WhatCannotBeASlideIsToldByName) {
  MuxInput otherStandard = Track({30});
  otherStandard.Ntsc = true;
  MuxInput torn = Track({30, 30});
  torn.Video[1].Path = Folder.Write("torn.BMP", "BM");
  MuxInput film = Track({30, 30});
  film.Video[1] = {.Path = SampleVideo({.Frames = 2})};
  MuxInput fields = film;
  fields.Video[1].Path = Saved(Folder, BuildStream({.Gops = 1, .GopLength = 2, .FieldPictures = true}));
  const std::tuple<MuxInput, MessageKind, std::size_t> faults[] = {
      {otherStandard, message::StillSizeUnfit, 0},
      {torn, message::StillUnreadable, 1},
      {film, message::SlideOfSeveralPictures, 1},
      {fields, message::SlideOfSeveralPictures, 1},
  };
  for (const auto& [input, kind, file] : faults) {
    MuxRun run;
    EXPECT_EQ(run.Mux(input), MuxOutcome::Failed);
    const Message told = run.Ui.Messages.at(0);
    EXPECT_EQ(told.Code, kind.Code);
    EXPECT_THAT(told.Place + told.Text, HasSubstr(input.Video[file].Path));
  }
}

}  // namespace
}  // namespace quorvelant
