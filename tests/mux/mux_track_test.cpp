#include "mux/mux_track.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "mux/messages.h"
#include "mux/vobu_decision.h"
#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

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
  };
  const Case cases[] = {
      {"PAL, open groups", {.Frames = 100}, 1},
      {"PAL, closed", {.Aspect = "16:9", .Frames = 100, .Closed = true, .Interlaced = true}, 2},
      {"PAL, I pictures alone", {.Frames = 60, .GopLength = 1}, 0},
      {"NTSC, groups of 18", {.Standard = "NTSC", .Frames = 120, .GopLength = 18}, 2},
      {"NTSC, pulldown", {.Standard = "NTSC", .Frames = 96, .Pulldown = true}, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    const std::string video = SampleVideo(c.Video);
    MuxInput input = MotionTrack({video}, c.Video.Standard == "NTSC");
    const std::string ac3 = SampleAc3({.Seconds = 4.5});  // the rest is left out
    for (int i = 0; i < c.AudioStreams; ++i) {
      input.Audio.push_back(Ac3Stream(ac3, i));
    }
    MuxRun run;
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    EXPECT_EQ(run.Build.UnderflowCount, 0);
    EXPECT_THAT(run.Ui.Messages, IsEmpty());
    EXPECT_EQ(WithoutDelays(run.Stream(VideoPack)), WithoutDelays(FileBytes(video)));
    EXPECT_THAT(run.Complaints(), IsEmpty());
    for (int i = 0; i < c.AudioStreams; ++i) {
      const Bytes sent = run.Stream(0x80 + i);
      EXPECT_EQ(sent.size() % 768, 0U) << "whole frames";
      EXPECT_TRUE(std::ranges::equal(sent, ByteView(FileBytes(ac3)).first(sent.size())));
      std::int64_t frames = 0;
      for (const ReadPack& pack : run.PacksOf(0x80 + i)) {
        EXPECT_TRUE(pack.Frames == 0 || pack.Pts == 25257 + 2880 * frames) << frames;
        frames += pack.Frames;
      }
      EXPECT_EQ(frames * 768, std::ssize(sent));
    }
  }
}

// "0: 12 12 | 2: 24": the scene of each cell and the frames of its VOBUs.
std::string CellsOf(const VobSetRecords& records, std::int64_t frameTicks) {
  std::string text;
  std::uint32_t next = 0;
  const VobRecord& vob = records.Vobs.at(0);
  for (const CellRecord& cell : vob.Cells) {
    EXPECT_EQ(cell.StartSector, next) << "cells follow each other";
    next = cell.EndSector + 1;
    text += fmt::format("{}{}:", text.empty() ? "" : " | ", cell.Scene);
    std::int64_t frames = 0;
    for (const TimeMapRecord& vobu : vob.TimeMap) {
      if (vobu.CellId == cell.CellId) {
        frames += vobu.LengthTicks / frameTicks;
        text += fmt::format(" {}", vobu.LengthTicks / frameTicks);
      }
    }
    EXPECT_EQ(cell.Frames, frames);
  }
  EXPECT_EQ(next, records.TotalSectors);
  return text;
}

