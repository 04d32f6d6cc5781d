#include "picture/bmp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "picture/picture_loader.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

constexpr std::uint32_t Red = 0x0000FF;
constexpr std::uint32_t Green = 0x00FF00;
constexpr std::uint32_t Blue = 0xFF0000;
constexpr std::uint32_t White = 0xFFFFFF;

void Little(Bytes& bytes, unsigned width, std::uint32_t value) {
  for (unsigned i = 0; i < width; ++i) {
    bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  }
}

struct Shape {
  std::uint32_t Width = 2;
  std::uint32_t Height = 2;
  std::uint32_t Bits = 24;
  std::uint32_t Compression = 0;
  Bytes Colors{};  // masks and palette as they stand
  Bytes Pixels{};
  std::uint32_t ColorsUsed = 0;
};

Bytes Bitmap(const Shape& shape) {
  Bytes file{'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0};
  Little(file, 4, static_cast<std::uint32_t>(54 + shape.Colors.size()));
  Little(file, 4, 40);
  Little(file, 4, shape.Width);
  Little(file, 4, shape.Height);
  Little(file, 2, 1);
  Little(file, 2, shape.Bits);
  Little(file, 4, shape.Compression);
  Little(file, 4, 0);
  Little(file, 4, 0);
  Little(file, 4, 0);
  Little(file, 4, shape.ColorsUsed);
  Little(file, 4, 0);
  file.insert(file.end(), shape.Colors.begin(), shape.Colors.end());
  file.insert(file.end(), shape.Pixels.begin(), shape.Pixels.end());
  return file;
}

// Blue, green, red, 0: the file's order.
const Bytes FourColors{0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0};

// Every packing of the same picture: red and green above blue and white.
TEST(Bmp, EveryDepthAndPackingGivesTheSamePixels) {
  const Bytes masks16{0, 0xF8, 0, 0, 0xE0, 0x07, 0, 0, 0x1F, 0, 0, 0};
  const Bytes masks32{0xFF, 0, 0, 0, 0, 0xFF, 0, 0, 0, 0, 0xFF, 0};
  const std::uint32_t topDown = static_cast<std::uint32_t>(-2);
  const struct {
    const char* Name;
    Shape Of;
  } cases[] = {
      {"4 bits",
       {.Bits = 4, .Colors = FourColors, .Pixels = {0x23, 0, 0, 0, 0x01, 0, 0, 0}, .ColorsUsed = 4}},
      {"8 bits", {.Bits = 8, .Colors = FourColors, .Pixels = {2, 3, 0, 0, 0, 1, 0, 0}, .ColorsUsed = 4}},
      {"16 bits", {.Bits = 16, .Pixels = {0x1F, 0, 0xFF, 0x7F, 0, 0x7C, 0xE0, 0x03}}},
      {"16 bits 5-6-5",
       {.Bits = 16,
        .Compression = 3,
        .Colors = masks16,
        .Pixels = {0x1F, 0, 0xFF, 0xFF, 0, 0xF8, 0xE0, 0x07}}},
      {"24 bits", {.Pixels = {255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0}}},
      {"24 bits, top row first",
       {.Height = topDown, .Pixels = {0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0}}},
      {"32 bits", {.Bits = 32, .Pixels = {255, 0, 0, 9, 255, 255, 255, 0, 0, 0, 255, 0, 0, 255, 0, 7}}},
      {"32 bits, red first",
       {.Bits = 32,
        .Compression = 3,
        .Colors = masks32,
        .Pixels = {0, 0, 255, 9, 255, 255, 255, 0, 255, 0, 0, 0, 0, 255, 0, 7}}},
      {"RLE8 with a run, a literal and ends",
       {.Bits = 8,
        .Compression = 1,
        .Colors = FourColors,
        .Pixels = {1, 2, 1, 3, 0, 0, 1, 0, 1, 1, 0, 1},
        .ColorsUsed = 4}},
      {"RLE4",
       {.Bits = 4,
        .Compression = 2,
        .Colors = FourColors,
        .Pixels = {2, 0x23, 0, 0, 2, 0x01, 0, 1},
        .ColorsUsed = 4}},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Name);
    const Picture picture = ReadBmp(Bitmap(test.Of), "a.bmp");
    ASSERT_EQ(picture.Width, 2);
    ASSERT_EQ(picture.Height, 2);
    EXPECT_EQ(picture.At(0, 0), Red);
    EXPECT_EQ(picture.At(1, 0), Green);
    EXPECT_EQ(picture.At(0, 1), Blue);
    EXPECT_EQ(picture.At(1, 1), White);
  }
}

