#include "mux/packet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "support/folders.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::Each;
using testing::ElementsAre;

Bytes Part(const Bytes& sector, std::size_t from, std::size_t bytes) {
  return {sector.begin() + static_cast<std::ptrdiff_t>(from),
          sector.begin() + static_cast<std::ptrdiff_t>(from + bytes)};
}

Bytes Packed(const PacketHeader& header, std::size_t bytes, std::size_t& dataAt) {
  Bytes sector(SectorBytes, 0xAA);
  dataAt = PutPacket(sector, {0, 0}, header, bytes);
  return sector;
}

TEST(Packet, HeaderFormsHoldWhatTheyOpen) {
  std::size_t at = 0;
  const PacketHeader first{.Pts = 25257, .Dts = 21657, .BufferKib = VideoBufferKib};
  ASSERT_EQ(RoomBehind(first), 2012U);
  EXPECT_THAT(Part(Packed(first, 2012, at), 14, 22),
              ElementsAre(0x00, 0x00, 0x01, 0xE0,        // packet of video stream 0
                          0x07, 0xEC,                    // PES_packet_length 2028
                          0x81, 0xC1, 0x0D,              // PTS, DTS and extension; 13 bytes of them
                          0x31, 0x00, 0x01, 0xC5, 0x53,  // PTS 25257
                          0x11, 0x00, 0x01, 0xA9, 0x33,  // DTS 21657
                          0x1E, 0x60, 0xE8));            // P-STD buffer: 232 units of 1 KiB
  EXPECT_EQ(at, 36U);
  const PacketHeader timed{.Pts = 1, .Dts = 1};
  ASSERT_EQ(RoomBehind(timed), 2015U);
  EXPECT_THAT(Part(Packed(timed, 2015, at), 18, 5), ElementsAre(0x07, 0xEC, 0x81, 0xC0, 0x0A));
  ASSERT_EQ(RoomBehind({}), 2025U);
  EXPECT_THAT(Part(Packed({}, 2025, at), 18, 5), ElementsAre(0x07, 0xEC, 0x81, 0x00, 0x00));
  const PacketHeader sound{.StreamId = PrivateStream1Id, .Pts = 25257, .BufferKib = PrivateBufferKib};
  EXPECT_THAT(Part(Packed(sound, 2017, at), 14, 17),
              ElementsAre(0x00, 0x00, 0x01, 0xBD, 0x07, 0xEC, 0x81, 0x81, 0x08,  //
                          0x21, 0x00, 0x01, 0xC5, 0x53, 0x1E, 0x60, 0x3A));
}

// Seven bytes or fewer are filled within the header, more by a padding packet.
TEST(Packet, ShortPacketsAreStuffedOrPadded) {
  std::size_t at = 0;
  Bytes sector = Packed({}, 2025 - 7, at);
  EXPECT_THAT(Part(sector, 18, 5), ElementsAre(0x07, 0xEC, 0x81, 0x00, 0x07));
  EXPECT_THAT(Part(sector, 23, 7), Each(0xFF));
  EXPECT_EQ(at, 30U);
  sector = Packed({}, 2025 - 8, at);
  EXPECT_THAT(Part(sector, 18, 5), ElementsAre(0x07, 0xE4, 0x81, 0x00, 0x00));
  EXPECT_THAT(Part(sector, 2040, 8), ElementsAre(0x00, 0x00, 0x01, 0xBE, 0x00, 0x02, 0xFF, 0xFF));
  const PacketHeader timed{.Pts = 1, .Dts = 1};
  sector = Packed(timed, 2015 - 2, at);
  EXPECT_THAT(Part(sector, 20, 3), ElementsAre(0x81, 0xC0, 0x0C)) << "stuffing stands behind the stamps";
  EXPECT_THAT(Part(sector, 33, 2), Each(0xFF));
}

// The table of docs/formats/packs.md is what a first pack begins with.
TEST(Packet, WorkedExample) {
  const std::string page = TempFolder::Read(SourceFile("docs/formats/packs.md"));
  Bytes expected;
  for (std::size_t at = page.find("| `", page.find("Packet.WorkedExample")); at != std::string::npos;
       at = page.find("\n| `", at)) {
    at = page.find('`', at) + 1;
    std::istringstream row(page.substr(at, page.find('`', at) - at));
    for (unsigned byte = 0; row >> std::hex >> byte;) {
      expected.push_back(static_cast<std::uint8_t>(byte));
    }
  }
  Bytes sector(SectorBytes);
  const Clock scr = SectorTicks;
  const PacketHeader first{.Pts = VideoStartPts, .Dts = VideoStartPts - 3600, .BufferKib = VideoBufferKib};
  const std::size_t at = PutPacket(sector, ScrOf(scr, PackKind::Video, Rules::Players), first, 2012);
  EXPECT_EQ(Part(sector, 0, at), expected);
}

}  // namespace
}  // namespace quorvelant
