// Subtitles in finished sectors: what ffmpeg shows of them and when, and where they stand.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "mux/arrivals.h"
#include "mux/messages.h"
#include "subpicture/coded_bitmaps.h"
#include "subpicture/spu_timing.h"
#include "subtitled_track.h"
#include "support/media.h"
#include "support/nav_figures.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

constexpr Color Base = 0x563412;

// A film of the disc and what it shows.
struct Screen {
  const MuxRun& Run;
  bool Ntsc = false;
  bool ForcedOnly = false;
};

// Pixels of a rendered frame that are not what the subtitle, or nothing, should show.
int WrongPixels(const std::string& frame, bool ntsc, const TestSubtitle* subtitle) {
  const Picture bitmap = subtitle != nullptr ? PaintStripes(*subtitle) : Picture();
  int wrong = 0;
  for (std::size_t at = 0; at + 2 < frame.size(); at += 3) {
    const auto byte = [&](std::size_t i) { return Color{static_cast<std::uint8_t>(frame[at + i])}; };
    const int x = static_cast<int>(at / 3 % 720);
    const int y = static_cast<int>(at / 3 / 720);
    const Color want = subtitle != nullptr ? ShownAt(*subtitle, bitmap, x, y, ntsc, Base) : Base;
    wrong += (byte(0) | byte(1) << 8 | byte(2) << 16) == want ? 0 : 1;
  }
  return wrong;
}

// The middle of each subtitle and the frames about its ends, as ffmpeg shows stream `index` on a plain
// ground.
void ExpectShown(const Screen& screen, std::size_t index, const std::vector<TestSubtitle>& subtitles) {
  std::set<int> frames;
  for (const TestSubtitle& each : subtitles) {
    frames.insert((each.Start + each.End) / 2);
    if (&each != subtitles.data()) {  // this decoder shows a stream's first unit as soon as it has it
      frames.insert({each.Start - 1, each.Start, each.End - 1, each.End});
    }
  }
  std::string palette = "0,0,0,0";
  for (const Color color : ShownColors) {
    palette += fmt::format(",{:02x}{:02x}{:02x}", color & 255, color >> 8 & 255, color >> 16 & 255);
  }
  std::string select = "0";
  for (const int frame : frames) {
    select += fmt::format("+eq(n\\,{})", frame);
  }
  const int height = screen.Ntsc ? 480 : 576;
  const std::string out = screen.Run.Folder / "frames.rgb";
  const std::string command = fmt::format(
      "ffmpeg -v error -nostdin -canvas_size 720x{0} -palette {1},0,0,0,0,0,0,0,0 -forced_subs_only {7} "
      "-i {2}_1.VOB -f lavfi -i color=c=0x123456:s=720x{0}:r={3}:d=5,format=gbrp -filter_complex "
      "'[1:v][0:s:{4}]overlay=format=gbrp,select={5}' -fps_mode passthrough -f rawvideo -pix_fmt rgb24 -y "
      "{6}",
      height, palette, screen.Run.Base(), screen.Ntsc ? "30000/1001" : "25", index, select, out,
      screen.ForcedOnly ? 1 : 0);
  EXPECT_EQ(std::system(command.c_str()), 0);
  const std::string all = TempFolder::Read(out);
  const std::size_t bytes = std::size_t{720} * static_cast<std::size_t>(height) * 3;
  ASSERT_EQ(all.size(), bytes * frames.size());
  std::size_t at = 0;
  for (const int frame : frames) {
    const auto shown = std::ranges::find_if(subtitles, [&](const TestSubtitle& each) {
      return each.Start <= frame && frame < each.End && (each.Forced || !screen.ForcedOnly);
    });
    EXPECT_EQ(WrongPixels(all.substr(at, bytes), screen.Ntsc, shown != subtitles.end() ? &*shown : nullptr),
              0)
        << "stream " << index << ", frame " << frame << (screen.ForcedOnly ? ", forced alone" : "");
    at += bytes;
  }
}

