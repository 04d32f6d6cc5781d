#include "mux/mux_track.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Without the vbv_delay that is changed on the way.
Bytes WithoutDelays(Bytes stream) {
  for (std::size_t i = 0; i + 7 < stream.size(); ++i) {
    if (stream[i] == 0 && stream[i + 1] == 0 && stream[i + 2] == 1 && stream[i + 3] == 0) {
      stream[i + 5] |= 0x07;
      stream[i + 6] = 0xFF;
      stream[i + 7] |= 0xF8;
    }
  }
  return stream;
}

TEST(MuxTrack, EveryByteArrivesAndDecodesWithoutComplaint) {
  struct Case {
    const char* Name;
    VideoSample Video;
    int AudioStreams;
    double Seconds;
  };
  const Case cases[] = {
      {"PAL, open groups", {.Frames = 100}, 1, 4.5},
      {"PAL, closed, interlaced",
       {.Aspect = "16:9", .Frames = 100, .Closed = true, .Interlaced = true},
       2,
       4.5},
      {"PAL, I pictures alone", {.Frames = 60, .GopLength = 1}, 0, 3},
      {"NTSC, groups of 18", {.Standard = "NTSC", .Frames = 100, .GopLength = 18}, 2, 4},
      {"NTSC, pulldown", {.Standard = "NTSC", .Frames = 96, .Pulldown = true}, 1, 4.5},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    const std::string video = SampleVideo(c.Video);
    MuxInput input = MotionTrack({video}, c.Video.Standard == "NTSC");
    // Half a second longer: the rest is left out.
    const std::string ac3 = SampleAc3({.Seconds = c.Seconds});
    for (int i = 0; i < c.AudioStreams; ++i) {
      input.Audio.push_back(Ac3Stream(ac3, i));
    }
    MuxRun run;
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    EXPECT_EQ(run.Build.UnderflowCount, 0);
    EXPECT_THAT(run.Ui.Messages, IsEmpty());
    EXPECT_EQ(WithoutDelays(run.Stream(VideoPack)), WithoutDelays(FileBytes(video)));
    EXPECT_THAT(run.Complaints(), IsEmpty());
    const Bytes sound = FileBytes(ac3);
    for (int i = 0; i < c.AudioStreams; ++i) {
      const Bytes sent = run.Stream(0x80 + i);
      EXPECT_EQ(sent.size() % 768, 0U) << "whole frames";
      EXPECT_TRUE(std::equal(sent.begin(), sent.end(), sound.begin()));
    }
  }
}

TEST(MuxTrack, FlashAndBeepStayTogether) {
  for (const char* standard : {"PAL", "NTSC"}) {
    const FlashAndBeep clip = SampleFlashAndBeep(standard, 4);
    const bool ntsc = std::string_view(standard) == "NTSC";
    const double frame = ntsc ? 1001.0 / 30000 : 0.04;
    MuxInput input = MotionTrack({clip.Video}, ntsc);
    input.Audio = {Ac3Stream(clip.Ac3)};
    MuxRun run;
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    // One grey byte a picture, and samples of one channel; both start at the same presentation time.
    const Bytes pictures = run.Decoded("v:0", "rawvideo -vf scale=1:1 -pix_fmt gray");
    const Bytes sound = run.Decoded("a:0", "s16le -ac 1");
    std::size_t flashes = 0;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
      if (pictures[i] < 128 || (i > 0 && pictures[i - 1] >= 128)) {
        continue;
      }
      ++flashes;
      auto onset = static_cast<std::size_t>(std::max(0.0, (static_cast<double>(i) - 1) * frame * 48000));
      while (std::abs(static_cast<std::int16_t>(sound.at(2 * onset) | sound.at(2 * onset + 1) << 8)) < 2000) {
        ++onset;
      }
      EXPECT_NEAR(static_cast<double>(onset) / 48000, static_cast<double>(i) * frame, frame) << standard;
    }
    EXPECT_EQ(flashes, 4U);
  }
}

