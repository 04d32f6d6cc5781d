#include "mux/decode_schedule.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace quorvelant {
namespace {

// Times from the start, where the first picture shown is shown. Films of frames are judged by walks.
TEST(DecodeSchedule, FieldPairsLastOneFrame) {
  using enum PictureType;
  const std::vector<CodedPicture> pictures{{I, 0, 1, 0}, {P, 0, 1, 0}, {P, 3, 1, 0}, {P, 3, 1, 0},
                                           {B, 1, 1, 0}, {B, 1, 1, 0}, {B, 2, 2, 0}, {I, 4, 2, 0}};
  DecodeSchedule schedule(NtscTiming);
  std::string times;  // shown, decoded
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const DecodeTimes t = schedule.Next(pictures[i], [&](std::size_t offset) {
      return i + offset < pictures.size() ? &pictures[i + offset] : nullptr;
    });
    times += fmt::format("{} {}, ", t.Pts.WholeTicks() - VideoStartPts, t.Dts.WholeTicks() - VideoStartPts);
  }
  EXPECT_EQ(times, "0 -3003, 1501 -1502, 9009 0, 10510 1501, 3003 3003, 4504 4504, 6006 6006, 12012 9009, ");
}

TEST(DecodeSchedule, NtscStampsMoveToTheNearestWholeNumberOfFields) {
  const auto corrected = [](std::int64_t difference) {
    const DecodeTimes times{Clock::FromTicks(10000), Clock::FromTicks(10000 + difference)};
    return StampsOf(times, NtscTiming);
  };
  EXPECT_EQ(corrected(3003), (TimeStamps{13003, 10000}));
  EXPECT_EQ(corrected(3003 + 9), (TimeStamps{13003, 10000}));
  EXPECT_EQ(corrected(3003 + 10), (TimeStamps{13013, 10000}));
  EXPECT_EQ(corrected(1496), (TimeStamps{11501, 10000}));
  EXPECT_EQ(corrected(1506), (TimeStamps{11506, 10005}));
  EXPECT_EQ(corrected(2994), (TimeStamps{13003, 10000}));
  const DecodeTimes pal{Clock::FromTicks(0), Clock::FromTicks(5)};
  EXPECT_EQ(StampsOf(pal, PalTiming), (TimeStamps{5, 0}));
}

}  // namespace
}  // namespace quorvelant