// Bitmaps of all kinds for 7 frames each, one in 8 frames.
std::vector<TestSubtitle> BitmapsInTurn() {
  std::vector<TestSubtitle> subtitles{{200, 60, 100, 400, 0, 0},
                                      {200, 61, 100, 400, 0, 0, true},  // odd height
                                      {203, 37, 101, 401, 0, 0, true},
                                      {202, 60, 0, 0, 0, 0},      // a width that four does not divide
                                      {200, 60, -37, 300, 0, 0},  // left of the picture
                                      {200, 60, 20, -21, 0, 0},   // above it by an odd count
                                      {200, 60, 601, 300, 0, 0, true},
                                      {200, 61, 20, 540, 0, 0},
                                      {900, 700, -51, -33, 0, 0, false, 12},  // beyond all sides
                                      {720, 360, 0, 100, 0, 0, false, 0},     // runs of 1 to 360
                                      {720, 720, 0, -400, 0, 0, true, 0},     // up to 720
                                      {2, 3, 300, 300, 0, 0}};
  for (int i = 0; TestSubtitle & subtitle : subtitles) {
    subtitle.Start = 8 * i++;
    subtitle.End = subtitle.Start + 7;
  }
  return subtitles;
}

// But for the last line of a bitmap.
TEST(SubtitleMux, EveryUnitShowsAsPaintedAndInTime) {
  const std::vector<TestSubtitle> lists[] = {{{300, 60, 100, 400, 0, 20},
                                              {301, 61, 101, 301, 25, 26, true},
                                              {720, 100, 0, 200, 26, 70},
                                              {203, 37, -1, -1, 101, 124}},
                                             {{64, 32, 600, 300, 0, 20}, {64, 33, 600, 300, 25, 60}},
                                             BitmapsInTurn()};
  for (const bool ntsc : {false, true}) {
    const TempFolder folder;
    const VideoSample film{
        .Standard = ntsc ? "NTSC" : "PAL", .Frames = ntsc ? 150 : 125, .KbitPerSecond = 7000};
    MuxInput input = MotionTrack({SampleVideo(film)}, ntsc);
    input.Audio = {Ac3Stream(SampleAc3({.Seconds = 5}))};
    std::vector<SubtitleStream> streams(ntsc ? 2 : 3);
    for (std::size_t i = 0; i < streams.size(); ++i) {
      streams[i] = StreamOf(folder, std::to_string(i), lists[i], ntsc);
      input.Subpictures.push_back({i == 0 ? 3 : 29 + static_cast<int>(i), &streams[i], {}});
    }
    for (const Rules& rules : {Rules::Players, Rules::Classic}) {
      MuxRun run(rules);
      ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
      EXPECT_THAT(run.Complaints(), testing::IsEmpty());
      for (std::size_t i = 0; rules.BitmapsAsPainted && i < streams.size(); ++i) {
        ExpectShown({run, ntsc}, i, lists[i]);
        ExpectShown({run, ntsc, true}, i, lists[i]);
      }
    }
  }
}

// All streams that there can be, four of them with large units, due with the picture that opens the third
// VOBU, beside sound.
TEST(SubtitleMux, UnitsFollowTheirNavigationPackAndLetSoundThroughForPlayers) {
  const TempFolder folder;
  const SubtitleStream large = StreamOf(folder, "l", {{720, 240, 0, 100, 24, 45}}, false);
  const SubtitleStream small = StreamOf(folder, "s", {{64, 24, 20, 100, 24, 45}}, false);
  MuxInput input = MotionTrack({Saved(folder, BuildStream({.Gops = 6}))});
  input.Audio = {Ac3Stream(SampleAc3({.Seconds = 3}))};
  for (int number = 0; number < 32; ++number) {
    input.Subpictures.push_back({number, number < 4 ? &large : &small, {}});
  }
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    MuxRun run(rules);
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    const std::vector<ReadPack> packs = run.Packs();
    const std::vector<WalkedVobu> vobus = WalkVobs(run.VobFiles());
    int sound = 0;
    int soundBetween = 0;
    std::vector<std::size_t> firstPacks;
    for (std::size_t at = vobus.at(2).Sector + 1; packs.at(at).StreamId == 0xBD; ++at) {
      if (packs[at].Substream >= 0x80) {
        ++sound;
        continue;
      }
      soundBetween = sound;
      EXPECT_LT(packs[at].Scr / 300 + 146, 25257 + 24 * 3600) << "all there in time";
      if (packs[at].Pts) {
        ASSERT_EQ(packs[at].Substream, 0x20 + static_cast<int>(firstPacks.size())) << "the lower first";
        EXPECT_EQ(*packs[at].Pts, 25257 + 24 * 3600);
        EXPECT_EQ(packs[at].BufferKib, 58);
        firstPacks.push_back(at);
      }
    }
    EXPECT_EQ(firstPacks.size(), 32U);
    EXPECT_EQ(soundBetween > 0, rules.AudioBetweenUnitPacks);
    CheckNavFigures(vobus, {3600, 25, rules.AudioSyncLeavesVobu});
  }
}