TEST(MuxTrack, MarksOpenCellsAtSequenceHeaders) {
  struct Case {
    std::vector<std::int64_t> Marks;
    std::vector<int> Frames, Scenes;
    std::size_t Warnings;
  };
  const TempFolder folder;
  const std::string video = Saved(folder, BuildStream({.Gops = 10}));  // 120 frames, a header every 12
  const Case cases[] = {
      {{}, {120}, {0}, 0},
      {{24, 60}, {24, 36, 60}, {0, 1, 2}, 0},
      {{25, 59}, {36, 24, 60}, {0, 1, 2}, 0},  // at the next header
      {{12, 24}, {12, 12, 96}, {0, 1, 2}, 0},
      {{25, 30, 60}, {36, 24, 60}, {0, 1, 3}, 1},  // a second mark within one VOBU
      {{60, 109, 115}, {60, 60}, {0, 1}, 2},       // behind the last header
      {{0, 36}, {36, 84}, {0, 2}, 1},
      {{108}, {108, 12}, {0, 1}, 0},  // at the last header
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    MuxInput input = MotionTrack({video});
    input.Marks = MarksAt(c.Marks);
    MuxRun run;
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    std::vector<int> frames;
    std::vector<int> scenes;
    std::uint32_t next = 0;
    for (const CellRecord& cell : run.Records.Vobs.at(0).Cells) {
      frames.push_back(cell.Frames);
      scenes.push_back(cell.Scene);
      EXPECT_EQ(cell.StartSector, next) << "cells follow each other";
      next = cell.EndSector + 1;
    }
    EXPECT_EQ(next, run.Records.TotalSectors);
    EXPECT_EQ(frames, c.Frames);
    EXPECT_EQ(scenes, c.Scenes);
    EXPECT_EQ(run.Ui.Messages.size(), c.Warnings);
    for (const Message& message : run.Ui.Messages) {
      EXPECT_EQ(message.Level, Severity::Warning);
      EXPECT_THAT(message.Text, testing::ContainsRegex("Scene \"Scene[1-9]\" of track \"Film\""));
    }
  }
}

