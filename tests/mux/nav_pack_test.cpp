#include "mux/nav_pack.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mux_run.h"
#include "subtitled_track.h"
#include "support/media.h"
#include "support/nav_figures.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

// `count` VOBUs of 12 PAL frames and 100 sectors each, in cells of `perCell`.
std::vector<VobuRecord> Vobus(std::size_t count, std::size_t perCell = 1000) {
  std::vector<VobuRecord> records(count);
  for (std::size_t i = 0; i < count; ++i) {
    VobuRecord& r = records[i];
    r.StartSector = static_cast<std::uint32_t>(5000 + 100 * i);
    r.EndSector = r.StartSector + 99;
    r.VobId = 3;
    r.CellId = static_cast<std::uint8_t>(1 + i / perCell);
    r.HasVideo = true;
    r.StartPts = VideoStartPts + 43200 * static_cast<std::int64_t>(i);
    r.EndPts = r.StartPts + 43200;
  }
  return records;
}

// A sector whose fields are looked up by offset.
struct Packed {
  Bytes Sector;
  std::uint64_t At(std::size_t offset) const { return GetBytes(Sector, offset, 4); }
  // The jumps, from half a second to two minutes.
  std::uint64_t Forward(std::size_t row) const { return At(1341 - 4 * row); }
  std::uint64_t Backward(std::size_t row) const { return At(1353 + 4 * row); }
};

Packed Build(const std::vector<VobuRecord>& records, std::size_t index, const MuxInput& input = {}) {
  Packed packed{Bytes(SectorBytes, 0xAA)};
  const auto end = VideoStartPts + 43200 * static_cast<std::int64_t>(records.size());
  BuildNavPack({.Records = records, .Input = input, .Rules = Rules::Players, .VobEndPts = end}, index,
               packed.Sector);
  return packed;
}

// What stands in every pack; the rest is compared with finished sectors below.
TEST(NavPack, HeadersAndMarksOfSyncFields) {
  auto records = Vobus(3);
  records[1].NavScr = Clock::FromTicks(43200) + Clock{2};
  records[1].AudioSync = {5101, 0, 5100 + 0x3FFF};
  records[1].SubSync[1] = NoSubpictureSync;
  records[1].SubSync[2] = 0x12;
  MuxInput input;
  for (const int number : {0, 1, 2}) {
    input.Audio.emplace_back().StreamNumber = number;
    input.Subpictures.emplace_back().StreamNumber = number + 1;
  }
  const Packed pack = Build(records, 1, input);
  const auto part = [&](std::size_t from, std::size_t count) {
    return std::vector<int>(pack.Sector.begin() + static_cast<std::ptrdiff_t>(from),
                            pack.Sector.begin() + static_cast<std::ptrdiff_t>(from + count));
  };
  EXPECT_THAT(part(0, 14), ElementsAre(0x00, 0x00, 0x01, 0xBA,              // pack start code
                                       0x44, 0x00, 0x0D, 0x46, 0x04, 0x57,  // 43200 + 43/300
                                       0x01, 0x89, 0xC3, 0xF8));
  EXPECT_THAT(part(14, 31), ElementsAre(0x00, 0x00, 0x01, 0xBB, 0x00, 0x12,           // system header
                                        0x80, 0xC4, 0xE1, 0x00, 0xE1, 0x7F,           // bounds
                                        0xB9, 0xE0, 0xE8, 0xB8, 0xC0, 0x20,           // video, audio
                                        0xBD, 0xE0, 0x3A, 0xBF, 0xE0, 0x02,           // private 1, 2
                                        0x00, 0x00, 0x01, 0xBF, 0x03, 0xD4, 0x00));   // PCI, 980
  EXPECT_THAT(part(1024, 7), ElementsAre(0x00, 0x00, 0x01, 0xBF, 0x03, 0xFA, 0x01));  // DSI, 1018
  EXPECT_EQ(pack.At(1031), 43200U);
  // One sector on, no pack, one too far away, not in use.
  EXPECT_THAT(part(1433, 8), ElementsAre(0x00, 0x01, 0x3F, 0xFF, 0x3F, 0xFF, 0x00, 0x00));
  EXPECT_EQ(pack.At(1449), 0U);
  EXPECT_EQ(pack.At(1453), 0x7FFFFFFFU);
  EXPECT_EQ(pack.At(1457), 0x80000012U);
}

// Only the VOB's last picture can carry a sequence end code in motion video; a slide ends on its own.
TEST(NavPack, EndTimesOfTheLastVobu) {
  auto records = Vobus(4, 2);
  records[1].EndPts -= 1;  // an inner cell keeps its own end, the last VOBU takes that of the VOB
  records[3].EndPts -= 1;
  records[3].SeqEndPts = 99;
  MuxInput input;
  for (const auto& [kind, seqEnd] :
       {std::pair{TrackKind::Motion, 25257U + 4 * 43200}, {TrackKind::SlideShow, 99U}}) {
    input.Kind = kind;
    EXPECT_EQ(Build(records, 3, input).At(61), 25257U + 4 * 43200);
    EXPECT_EQ(Build(records, 3, input).At(65), seqEnd);
    EXPECT_EQ(Build(records, 1, input).At(61), 25257U + 2 * 43200 - 1);
    EXPECT_EQ(Build(records, 2, input).At(65), 0U);
  }
}

// The worked example of docs/formats/navigation.md.
TEST(NavPack, JumpsOfALongCell) {
  const auto records = Vobus(600);
  const Packed middle = Build(records, 300);
  EXPECT_EQ(middle.Forward(0), 0x80000064U);  // half a second is 45000 ticks, a VOBU 43200
  EXPECT_EQ(middle.Forward(14), 0x800005DCU);
  EXPECT_EQ(middle.Forward(15), 0xC00007D0U);
  EXPECT_EQ(middle.Forward(18), 0xC0006144U);
  EXPECT_EQ(middle.Backward(18), 0xC00061A8U);
  const Packed late = Build(records, 580);
  EXPECT_EQ(late.Forward(15), 0x7FFFFFFFU);
  EXPECT_EQ(late.Forward(16), 0x3FFFFFFFU);
}

TEST(NavPack, VobusWithoutVideoAreToldApart) {
  auto records = Vobus(5);
  records[1].HasVideo = records[2].HasVideo = false;
  const Packed first = Build(records, 0);
  EXPECT_EQ(first.At(1345), 100U) << "the next";
  EXPECT_EQ(first.At(1265), 0x80000000U + 300) << "the next with video";
  EXPECT_EQ(first.Forward(0), 100U);
  EXPECT_EQ(Build(records, 4).At(1349), 0x80000000U + 100);
}

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
    std::uint32_t Split = SplitSectors;
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
