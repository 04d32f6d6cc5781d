#include "picture/bmp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "picture/picture_loader.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

// A bitmap with the 40 byte header; the colours are masks and palette as they stand.
Bytes Bitmap(std::uint32_t bits, const Bytes& pixels, std::uint32_t compression = 0, const Bytes& colors = {},
             std::uint32_t width = 2, std::uint32_t height = 2) {
  const auto offset = static_cast<std::uint32_t>(54 + colors.size());
  const std::uint32_t used = bits <= 8 ? static_cast<std::uint32_t>(colors.size() / 4) : 0;
  Bytes file{'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0};
  for (const std::uint32_t value :
       {offset, 40U, width, height, 1 | bits << 16, compression, 0U, 0U, 0U, used, 0U}) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
      file.push_back(static_cast<std::uint8_t>(value >> shift));
    }
  }
  file.insert(file.end(), colors.begin(), colors.end());
  file.insert(file.end(), pixels.begin(), pixels.end());
  return file;
}

constexpr std::uint32_t TopDown = static_cast<std::uint32_t>(-2);

// Red, green, blue and white; the file's order is blue, green, red, 0.
const Bytes Four{0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0};
const Bytes Masks16{0, 0xF8, 0, 0, 0xE0, 0x07, 0, 0, 0x1F, 0, 0, 0};
const Bytes Masks32{0xFF, 0, 0, 0, 0, 0xFF, 0, 0, 0, 0, 0xFF, 0};

std::string LettersOf(const Picture& picture) {
  const std::map<std::uint32_t, char> letters{
      {0x0000FF, 'R'}, {0x00FF00, 'G'}, {0xFF0000, 'B'}, {0xFFFFFF, 'W'}};
  std::string rows;
  for (int y = 0; y < picture.Height; ++y) {
    for (int x = 0; x < picture.Width; ++x) {
      const auto letter = letters.find(picture.At(x, y));
      rows += letter == letters.end() ? '?' : letter->second;
    }
    rows += '/';
  }
  return rows;
}

TEST(Bmp, EveryDepthAndPackingIsRead) {
  const struct {
    const char* Name;
    Bytes File;
    const char* Rows = "RG/BW/";
  } cases[] = {
      {"4 bits", Bitmap(4, {0x23, 0, 0, 0, 0x01, 0, 0, 0}, 0, Four)},
      {"8 bits", Bitmap(8, {2, 3, 0, 0, 0, 1, 0, 0}, 0, Four)},
      {"16 bits", Bitmap(16, {0x1F, 0, 0xFF, 0x7F, 0, 0x7C, 0xE0, 0x03})},
      {"16 bits 5-6-5", Bitmap(16, {0x1F, 0, 0xFF, 0xFF, 0, 0xF8, 0xE0, 0x07}, 3, Masks16)},
      {"24 bits", Bitmap(24, {255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0})},
      {"24 bits, top row first",
       Bitmap(24, {0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0}, 0, {}, 2, TopDown)},
      {"32 bits", Bitmap(32, {255, 0, 0, 9, 255, 255, 255, 0, 0, 0, 255, 0, 0, 255, 0, 7})},
      {"32 bits, red first",
       Bitmap(32, {0, 0, 255, 9, 255, 255, 255, 0, 255, 0, 0, 0, 0, 255, 0, 7}, 3, Masks32)},
      {"RLE8 with a run, a literal and ends", Bitmap(8, {1, 2, 1, 3, 0, 0, 1, 0, 1, 1, 0, 1}, 1, Four)},
      {"RLE4", Bitmap(4, {2, 0x23, 0, 0, 2, 0x01, 0, 1}, 2, Four)},
      {"literals of RLE8 are filled to whole words",
       Bitmap(8, {0, 3, 0, 1, 2, 0, 0, 5, 3, 2, 1, 0, 3, 0, 0, 1}, 1, Four, 8, 1), "RGBWBGRW/"},
      {"those of RLE4 too", Bitmap(4, {0, 5, 0x01, 0x23, 0x20, 0, 3, 0x12, 0, 1}, 2, Four, 8, 1),
       "RGBWBGBG/"},
      {"moves of RLE leave the first colour", Bitmap(8, {0, 2, 2, 1, 1, 1, 0, 1}, 1, Four, 4), "RRGR/RRRR/"},
      {"1 bit and the 12 byte header",
       {'B', 'M', 0, 0, 0, 0, 0, 0, 0,   0, 32, 0,   0,   0,   12,   0,    0, 0,
        10,  0,   1, 0, 1, 0, 1, 0, 255, 0, 0,  255, 255, 255, 0xA0, 0x40, 0, 0},
       "WBWBBBBBBW/"},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(LettersOf(ReadBmp(test.File, "a.bmp")), test.Rows) << test.Name;
  }
}

TEST(Bmp, RefusesWhatItCannotReadAndNamesTheFile) {
  const Bytes some(64);
  Bytes lyingOffset = Bitmap(24, Bytes(16));
  lyingOffset[10] = 0xFF;
  const struct {
    Bytes File;
    const char* Text;
  } cases[] = {
      {{}, "the file is empty"},
      {{'B', 'M', 1, 2}, "the bitmap is shorter than its header says"},
      {{'P', 'N', 'G', 0}, "this is no bitmap"},
      {Bitmap(24, some, 0, {}, 30000, 30000), "a picture of 30000x30000 is too large"},
      {Bitmap(24, some, 0, {}, 16000, 16000), "a picture of 16000x16000 is too large"},
      {Bitmap(24, some, 0, {}, 0), "a picture of 0x2 has no pixels"},
      {Bitmap(24, some, 0, {}, 2, 0x80000000), "is too large"},
      {Bitmap(24, Bytes(1000), 0, {}, 720, 576), "shorter than its header says"},
      {Bitmap(8, {1, 0}, 1, Four), "shorter"},
      {Bitmap(7, some), "a bitmap of 7 bits a pixel with compression 0 cannot be read"},
      {Bitmap(24, some, 4), "compression 4"},
      {Bitmap(16, some, 3, Bytes(12, 0x55)), "has gaps"},
      {lyingOffset, "shorter than its header says"},
  };
  for (const auto& test : cases) {
    EXPECT_THAT([&] { ReadBmp(test.File, "folder/a.bmp"); },
                ThrowsMessage<PictureError>(AllOf(StartsWith("folder/a.bmp: "), HasSubstr(test.Text))));
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
