#include "mux/subpicture_packs.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "mux/pack_header.h"
#include "support/pack_reader.h"

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
    const std::size_t taken = PutSubpicturePacket(sector, unit, test.Of, 3, 25257);
    EXPECT_EQ(taken, SectorBytes - 14 - test.Header.size());
    EXPECT_EQ(taken, SubpictureCapacity(test.Of));
    EXPECT_TRUE(std::ranges::equal(ByteView(sector).subspan(14, test.Header.size()), test.Header));
    EXPECT_TRUE(std::ranges::equal(ByteView(sector).last(taken), ByteView(unit).first(taken)));
  }
}

// Every length of a last pack: what a reader finds is the unit, and the sector is full.
TEST(SubpicturePacks, EveryRestIsFilledToTheSectorsEnd) {
  for (const Form form : {Form::FirstOfVob, Form::FirstOfUnit, Form::Following}) {
    for (std::size_t bytes = 1; bytes <= SubpictureCapacity(form); ++bytes) {
      const Bytes unit = UnitOf(bytes);
      Bytes sector(SectorBytes);
      PutPackHeader(sector, {});
      ASSERT_EQ(PutSubpicturePacket(sector, unit, form, 31, 90000), bytes);
      const ReadPack pack = ReadPackOf(sector);
      ASSERT_EQ(pack.Payload, unit);
      ASSERT_EQ(pack.Substream, 0x3F);
      const std::size_t end = 20 + GetBytes(sector, 18, 2);
      const std::size_t spare = SubpictureCapacity(form) - bytes;
      // Seven bytes are stuffing as well, but for a first pack, where they are a padding packet.
      ASSERT_EQ(SectorBytes - end, spare < (form == Form::FirstOfVob ? 7 : 8) ? 0 : spare);
      if (end < SectorBytes) {
        ASSERT_EQ(GetBytes(sector, end, 4), 0x1BEU);
        ASSERT_EQ(end + 6 + GetBytes(sector, end + 4, 2), SectorBytes);
        ASSERT_EQ(std::ranges::count(ByteView(sector).subspan(end + 6), 0xFF),
                  static_cast<std::ptrdiff_t>(spare) - 6);
      }
    }
  }
}

}  // namespace
}  // namespace quorvelant
