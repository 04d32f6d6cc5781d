#include "mux/decode_schedule.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace quorvelant {
namespace {

// "I2 B0 b1 ...": type, temporal reference; a small letter is a field picture, '*' repeats a field.
std::vector<CodedPicture> Pictures(std::string_view text) {
  std::vector<CodedPicture> pictures;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '*') {
      pictures.back().RepeatFields = 1;
    } else if (text[i] >= '0' && text[i] <= '9') {
      pictures.back().TemporalReference = pictures.back().TemporalReference * 10 + (text[i] - '0');
    } else if (text[i] != ' ') {
      const bool field = text[i] >= 'a';
      const char type = field ? static_cast<char>(text[i] - 'a' + 'A') : text[i];
      const PictureType known = type == 'I' ? PictureType::I : type == 'P' ? PictureType::P : PictureType::B;
      pictures.push_back({known, 0, field ? 1 : 2, 0});
    }
  }
  return pictures;
}

// When each is shown and decoded, relative to the start, where the first picture shown is shown.
std::string Schedule(const std::vector<CodedPicture>& pictures, const FrameTiming& timing) {
  DecodeSchedule schedule(timing);
  std::string times;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const DecodeTimes t = schedule.Next(pictures[i], [&](std::size_t offset) {
      return i + offset < pictures.size() ? &pictures[i + offset] : nullptr;
    });
    times += fmt::format("{} {}, ", t.Pts.WholeTicks() - VideoStartPts, t.Dts.WholeTicks() - VideoStartPts);
  }
  return times;
}

TEST(DecodeSchedule, PicturesAreDecodedInTurnAndShownInOrder) {
  struct Case {
    const char* Pictures;
    FrameTiming Timing;
    const char* Times;  // shown, decoded
  };
  const Case cases[] = {
      // An open GOP's I picture is decoded a frame before its B pictures and shown after them.
      {"I2 B0 B1 P5 B3 B4", PalTiming, "7200 -3600, 0 0, 3600 3600, 18000 7200, 10800 10800, 14400 14400, "},
      {"I0 P3 B1 B2 I4", PalTiming, "0 -3600, 10800 0, 3600 3600, 7200 7200, 14400 10800, "},
      // Pulldown: I0 for 3 fields, B1 for 2, B2 for 3, P3 for 2, ... each field 1501.5 ticks.
      {"I0* P3 B1 B2* P6* B4* B5", NtscTiming,
       "0 -3003, 12012 0, 4504 4504, 7507 7507, 22522 12012, 15015 15015, 19519 19519, "},
      // Field pairs last one frame.
      {"i0 p0 p3 p3 b1 b1 B2 I4", NtscTiming,
       "0 -3003, 1501 -1502, 9009 0, 10510 1501, 3003 3003, 4504 4504, 6006 6006, 12012 9009, "},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Schedule(Pictures(c.Pictures), c.Timing), c.Times) << c.Pictures;
  }
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
