#include "subpicture/spu_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "picture/picture_loader.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// One letter a pixel: "." background, "p" pattern, "e" emphasis 1, "E" emphasis 2.
constexpr ConversionColors Colors{.Pattern = 0xFFFFFF, .Emphasis1 = 0x808080, .Emphasis2 = 0x00FF00};

Picture Paint(const std::vector<std::string>& rows) {
  Picture picture(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()));
  for (int y = 0; y < picture.Height; ++y) {
    for (int x = 0; x < picture.Width; ++x) {
      const char kind = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
      picture.Set(x, y, kind == 'p' ? 0xFFFFFF : kind == 'e' ? 0x808080 : kind == 'E' ? 0x00FF00 : 0x112233);
    }
  }
  return picture;
}

TEST(PixelToCode, FirstMatchInOrderAndExact) {
  EXPECT_EQ(PixelToCode(0xFFFFFF, Colors), PixelCode::Pattern);
  EXPECT_EQ(PixelToCode(0xFFFFFE, Colors), PixelCode::Background);
  constexpr ConversionColors Same{5, 5, 5};
  EXPECT_EQ(PixelToCode(5, Same), PixelCode::Pattern);
  constexpr ConversionColors Emphases{1, 5, 5};
  EXPECT_EQ(PixelToCode(5, Emphases), PixelCode::Emphasis2);
}

// Columns and rows kept, and the display area: what pictures rendered from a PAL disc by the players' rules
// do not show.
TEST(BitmapWindow, Clips) {
  constexpr auto Painted = BitmapReading::AsPainted;
  constexpr auto Old = BitmapReading::Traditional;
  const struct {
    const char* Name;
    int Width, Height, X1, Y1;
    bool Ntsc;
    BitmapReading Reading;
    BitmapWindow Window;
    DisplayArea Area;
  } cases[] = {
      {"right edge to the pixel", 20, 10, 700, 0, false, Painted, {0, 19, 0, 9}, {700, 719, 0, 8}},
      {"both sides, traditional", 800, 10, -30, 0, false, Old, {30, 689, 0, 9}, {0, 719, 0, 8}},
      {"top and bottom, traditional", 10, 700, 0, -50, false, Old, {0, 9, 173, 526}, {0, 9, 0, 572}},
      {"full NTSC", 720, 480, 0, 0, true, Painted, {0, 719, 0, 479}, {0, 719, 0, 477}},
      {"taller than the picture", 10, 600, 0, 0, false, Old, {0, 9, 23, 599}, {0, 9, 0, 572}},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Name);
    const auto clip = ClipBitmap(test.Width, test.Height, test.X1, test.Y1, test.Ntsc, test.Reading);
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->Window, test.Window);
    EXPECT_EQ(clip->Area, test.Area);
  }
  for (const auto& [x, y, height] :
       {std::array{720, 0, 9}, {-10, 0, 9}, {0, 577, 9}, {0, -9, 9}, {0, 0, 1}}) {
    EXPECT_FALSE(ClipBitmap(10, height, x, y, false, Painted)) << x << "," << y;
  }
}

// As painted by the players' rules. Traditionally lines of odd heights change places; rows of widths that
// four does not divide shear (six columns are 18 bytes padded to 20, so the row above the bottom one is read
// two bytes early); and odd widths are made one column narrower first.
TEST(EncodeSPUBitmap, OddSizesUnderBothRules) {
  const std::vector<std::string> three{"....", "pppp", "eeee"};
  const std::vector<std::string> six{"pppppp", "pppppp"};
  const std::vector<std::string> five{"pppp.", "pppp."};
  const struct {
    std::vector<std::string> Rows;
    const Rules& Of;
    Bytes FieldA, FieldB;
    DisplayArea Area;
  } cases[] = {{three, Rules::Classic, {0, 1}, {0, 0, 0, 2}, {0, 3, 0, 1}},
               {six, Rules::Classic, {0x40, 0x00, 0x10}, {0, 1}, {0, 5, 0, 0}},
               {five, Rules::Players, {0x11, 0, 0}, {0x11, 0, 0}, {0, 4, 0, 0}},
               {five, Rules::Classic, {0, 1}, {0, 1}, {0, 3, 0, 0}}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Rows[0] + (test.Of.BitmapsAsPainted ? " as painted" : " traditionally"));
    const auto encoded = EncodeSPUBitmap(Paint(test.Rows), Colors, 0, 0, false, test.Of);
    ASSERT_TRUE(encoded);
    EXPECT_EQ(encoded->FieldA, test.FieldA);
    EXPECT_EQ(encoded->FieldB, test.FieldB);
    EXPECT_EQ(encoded->Area, test.Area);
  }
}

