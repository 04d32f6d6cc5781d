#include "mux/nav_pack.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "mux/nav_layout.h"

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
    r.FramesAtStart = 12.0 * static_cast<double>(i);
    r.CellFramesAtStart = 12.0 * static_cast<double>(i % perCell);
  }
  return records;
}

Bytes Build(const std::vector<VobuRecord>& records, std::size_t index, const MuxInput& input = {},
            const Rules& rules = Rules::Players) {
  Bytes sector(SectorBytes, 0xAA);
  BuildNavPack({.Records = records, .Input = input, .Rules = rules, .VobEndPts = records.back().EndPts},
               index, sector);
  return sector;
}

Bytes Part(const Bytes& bytes, std::size_t from, std::size_t count) {
  return {bytes.begin() + static_cast<std::ptrdiff_t>(from),
          bytes.begin() + static_cast<std::ptrdiff_t>(from + count)};
}

std::uint64_t At(const Bytes& sector, std::size_t offset, unsigned width) {
  return GetBytes(sector, offset, width);
}

TEST(NavPack, HeadersAndFieldsStandAtTheirOffsets) {
  auto records = Vobus(3);
  records[1].NavScr = Clock::FromTicks(43200) + Clock{2};
  records[1].RefEnds = {5110, 5130, 0};
  records[1].UopMask = 0x01000081;
  records[1].AudioSync = {5101, 0, 5090};
  records[1].SubSync[1] = NoSubpictureSync;
  records[1].SubSync[2] = 0x12;
  MuxInput input;
  input.Audio.resize(3);
  input.Audio[1].StreamNumber = 1;
  input.Audio[2].StreamNumber = 2;
  input.Subpictures.resize(2);
  input.Subpictures[0].StreamNumber = 1;
  input.Subpictures[1].StreamNumber = 2;
  const Bytes sector = Build(records, 1, input);

  EXPECT_THAT(Part(sector, 0, 14), ElementsAre(0x00, 0x00, 0x01, 0xBA,              // pack start code
                                               0x44, 0x00, 0x0D, 0x46, 0x04, 0x57,  // 43200 + 43/300
                                               0x01, 0x89, 0xC3, 0xF8));
  EXPECT_THAT(Part(sector, 14, 31), ElementsAre(0x00, 0x00, 0x01, 0xBB, 0x00, 0x12,           // system header
                                                0x80, 0xC4, 0xE1, 0x00, 0xE1, 0x7F,           // bounds
                                                0xB9, 0xE0, 0xE8, 0xB8, 0xC0, 0x20,           // video, audio
                                                0xBD, 0xE0, 0x3A, 0xBF, 0xE0, 0x02,           // private 1, 2
                                                0x00, 0x00, 0x01, 0xBF, 0x03, 0xD4, 0x00));   // PCI, 980
  EXPECT_THAT(Part(sector, 1024, 7), ElementsAre(0x00, 0x00, 0x01, 0xBF, 0x03, 0xFA, 0x01));  // DSI, 1018
  struct Field {
    std::size_t Offset;
    unsigned Width;
    std::uint64_t Value;
  };
  for (const Field& f : {Field{45, 4, 5100}, Field{53, 4, 0x01000081}, Field{57, 4, 25257 + 43200},
                         Field{61, 4, 25257 + 86400}, Field{65, 4, 0}, Field{69, 4, 0x00000052},
                         Field{1031, 4, 43200}, Field{1035, 4, 5100}, Field{1039, 4, 99}, Field{1043, 4, 10},
                         Field{1047, 4, 30}, Field{1051, 4, 0}, Field{1055, 2, 3}, Field{1058, 1, 1},
                         Field{1059, 4, 0x00000052}, Field{1075, 4, 25257}, Field{1079, 4, 25257 + 129600},
                         // sync: one sector on, no pack, ten sectors back, not in use
                         Field{1433, 2, 1}, Field{1435, 2, 0x3FFF}, Field{1437, 2, 0x800A}, Field{1439, 2, 0},
                         Field{1449, 4, 0}, Field{1453, 4, 0x7FFFFFFF}, Field{1457, 4, 0x80000012}}) {
    EXPECT_EQ(At(sector, f.Offset, f.Width), f.Value) << "offset " << f.Offset;
  }
}