// Marks open cells at the next sequence header; a second one within a VOBU opens none. A VOBU has at least 10
// frames, in NTSC 12, but at marks; a rest below that joins the one before it, and a mark that is near is
// waited for, by players within 30 frames.
TEST(MuxTrack, VobusLookAheadToTheEndAndToTheNextMark) {
  struct Case {
    std::vector<GopPlan> Parts;  // groups, pictures of each
    std::vector<std::int64_t> Marks;
    const char* Players;
    const char* Classic = nullptr;  // where it is another
    bool EndCodes = false;
  };
  const SequenceFields pal;
  const SequenceFields ntsc{.Height = 480, .FrameRateCode = 4};
  const Case cases[] = {
      {{{pal, 1, 9}, {pal, 2, 10}}, {}, "0: 19 10"},
      {{{ntsc, 1, 11}, {ntsc, 2, 12}}, {}, "0: 23 12"},
      {{{pal, 3}, {pal, 1, 9}}, {}, "0: 12 12 21"},
      {{{pal, 3}, {pal, 1, 10}}, {}, "0: 12 12 12 10"},
      {{{pal, 3}, {pal, 2, 5}}, {}, "0: 12 12 12 10"},
      {{{pal, 1}, {pal, 1, 1}}, {}, "0: 12 1", nullptr, true},
      {{{pal, 3}, {.Gops = 1, .GopLength = 9, .FieldPictures = true}}, {}, "0: 12 12 21"},
      {{{pal, 2}, {.Gops = 1, .GopLength = 10, .FieldPictures = true}}, {}, "0: 12 12 10"},
      {{{pal, 1, 9}, {pal, 1, 12}, {pal, 1, 9}}, {}, "0: 30"},
      {{{pal, 1, 9}, {pal, 1, 13}, {pal, 1, 9}}, {}, "0: 22 9", "0: 31"},
      {{{pal, 2, 9}, {pal, 2}}, {28}, "0: 30 | 1: 12"},
      {{{pal, 1, 9}, {pal, 1, 10}, {pal, 2}}, {29}, "0: 19 12 | 1: 12", "0: 31 | 1: 12"},
      {{{pal, 4, 15}}, {16}, "0: 30 | 1: 15 15"},
      {{{pal, 3}}, {22}, "0: 24 | 1: 12"},
      {{{pal, 3}}, {23}, "0: 12 12 | 1: 12"},
      {{{pal, 1, 3}, {pal, 1}}, {3}, "0: 3 | 1: 12"},
      {{{pal, 5}}, {12, 36}, "0: 12 | 1: 12 12 | 2: 12 12"},
      {{{pal, 5}}, {13, 35}, "0: 24 | 1: 12 | 2: 12 12"},
      {{{pal, 5}}, {24, 49, 55}, "0: 12 12 | 1: 12 24"},
      {{{pal, 5}}, {0, 36}, "0: 12 12 12 | 2: 12 12"},
      {{{pal, 5}}, {48}, "0: 12 12 12 12 | 1: 12"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Players);
    const bool isNtsc = c.Parts[0].Sequence.Height == 480;
    StreamBuilder stream;
    for (GopPlan part : c.Parts) {
      part.EndCode = c.EndCodes;
      stream.Raw(BuildStream(part));
    }
    for (const Rules& rules : {Rules::Players, Rules::Classic}) {
      MuxRun run(rules);
      MuxInput input = MotionTrack({Saved(run.Folder, stream.Data())}, isNtsc);
      input.Marks = MarksAt(c.Marks);
      for (MuxMark& mark : input.Marks) {
        mark.Plays = false;
      }
      ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
      EXPECT_EQ(CellsOf(run.Records, isNtsc ? 3003 : 3600),
                rules.LimitVobuLength || c.Classic == nullptr ? c.Players : c.Classic);
      EXPECT_EQ(run.Ui.Messages.size(), input.Marks.size() - run.Records.Vobs[0].Cells.size());
      for (const Message& message : run.Ui.Messages) {
        EXPECT_TRUE(message.Is(message::MarkOpensNoCell)) << message.Text;
        EXPECT_THAT(message.Text, testing::ContainsRegex("Scene \"Scene[1-9]\" of track \"Film\""));
      }
    }
  }
}

TEST(MuxTrack, AStillStartsAVobuAtEachSequenceHeader) {
  const VobuQuestion question{.InVobu = 2, .NextMark = {}, .Ahead = 2, .Still = true};
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    EXPECT_TRUE(DecideVobu(question, PalTiming, rules).Starts);
  }
}

TEST(MuxTrack, EndCodesStayAfterTheLastPictureAlone) {
  const TempFolder folder;
  const Bytes one = BuildStream({.Gops = 2});
  const std::string video = Saved(folder, one);
  Bytes without = one;
  std::fill(without.end() - 2, without.end(), std::uint8_t{0});
  for (const bool removed : {true, false}) {
    MuxRun run;
    run.Build.RemoveSeqEnd = removed;
    ASSERT_EQ(run.Mux(MotionTrack({video, video})), MuxOutcome::Done);
    EXPECT_EQ(WithoutDelays(run.Stream(VideoPack)),
              WithoutDelays(StreamBuilder().Raw(removed ? without : one).Raw(one).Data()));
  }
}

TEST(MuxTrack, SplitFilesHoldTheSameSectors) {
  const TempFolder folder;
  MuxInput input = MotionTrack({Saved(folder, BuildStream({.Gops = 4}))});
  input.Audio = {Ac3Stream(SampleAc3({.Seconds = 2.5}))};
  MuxRun whole;
  ASSERT_EQ(whole.Mux({input, input}), MuxOutcome::Done);
  for (const std::uint32_t split : {whole.Records.TotalSectors / 4, whole.Records.TotalSectors / 2}) {
    MuxRun run;
    run.Split = split;
    ASSERT_EQ(run.Mux({input, input}), MuxOutcome::Done);
    EXPECT_EQ(TempFolder::Read(run.Base() + "_1.VOB").size(), split * SectorBytes);
    EXPECT_EQ(run.Sectors(), whole.Sectors());
  }
  MuxRun many;
  many.Split = whole.Records.TotalSectors / 10;
  EXPECT_EQ(many.Mux({input, input}), MuxOutcome::Failed);
  EXPECT_TRUE(many.Ui.Messages.at(0).Is(message::TitleSetFull));
}

TEST(MuxTrack, AMenuIsOneFileAndNothingIsMadeBeforeItsTime) {
  MuxRun run;
  const std::string name = run.Folder / "VIDEO_TS.VOB";
  VobOutput(run.Files, {name, true}).Finish();
  EXPECT_FALSE(std::filesystem::exists(name));
  run.Folder.Write("VIDEO_TS.VOB", std::string(5 << 20, 'o'));  // an old file, longer than what comes
  VobOutput output(run.Files, {name, true}, false, 2);
  output.NextSector();
  output.NextSector();
  EXPECT_ANY_THROW(output.NextSector()) << "a menu has one file";
  output.Finish();
  EXPECT_EQ(std::filesystem::file_size(name), 2 * SectorBytes);
}

}  // namespace
}  // namespace quorvelant