// One line each, smoothed, and the sharp one that it is for players.
TEST(EncodeSPUBitmap, OddPixelsTakeTheNearestForPlayers) {
  constexpr ConversionColors Own{.Pattern = 0xFFFFFF, .Background = 1, .BackgroundIsPainted = false};
  const struct {
    const char* Name;
    std::vector<Color> Smoothed;
    const ConversionColors& By;
    const char* Sharp;
    std::size_t Odd;
    const char* Classic;
  } cases[] = {
      {"black shows", {0x000000, 0x303030, 0x606060, 0xD0D0D0, 0x10E010}, Colors, "..epE", 4, "....."},
      {"a corner is the background", {0x00C0C0, 0x00C0C0, 0xE0E0E0, 0xFFFFFF}, Colors, "..pp", 1, "...p"},
      {"one colour alone", {0xFFFFFF, 0xE0E0E0, 0xE0E0E0}, Colors, "p..", 0, "p.."},
      {"see-through parts", {0x000000, 0x202020, 0xE0E0E0, 0x000001}, Own, "EEp.", 2, "E..."},
  };
  for (const auto& test : cases) {
    for (const bool toNearest : {true, false}) {
      SCOPED_TRACE(test.Name);
      Rules rules = Rules::Players;
      rules.OddPixelsTakeNearest = toNearest;
      Picture picture(static_cast<int>(test.Smoothed.size()), 2);
      for (int x = 0; x < picture.Width; ++x) {
        picture.Set(x, 0, test.Smoothed[static_cast<std::size_t>(x)]);
        picture.Set(x, 1, test.Smoothed[0]);
      }
      const auto encoded = EncodeSPUBitmap(picture, test.By, 0, 0, false, rules);
      const std::string sharp = toNearest ? test.Sharp : test.Classic;
      const auto expected =
          EncodeSPUBitmap(Paint({sharp, std::string(sharp.size(), '.')}), Colors, 0, 0, false, rules);
      ASSERT_TRUE(encoded && expected);
      EXPECT_EQ(encoded->FieldA, expected->FieldA);
      EXPECT_EQ(encoded->OddPixels, test.Odd);
    }
  }
}

SPURecord RecordWith(std::uint32_t stopDelay, bool forced) {
  SPURecord record;
  record.ColorIndexes = {1, 2, 3, 4};
  record.Contrasts = {15, 14, 13, 0};
  record.StopDelay = stopDelay;
  record.Forced = forced;
  return record;
}

// The worked example of docs/formats/subpictures.md.
TEST(BuildSPU, WorkedExample) {
  const Picture picture = Paint({"..pppp..", "..pEEp..", "..pppp.."});
  const auto bitmap = EncodeSPUBitmap(picture, Colors, 100, 400, false, Rules::Players);
  ASSERT_TRUE(bitmap);
  const Bytes expected{
      0x00, 0x2E, 0x00, 0x10,                    // 46 bytes; the first sequence
      0x81, 0x10, 0x00, 0x00,                    // .. pppp to the end .
      0x81, 0x10, 0x00, 0x00,                    // the third line
      0x85, 0xB5, 0x00, 0x00,                    // second field: .. p EE p to the end .
      0x00, 0x00, 0x00, 0x28, 0x01,              // at once; the next sequence; start
      0x03, 0x12, 0x34, 0x04, 0xFE, 0xD0,        // colours, contrasts
      0x05, 0x06, 0x40, 0x6B, 0x19, 0x01, 0x91,  // columns 100 to 107, lines 400 to 401
      0x06, 0x00, 0x04, 0x00, 0x0C, 0xFF,        // the fields, end
      0x00, 0xAF, 0x00, 0x28, 0x02, 0xFF,        // 175 steps of 1024/90000 s: two seconds; itself, stop, end
  };
  EXPECT_EQ(BuildSPU(RecordWith(175, false), *bitmap), expected);
}

TEST(BuildSPU, FormsWithoutStopForcedAndOdd) {
  const auto bitmap = EncodeSPUBitmap(Paint({"pppp", "...."}), Colors, 0, 0, false, Rules::Players);
  const Bytes plain = BuildSPU(RecordWith(0, false), *bitmap);
  EXPECT_EQ(GetBytes(plain, 8 + 2, 2), 8U);  // the only sequence points at itself
  EXPECT_EQ(BuildSPU(RecordWith(65535, false), *bitmap), plain);
  Bytes forced = BuildSPU(RecordWith(0, true), *bitmap);
  EXPECT_EQ(forced[8 + 4], 0);
  forced[8 + 4] = 1;
  EXPECT_EQ(forced, plain);
  // Three bytes of one line make the length odd: one FF more.
  const auto odd = EncodeSPUBitmap(Paint({"...E", "...."}), Colors, 0, 0, false, Rules::Players);
  const Bytes filled = BuildSPU(RecordWith(0, false), *odd);
  EXPECT_EQ(filled.size(), 4U + 5 + 24 + 1);
  EXPECT_EQ(GetBytes(filled, 0, 2), filled.size());
  EXPECT_EQ(filled.back(), 0xFF);
}

// A file of a quarter megabyte that would take 600 of memory: its head tells, and no pixel is decoded.
TEST(LoadSPUBitmap, WhatNoScreenHoldsIsRefusedByItsHead) {
  const TempFolder folder;
  SPURecord record;
  for (const auto& [width, refused] : {std::pair{"\x40", true}, {"\x08", false}}) {
    record.File = folder.Write("a.png", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0", 18) + width +
                                            std::string("\0\0\0\x08\0\x08\x02\0\0\0", 10));
    BmpLoader none;  // decodes no such file, and says so
    EXPECT_THAT([&] { LoadSPUBitmap(none, record, false, Rules::Players); },
                testing::ThrowsMessage<PictureError>(
                    testing::HasSubstr(refused ? "16384x2048 is too large" : "only Windows bitmaps")));
  }
}

}  // namespace
}  // namespace quorvelant
