#include "mux/subpicture_packs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>

namespace quorvelant {
namespace {

using Form = SubpicturePackForm;

// A unit whose bytes tell their place, never the fill's 0xFF.
Bytes UnitOf(std::size_t bytes) {
  Bytes unit(bytes);
  for (std::size_t i = 0; i < bytes; ++i) {
    unit[i] = static_cast<std::uint8_t>(i % 251);
  }
  return unit;
}

struct ReadBack {
  std::size_t HeaderBytes;  // fields and stuffing
  std::size_t PacketLength;
  std::size_t PayloadAt;
  std::size_t PayloadBytes;
  std::size_t PaddingBytes;  // the whole padding packet, 0 for none
};

// Reads the sector as a demultiplexer does.
ReadBack Read(ByteView sector) {
  EXPECT_EQ(GetBytes(sector, 14, 4), 0x1BDU);
  ReadBack read{};
  read.PacketLength = GetBytes(sector, 18, 2);
  read.HeaderBytes = sector[22];
  read.PayloadAt = 23 + read.HeaderBytes + 1;
  const std::size_t end = 20 + read.PacketLength;
  read.PayloadBytes = end - read.PayloadAt;
  read.PaddingBytes = SectorBytes - end;
  if (read.PaddingBytes > 0) {
    EXPECT_EQ(GetBytes(sector, end, 4), 0x1BEU);
    EXPECT_EQ(end + 6 + GetBytes(sector, end + 4, 2), SectorBytes);
    EXPECT_TRUE(std::all_of(sector.begin() + static_cast<std::ptrdiff_t>(end) + 6, sector.end(),
                            [](std::uint8_t byte) { return byte == 0xFF; }));
  }
  return read;
}

TEST(SubpicturePacks, HeadersOfTheThreeForms) {
  const Bytes unit = UnitOf(3000);
  const struct {
    Form Of;
    Bytes Header;  // from byte 14 to the substream number
  } cases[] = {
      {Form::FirstOfVob,
       {0, 0, 1, 0xBD, 0x07, 0xEC,     // private stream 1, 2028 bytes
        0x81, 0x81, 8,                 // PTS and extension
        0x21, 0x00, 0x01, 0xC5, 0x53,  // PTS 25257
        0x1E, 0x60, 0x3A,              // buffer of 58 KiB
        0x23}},                        // stream 3
      {Form::FirstOfUnit, {0, 0, 1, 0xBD, 0x07, 0xEC, 0x81, 0x80, 5, 0x21, 0x00, 0x01, 0xC5, 0x53, 0x23}},
      {Form::Following, {0, 0, 1, 0xBD, 0x07, 0xEC, 0x81, 0x00, 0, 0x23}},
  };
  for (const auto& test : cases) {
    Bytes sector(SectorBytes);
    EXPECT_EQ(PutSubpicturePacket(sector, unit, test.Of, 3, 25257), SubpictureCapacity(test.Of));
    EXPECT_TRUE(std::equal(test.Header.begin(), test.Header.end(), sector.begin() + 14));
    EXPECT_TRUE(std::equal(sector.begin() + 14 + static_cast<std::ptrdiff_t>(test.Header.size()),
                           sector.end(), unit.begin()));
  }
}

// Every length of a last pack: what a reader finds is the unit, and the sector is full.
TEST(SubpicturePacks, EveryRestIsFilledToTheSectorsEnd) {
  for (const Form form : {Form::FirstOfVob, Form::FirstOfUnit, Form::Following}) {
    for (std::size_t bytes = 1; bytes <= SubpictureCapacity(form); ++bytes) {
      const Bytes unit = UnitOf(bytes);
      Bytes sector(SectorBytes);
      ASSERT_EQ(PutSubpicturePacket(sector, unit, form, 31, 90000), bytes);
      const ReadBack read = Read(sector);
      ASSERT_EQ(read.PayloadBytes, bytes);
      ASSERT_EQ(sector[read.PayloadAt - 1], 0x3F);
      ASSERT_TRUE(
          std::equal(unit.begin(), unit.end(), sector.begin() + static_cast<std::ptrdiff_t>(read.PayloadAt)));
      const std::size_t stuffing =
          read.HeaderBytes - (SubpictureCapacity(Form::Following) - SubpictureCapacity(form));
      ASSERT_TRUE(stuffing == 0 || read.PaddingBytes == 0);
      ASSERT_LE(stuffing, 7U);
    }
  }
}

}  // namespace
}  // namespace quorvelant
