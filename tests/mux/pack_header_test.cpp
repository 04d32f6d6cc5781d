#include "mux/pack_header.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace quorvelant {
namespace {

using testing::ElementsAre;

TEST(PackHeader, HoldsClockRateAndNoStuffing) {
  Bytes sector(SectorBytes);
  PutPackHeader(sector, {0x1'2345'6789, 299});
  sector.resize(PackHeaderBytes);
  EXPECT_THAT(sector, ElementsAre(0x00, 0x00, 0x01, 0xBA,              // pack_start_code
                                  0x66, 0x34, 0x57, 0x3C, 0x4E, 0x57,  // "01", base, extension, markers
                                  0x01, 0x89, 0xC3,                    // 25200 and two markers
                                  0xF8));
}

// A fraction of the clock is a number of fourteenths of a tick; 1/14 tick is 21.43 ticks of 27 MHz.
TEST(PackHeader, RoundsTheFractionByKindUnderTraditionalRules) {
  struct Case {
    std::int64_t Units;
    std::uint32_t Video, Navigation, Audio;
  };
  for (const Case& c : {Case{14, 0, 0, 21}, Case{14 + 1, 21, 21, 43}, Case{14 + 2, 43, 21, 43},
                        Case{14 + 7, 150, 150, 150}, Case{14 + 13, 279, 258, 279}}) {
    const Clock clock{c.Units};
    EXPECT_EQ(ScrOf(clock, PackKind::Video, Rules::Classic), (SystemClockReference{1, c.Video}));
    EXPECT_EQ(ScrOf(clock, PackKind::Navigation, Rules::Classic), (SystemClockReference{1, c.Navigation}));
    EXPECT_EQ(ScrOf(clock, PackKind::AudioOrSubpicture, Rules::Classic), (SystemClockReference{1, c.Audio}));
    for (const PackKind kind : {PackKind::Navigation, PackKind::AudioOrSubpicture}) {
      EXPECT_EQ(ScrOf(clock, kind, Rules::Players).Extension, c.Video);
    }
  }
}

TEST(PackHeader, TimeStampsCarryTheirKindAndMarkers) {
  std::array<std::uint8_t, TimeStampBytes> bytes{};
  PutTimeStamp(bytes, 0, TimeStampKind::LonePts, 25257);
  EXPECT_THAT(bytes, ElementsAre(0x21, 0x00, 0x01, 0xC5, 0x53));
  PutTimeStamp(bytes, 0, TimeStampKind::PairedPts, 0x1'FFFF'FFFF);
  EXPECT_THAT(bytes, ElementsAre(0x3F, 0xFF, 0xFF, 0xFF, 0xFF));
}

}  // namespace
}  // namespace quorvelant