// What the checks have coded, side by side on all processors, is not read again.
TEST(SubtitleMux, CodedBitmapsTakeThePlaceOfFiles) {
  const TempFolder folder;
  std::vector<TestSubtitle> entries;
  for (int i = 0; i < 60; ++i) {
    entries.push_back({64 + i, 32, 600, 300, i, i + 1});
  }
  const SubtitleStream stream = StreamOf(folder, "a", entries, false);
  MuxInput input = FilmWith({}, 75);
  input.Subpictures = {{2, &stream, {}}};
  MuxRun whole;
  ASSERT_EQ(whole.Mux(input), MuxOutcome::Done);
  auto records = PrepareSPURecords(stream, {}, {3600, 25, VideoStartPts}, {});
  records.push_back(records[0]);
  records.back().File = folder / "none.bmp";
  CodedBitmaps coded;
  CodeAhead(records, false, Rules::Players, whole.Ui, coded);
  EXPECT_EQ(coded.Find(records.back(), false), nullptr);
  CodedBitmaps stopped;
  whole.Ui.StopWhen = [] { return true; };
  CodeAhead(records, false, Rules::Players, whole.Ui, stopped);
  EXPECT_EQ(stopped.Find(records[59], false), nullptr);
  for (const SubPicturePlay& play : stream.SubPlays) {
    std::filesystem::remove(play.File);
  }
  MuxRun again;
  again.Build.Coded = &coded;
  ASSERT_EQ(again.Mux(input), MuxOutcome::Done);
  EXPECT_EQ(again.Sectors(), whole.Sectors());
}

TEST(SubtitleMux, UnitsLeaveTheBufferWhenTheyShow) {
  SubpictureBuffer buffer;
  EXPECT_EQ(buffer.Enter(Clock::FromTicks(900), 1000, 7000), 7000);
  EXPECT_EQ(buffer.Enter(Clock::FromTicks(999), 1200, 8000), 15000);
  EXPECT_EQ(buffer.Enter(Clock::FromTicks(1000), 1300, 100), 8100);
  LateArrivals late;
  late.Note(Clock::FromTicks(1000), 1146);
  late.Note(Clock::FromTicks(1000), 1100);
  EXPECT_EQ(late.Count, 1);
  EXPECT_EQ(late.WorstTicks, 46);
}

// Each of them fits by itself.
TEST(SubtitleMux, TooMuchAtOnceIsRefusedForPlayers) {
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    MuxRun run(rules);
    std::vector<TestSubtitle> entries;
    for (int i = 0; i < 20; ++i) {
      entries.push_back({200, 200, 100, 100, 40 + i, 41 + i, false, 1});
    }
    const SubtitleStream stream = StreamOf(run.Folder, "a", entries, false);
    MuxInput input = FilmWith({}, 75);
    input.Subpictures = {{0, &stream, {}}};
    EXPECT_EQ(run.Mux(input), rules.RefusesDeadDiscs ? MuxOutcome::Failed : MuxOutcome::Done);
    EXPECT_TRUE(run.Ui.Messages.at(0).Is(message::SubtitlesOverfill));
  }
}

TEST(SubtitleMux, EntriesPastTheEndAreLeftOutAndTold) {
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    MuxRun run(rules);
    const SubtitleStream stream =
        StreamOf(run.Folder, "a", {{200, 60, 100, 100, 10, 20}, {200, 60, 100, 100, 80, 90}}, false);
    MuxInput input = FilmWith({}, 75);
    input.Subpictures = {{0, &stream, {}}};
    EXPECT_EQ(run.Mux(input), MuxOutcome::Done);
    ASSERT_EQ(run.Ui.Messages.size(), 1U);
    EXPECT_TRUE(run.Ui.Messages[0].Is(message::SubtitlesPastEnd));
    EXPECT_THAT(run.Ui.Messages[0].Text,
                testing::HasSubstr("1 subtitle past the end of the picture, the first of them entry 2"));
  }
}

}  // namespace
}  // namespace quorvelant