// Only the VOB's last picture can carry a sequence end code in motion video; a slide ends on its own.
TEST(NavPack, EndTimesOfTheLastVobu) {
  auto records = Vobus(4, 2);
  records[1].EndPts -= 1;  // an inner cell keeps its own end
  records[3].SeqEndPts = 99;
  MuxInput input;
  for (const auto& [kind, seqEnd] :
       {std::pair{TrackKind::Motion, 25257U + 4 * 43200}, {TrackKind::SlideShow, 99U}}) {
    input.Kind = kind;
    const Bytes last = Build(records, 3, input);
    EXPECT_EQ(At(last, 61, 4), 25257U + 4 * 43200);
    EXPECT_EQ(At(last, 65, 4), seqEnd);
    EXPECT_EQ(At(Build(records, 1, input), 61, 4), 25257U + 2 * 43200 - 1);
    EXPECT_EQ(At(Build(records, 2, input), 65, 4), 0U);
  }
}

struct Jumps {
  std::vector<std::uint64_t> Forward, Backward;  // from half a second to two minutes
  std::uint64_t Next, NextVideo, Previous, PreviousVideo;
};

Jumps JumpsOf(const Bytes& sector) {
  Jumps jumps;
  for (std::size_t row = 0; row < 19; ++row) {
    jumps.Forward.push_back(At(sector, 1341 - 4 * row, 4));
    jumps.Backward.push_back(At(sector, 1353 + 4 * row, 4));
  }
  jumps.NextVideo = At(sector, 1265, 4);
  jumps.Next = At(sector, 1345, 4);
  jumps.Previous = At(sector, 1349, 4);
  jumps.PreviousVideo = At(sector, 1429, 4);
  return jumps;
}

TEST(NavPack, JumpsOfALongCell) {
  const auto records = Vobus(600);
  const Jumps middle = JumpsOf(Build(records, 300));
  // Half a second is 45000 ticks, a VOBU 43200: the jump lands in the next one.
  EXPECT_EQ(middle.Forward[0], 0x80000000U + 100);
  EXPECT_EQ(middle.Forward[14], 0x80000000U + 1500);   // 7.5 s: 15.6 VOBUs on
  EXPECT_EQ(middle.Forward[15], 0xC0000000U + 2000);   // 10 s, with video in between
  EXPECT_EQ(middle.Forward[18], 0xC0000000U + 24900);  // 120 s meet the end of VOBU 249 first
  EXPECT_EQ(middle.Backward[0], 0x80000000U + 200);    // and back its start: 1.04 VOBUs
  EXPECT_EQ(middle.Backward[18], 0xC0000000U + 25000);
  EXPECT_EQ(middle.Next, 0x80000000U + 100);
  EXPECT_EQ(middle.PreviousVideo, 0x80000000U + 100);

  const Jumps near = JumpsOf(Build(records, 590));  // 4.32 s to the end of the cell
  EXPECT_EQ(near.Forward[7], 0x80000000U + 800);    // 4 s
  EXPECT_EQ(near.Forward[8], 0x80000000U + 900);    // 4.5 s is within the last
  EXPECT_EQ(near.Forward[9], 0x3FFFFFFFU);
  EXPECT_EQ(near.Forward[15], 0x3FFFFFFFU);

  const Jumps eighth = JumpsOf(Build(records, 580));  // 9.6 s: the row of 10 s fails, passing video
  EXPECT_EQ(eighth.Forward[15], 0x7FFFFFFFU);
  EXPECT_EQ(eighth.Forward[16], 0x3FFFFFFFU);
}

TEST(NavPack, JumpsStayWithinTheCell) {
  const Jumps only = JumpsOf(Build(Vobus(3, 1), 1));
  EXPECT_THAT(only.Forward, testing::Each(0x3FFFFFFFU));
  EXPECT_THAT(only.Backward, testing::Each(0x3FFFFFFFU));
  EXPECT_EQ(only.Next, 0x3FFFFFFFU);
  EXPECT_EQ(only.Previous, 0x3FFFFFFFU);
  EXPECT_EQ(only.NextVideo, 0xBFFFFFFFU);
  EXPECT_EQ(only.PreviousVideo, 0xBFFFFFFFU);
}

TEST(NavPack, VobusWithoutVideoAreToldApart) {
  auto records = Vobus(5);
  records[1].HasVideo = records[2].HasVideo = false;
  const Jumps first = JumpsOf(Build(records, 0));
  EXPECT_EQ(first.Next, 100U);
  EXPECT_EQ(first.NextVideo, 0x80000000U + 300);
  EXPECT_EQ(first.Forward[0], 100U);
  const Jumps last = JumpsOf(Build(records, 4));
  EXPECT_EQ(last.Previous, 0x80000000U + 100);
}

}  // namespace
}  // namespace quorvelant