TEST(Bmp, LiteralRunsOfRleAreFilledToWholeWords) {
  const Bytes pixels{0, 3, 0, 1, 2, 0, 0, 5, 3, 2, 1, 0, 3, 0, 0, 1};
  const Picture eight = ReadBmp(Bitmap({.Width = 8,
                                        .Height = 1,
                                        .Bits = 8,
                                        .Compression = 1,
                                        .Colors = FourColors,
                                        .Pixels = pixels,
                                        .ColorsUsed = 4}),
                                "a.bmp");
  const std::uint32_t colors[] = {Red, Green, Blue, White};
  const int expected[] = {0, 1, 2, 3, 2, 1, 0, 3};
  for (int x = 0; x < 8; ++x) {
    EXPECT_EQ(eight.At(x, 0), colors[expected[x]]) << x;
  }
  const Bytes nibbles{0, 5, 0x01, 0x23, 0x20, 0, 3, 0x12, 0, 1};
  const Picture four = ReadBmp(Bitmap({.Width = 8,
                                       .Height = 1,
                                       .Bits = 4,
                                       .Compression = 2,
                                       .Colors = FourColors,
                                       .Pixels = nibbles,
                                       .ColorsUsed = 4}),
                               "a.bmp");
  const int expectedFour[] = {0, 1, 2, 3, 2, 1, 2, 1};
  for (int x = 0; x < 8; ++x) {
    EXPECT_EQ(four.At(x, 0), colors[expectedFour[x]]) << x;
  }
}

TEST(Bmp, MovesOfRleLeaveTheFirstColour) {
  const Bytes pixels{0, 2, 2, 1, 1, 1, 0, 1};
  const Picture picture = ReadBmp(
      Bitmap(
          {.Width = 4, .Bits = 8, .Compression = 1, .Colors = FourColors, .Pixels = pixels, .ColorsUsed = 4}),
      "a.bmp");
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(picture.At(i % 4, i / 4), i == 2 ? Green : Red) << i;
  }
}

TEST(Bmp, OneBitAndTheTwelveByteHeader) {
  Bytes file{'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 32, 0, 0, 0, 12, 0, 0, 0, 10, 0, 1, 0, 1, 0, 1, 0};
  const Bytes rest{255, 0, 0, 255, 255, 255, 0xA0, 0x40, 0, 0};
  file.insert(file.end(), rest.begin(), rest.end());
  const Picture picture = ReadBmp(file, "a.bmp");
  for (int x = 0; x < 10; ++x) {
    EXPECT_EQ(picture.At(x, 0), x == 0 || x == 2 || x == 9 ? White : Blue) << x;
  }
}

TEST(Bmp, RefusesWhatItCannotReadAndNamesTheFile) {
  Bytes lyingOffset = Bitmap({.Pixels = Bytes(16)});
  lyingOffset[10] = 0xFF;
  const struct {
    Bytes File;
    const char* Text;
  } cases[] = {
      {{}, "the file is empty"},
      {{'B', 'M', 1, 2}, "the bitmap is shorter than its header says"},
      {{'P', 'N', 'G', 0}, "this is no bitmap"},
      {Bitmap({.Width = 30000, .Height = 30000, .Pixels = Bytes(64)}),
       "a picture of 30000x30000 is too large"},
      {Bitmap({.Width = 16000, .Height = 16000, .Pixels = Bytes(64)}),
       "a picture of 16000x16000 is too large"},
      {Bitmap({.Width = 0, .Pixels = Bytes(64)}), "a picture of 0x2 has no pixels"},
      {Bitmap({.Height = 0x80000000, .Pixels = Bytes(64)}), "is too large"},
      {Bitmap({.Width = 720, .Height = 576, .Pixels = Bytes(1000)}), "shorter than its header says"},
      {Bitmap({.Bits = 8, .Compression = 1, .Colors = FourColors, .Pixels = {1, 0}, .ColorsUsed = 4}),
       "shorter"},
      {Bitmap({.Bits = 7, .Pixels = Bytes(64)}),
       "a bitmap of 7 bits a pixel with compression 0 cannot be read"},
      {Bitmap({.Bits = 24, .Compression = 4, .Pixels = Bytes(64)}), "compression 4"},
      {Bitmap({.Bits = 16, .Compression = 3, .Colors = Bytes(12, 0x55), .Pixels = Bytes(64)}), "has gaps"},
      {lyingOffset, "shorter than its header says"},
  };
  for (const auto& test : cases) {
    try {
      ReadBmp(test.File, "folder/a.bmp");
      ADD_FAILURE() << "read: " << test.Text;
    } catch (const PictureError& error) {
      EXPECT_THAT(error.what(), testing::StartsWith("folder/a.bmp: "));
      EXPECT_THAT(error.what(), HasSubstr(test.Text));
    }
  }
}

TEST(Bmp, WritesWhatItReads) {
  Picture picture(5, 3);  // rows of 15 bytes: one of padding
  for (int i = 0; i < 15; ++i) {
    picture.Set(i % 5, i / 5, static_cast<std::uint32_t>(i * 0x010305));
  }
  const TempFolder folder;
  const Bytes file = WriteBmp(picture);
  EXPECT_EQ(file.size(), 54U + 3 * 16U);
  const std::string path = folder.Write("a.bmp", {reinterpret_cast<const char*>(file.data()), file.size()});
  EXPECT_EQ(BmpLoader().Load(path), picture);
  EXPECT_THROW(BmpLoader().Load(folder / "none.bmp"), PictureError);
  EXPECT_THROW(BmpLoader().Load(folder.Path().string()), PictureError);
}

}  // namespace
}  // namespace quorvelant
