#include "subpicture/unit_reader.h"

#include <gtest/gtest.h>

#include <random>

#include "subpicture/spu_encoder.h"

namespace quorvelant {
namespace {

constexpr ConversionColors Conversion{
    .Pattern = 0xFFFFFF, .Emphasis1 = 0x808080, .Emphasis2 = 0x0000FF, .Background = 0};

// Runs of one to a whole row of each code.
Picture Runs(int width, int height) {
  std::mt19937 random(7);  // NOLINT(cert-msc51-cpp): each run the same
  constexpr std::array<Color, 4> Colors{0, 0xFFFFFF, 0x808080, 0x0000FF};
  Picture picture(width, height);
  for (int row = 0; row < height; ++row) {
    const int most = row % 4 == 0 ? width : row % 3 == 0 ? 2 : 90;
    for (int column = 0; column < width;) {
      const int end = std::min(width, column + 1 + static_cast<int>(random() % static_cast<unsigned>(most)));
      const Color color = Colors.at(random() % 4);
      for (; column < end; ++column) {
        picture.Set(column, row, color);
      }
    }
  }
  return picture;
}

TEST(UnitReader, GivesTheCodesOfThePicture) {
  for (const auto& [x, y, width, height] :
       {std::array{0, 0, 720, 576}, {40, 400, 333, 61}, {-20, -9, 100, 50}}) {
    const Picture picture = Runs(width, height);
    const auto bitmap = EncodeSPUBitmap(picture, Conversion, x, y, false, Rules::Players);
    ASSERT_TRUE(bitmap);
    SPURecord record;
    record.Conversion = Conversion;
    record.ColorIndexes = {1, 2, 3, 4};
    record.Contrasts = {15, 8, 7, 0};
    record.StopDelay = 77;
    record.Forced = true;
    const Bytes unit = BuildSPU(record, *bitmap);
    const auto shown = ReadUnit(unit);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->Area, bitmap->Area);
    EXPECT_EQ(shown->ColorIndexes, record.ColorIndexes);
    EXPECT_EQ(shown->Contrasts, record.Contrasts);
    EXPECT_TRUE(shown->Forced);
    EXPECT_EQ(shown->StopDelay, 77U);
    int wrong = 0;
    for (int line = shown->Area.Y1; line <= shown->Area.Y2; ++line) {
      for (int column = shown->Area.X1; column <= shown->Area.X2; ++column) {
        wrong += shown->At(column, line) != PixelToCode(picture.At(column - x, line - y), Conversion) ? 1 : 0;
      }
    }
    EXPECT_EQ(wrong, 0) << width << " x " << height;
    EXPECT_EQ(shown->At(719, 575), shown->Area.X2 == 719 && shown->Area.Y2 == 575
                                       ? PixelToCode(picture.At(719 - x, 575 - y), Conversion)
                                       : PixelCode::Background);
    // A unit that is cut, or whose bytes are others, is none or has other pixels, and nothing worse.
    for (std::size_t cut = 0; cut < std::min<std::size_t>(unit.size(), 400); ++cut) {
      EXPECT_FALSE(ReadUnit(ByteView(unit).first(cut)));
      Bytes other = unit;
      other[unit.size() - 1 - cut] ^= 0x5A;
      static_cast<void>(ReadUnit(other));
    }
  }
}

}  // namespace
}  // namespace quorvelant