// A rest below the least VOBU joins the one before it; a mark that is near is waited for, by players within
// 30 frames.
TEST(MuxTrack, VobusLookAheadToTheEndAndToTheNextMark) {
  struct Case {
    std::vector<GopPlan> Parts;
    std::vector<std::int64_t> Marks, Players, Classic;  // frames of each VOBU
  };
  const Case cases[] = {
      {{{.Gops = 3}, {.Gops = 1, .GopLength = 9}}, {}, {12, 12, 21}, {12, 12, 21}},
      {{{.Gops = 3}, {.Gops = 1, .GopLength = 10}}, {}, {12, 12, 12, 10}, {12, 12, 12, 10}},
      {{{.Gops = 3}, {.Gops = 2, .GopLength = 5}}, {}, {12, 12, 12, 10}, {12, 12, 12, 10}},
      {{{.Gops = 3}, {.Gops = 1, .GopLength = 9, .FieldPictures = true}}, {}, {12, 12, 21}, {12, 12, 21}},
      {{{.Gops = 2}, {.Gops = 1, .GopLength = 10, .FieldPictures = true}}, {}, {12, 12, 10}, {12, 12, 10}},
      {{{.Gops = 4, .GopLength = 15}}, {16}, {30, 15, 15}, {30, 15, 15}},
      {{{.Gops = 1, .GopLength = 15}, {.Gops = 3, .GopLength = 16}}, {16}, {15, 16, 16, 16}, {31, 16, 16}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    StreamBuilder stream;
    for (GopPlan part : c.Parts) {
      part.EndCode = false;
      stream.Raw(BuildStream(part));
    }
    for (const Rules& rules : {Rules::Players, Rules::Classic}) {
      MuxRun run(rules);
      MuxInput input = MotionTrack({Saved(run.Folder, stream.Data())});
      input.Marks = MarksAt(c.Marks);
      ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
      std::vector<std::int64_t> frames;
      for (const TimeMapRecord& vobu : run.Records.Vobs.at(0).TimeMap) {
        frames.push_back(vobu.LengthTicks / 3600);
      }
      EXPECT_EQ(frames, rules.LimitVobuLength ? c.Players : c.Classic);
    }
  }
}

TEST(MuxTrack, EndCodesStayBehindTheLastPictureAlone) {
  const TempFolder folder;
  const Bytes one = BuildStream({.Gops = 2});
  const std::string video = Saved(folder, one);
  MuxRun removed;
  ASSERT_EQ(removed.Mux(MotionTrack({video, video})), MuxOutcome::Done);
  Bytes expected = one;
  std::fill(expected.end() - 2, expected.end(), std::uint8_t{0});
  expected.insert(expected.end(), one.begin(), one.end());
  EXPECT_EQ(WithoutDelays(removed.Stream(VideoPack)), WithoutDelays(expected));
  MuxRun kept;
  kept.Build.RemoveSeqEnd = false;
  ASSERT_EQ(kept.Mux(MotionTrack({video, video})), MuxOutcome::Done);
  std::copy_n(one.begin(), one.size(), expected.begin());
  EXPECT_EQ(WithoutDelays(kept.Stream(VideoPack)), WithoutDelays(expected));
}

TEST(MuxTrack, SplitFilesHoldTheSameSectors) {
  const TempFolder folder;
  const Bytes stream = BuildStream({.Gops = 4});
  MuxInput input = MotionTrack({Saved(folder, stream)});
  input.Audio = {Ac3Stream(SampleAc3({.Seconds = 2.5}))};
  MuxRun whole;
  ASSERT_EQ(whole.Mux({input, input}), MuxOutcome::Done);
  const Bytes sectors = whole.Sectors();
  for (const std::uint32_t split : {whole.Records.TotalSectors / 4, whole.Records.TotalSectors / 2}) {
    MuxRun run;
    run.Split = split;
    ASSERT_EQ(run.Mux({input, input}), MuxOutcome::Done);
    EXPECT_EQ(TempFolder::Read(run.Base() + "_1.VOB").size(), split * SectorBytes);
    EXPECT_EQ(run.Sectors(), sectors);
  }
  MuxRun many;
  many.Split = whole.Records.TotalSectors / 10;
  EXPECT_EQ(many.Mux({input, input}), MuxOutcome::Failed);
  EXPECT_THAT(many.Ui.Messages.at(0).Text, testing::HasSubstr("The title set fills 9 VOB files"));

  MuxRun dry;
  dry.Build.DryRun = true;
  ASSERT_EQ(dry.Mux({input, input}), MuxOutcome::Done);
  EXPECT_THAT(dry.Sectors(), IsEmpty());
  EXPECT_EQ(dry.Records.VobuAddressList, whole.Records.VobuAddressList);
  EXPECT_EQ(dry.Build.SourceBytesDone, 2 * stream.size());

  // Traditional rules round the clocks of sound and navigation; everything else is the same.
  MuxRun classic(Rules::Classic);
  ASSERT_EQ(classic.Mux({input, input}), MuxOutcome::Done);
  const Bytes other = classic.Sectors();
  ASSERT_EQ(other.size(), sectors.size());
  for (std::size_t i = 0; i < sectors.size(); ++i) {
    const std::size_t at = i % SectorBytes;
    ASSERT_TRUE(sectors[i] == other[i] || at == 8 || at == 9) << "byte " << at << " of a sector";
  }
}

TEST(MuxTrack, FieldPicturesAreTimedAndCountedAsFrames) {
  const TempFolder folder;
  MuxRun run;
  ASSERT_EQ(run.Mux(MotionTrack({Saved(folder, BuildStream({.Gops = 3, .FieldPictures = true}))})),
            MuxOutcome::Done);
  EXPECT_EQ(run.Records.Vobs[0].Cells[0].Frames, 36);
  std::vector<std::int64_t> stamps;
  for (const ReadPack& pack : run.PacksOf(VideoPack)) {
    if (pack.Dts) {
      stamps.insert(stamps.end(), {*pack.Pts, *pack.Dts});
    }
  }
  EXPECT_THAT(stamps, ElementsAre(25257, 21657, 25257 + 43200, 25257 + 39600, 25257 + 86400, 25257 + 82800));
}

}  // namespace
}  // namespace quorvelant
