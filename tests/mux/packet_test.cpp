#include "mux/packet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvelant {
namespace {

using testing::ElementsAre;

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

TEST(PackHeader, FieldsOfManyBitsAreCutByMarkers) {
  Bytes sector(SectorBytes);
  PutPackHeader(sector, {0x1'2345'6789, 299});
  PutTimeStamp(sector, PackHeaderBytes, TimeStampKind::PairedPts, 0x1'2345'6789);
  sector.resize(PackHeaderBytes + TimeStampBytes);
  EXPECT_THAT(sector, ElementsAre(0x00, 0x00, 0x01, 0xBA,              // pack_start_code
                                  0x66, 0x34, 0x57, 0x3C, 0x4E, 0x57,  // "01", base, extension, markers
                                  0x01, 0x89, 0xC3, 0xF8,              // 25200 and two markers; no stuffing
                                  0x39, 0x8D, 0x15, 0xCF, 0x13));      // "0011", the same base
}

// What each kind of header holds and how a packet that does not fill the sector is filled: seven bytes or
// fewer within the header, after the stamps, more by a padding packet.
TEST(Packet, FormsAndFilling) {
  struct Case {
    PacketHeader Header;
    std::size_t Room, Spare;
    Bytes FromLength;  // bytes from PES_packet_length on
    Bytes Tail;        // the last bytes of the sector, data is AA
  };
  const PacketHeader timed{.Pts = 1, .Dts = 1};
  const PacketHeader sound{
      .StreamId = start_code::PrivateStream1, .Pts = 25257, .BufferKib = PrivateBufferKib};
  const Case cases[] = {
      {timed, 2015, 0, {0x07, 0xEC, 0x81, 0xC0, 0x0A}, {0xAA}},
      {sound,
       2017,
       0,
       {0x07, 0xEC, 0x81, 0x81, 0x08, 0x21, 0x00, 0x01, 0xC5, 0x53, 0x1E, 0x60, 0x3A, 0xAA},
       {0xAA}},
      {{}, 2025, 7, {0x07, 0xEC, 0x81, 0x00, 0x07, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xAA}, {0xAA}},
      {{}, 2025, 8, {0x07, 0xE4, 0x81, 0x00, 0x00, 0xAA}, {0xAA, 0, 0, 1, 0xBE, 0, 2, 0xFF, 0xFF}},
      {timed,
       2015,
       2,
       {0x07, 0xEC, 0x81, 0xC0, 0x0C, 0x31, 0, 1, 0, 3, 0x11, 0, 1, 0, 3, 0xFF, 0xFF, 0xAA},
       {0xAA}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    Bytes sector(SectorBytes, 0xAA);
    ASSERT_EQ(RoomAfter(c.Header), c.Room);
    const std::size_t at = PutPacket(sector, {0, 0}, c.Header, c.Room - c.Spare);
    EXPECT_EQ(sector[17], c.Header.StreamId);
    EXPECT_TRUE(std::ranges::equal(ByteView(sector).subspan(18, c.FromLength.size()), c.FromLength));
    EXPECT_TRUE(std::ranges::equal(ByteView(sector).last(c.Tail.size()), c.Tail));
    EXPECT_EQ(at, SectorBytes - (c.Room - c.Spare) - (c.Spare >= 8 ? c.Spare : 0));
  }
}

}  // namespace
}  // namespace quorvelant
