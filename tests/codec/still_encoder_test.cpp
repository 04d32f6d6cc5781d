#include "codec/still_encoder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <tuple>

#include "codec/colors.h"
#include "codec/intra_decoder.h"
#include "codec/intra_encoder.h"
#include "codec/picture_headers.h"
#include "ffmpeg_decode.h"
#include "test_pictures.h"

namespace quorvelant {
namespace {

Bytes Joined(Bytes bytes, ByteView more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
  return bytes;
}

TEST(StillEncoder, HeaderByteByByte) {
  for (const auto& [width, height, wide, sizeAndRate] :
       {std::tuple{720, 576, false, Bytes{0x2D, 0x02, 0x40, 0x23}},
        {360, 240, true, Bytes{0x2D, 0x01, 0xE0, 0x34}}}) {
    const Bytes stream = EncodeBitmap(Picture(width, height), {.Wide = wide}, Rules::Classic);
    ASSERT_GT(stream.size(), StillHeaderBytes + 5);
    const Bytes afterMatrix{0x00, 0x00, 0x01, 0xB5, 0x14, 0x8A, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00,
                            0x01, 0xB8, 0x00, 0x08, 0x00, 0x40, 0x00, 0x00, 0x01, 0x00, 0x00, 0x0F,
                            0xFF, 0xF8, 0x00, 0x00, 0x01, 0xB5, 0x8F, 0xFF, 0xF7, 0x59, 0x80};
    const Bytes start = Joined(Joined({0, 0, 1, 0xB3}, sizeAndRate), Bytes{0x13, 0x88, 0x23, 0x81});
    const Bytes expected = Joined(Joined(start, Bytes(64, 16)), afterMatrix);
    EXPECT_EQ(Bytes(stream.begin(), stream.begin() + StillHeaderBytes), expected);
  }
  EXPECT_FALSE(IsStillSize(720, 288));
  EXPECT_TRUE(EncodeBitmap(Picture(720, 288), {}, Rules::Classic).empty());
}

TEST(StillEncoder, EachPixelOfHalfSizeBecomesASquareOfFour) {
  const Picture half = PhotographLike(360, 240, 2);
  Picture full(720, 480);
  for (int y = 0; y < full.Height; ++y) {
    for (int x = 0; x < full.Width; ++x) {
      full.Set(x, y, half.At(x / 2, y / 2));
    }
  }
  EXPECT_EQ(EncodeBitmap(half, {}, Rules::Players), EncodeBitmap(full, {}, Rules::Players));
}

// Each still within the limit, read by ffmpeg without a word and as our own decoder reads it.
void ExpectSound(const Bytes& still, unsigned height) {
  const Bytes stream = Joined(still, Bytes{0x00, 0x00, 0x01, 0xB7});  // sequence end
  EXPECT_LE(stream.size(), LargestStillBytes);
  const auto ours = DecodeIntraPicture(stream, true);
  ASSERT_TRUE(ours);
  EXPECT_EQ(ours->Y().Height, height);
  const FfmpegResult theirs = DecodeByFfmpeg(stream, *ours);
  EXPECT_EQ(theirs.Complaints, "");
  ASSERT_EQ(theirs.Pictures.size(), 1U);
  EXPECT_LE(LargestDifference(*ours, theirs.Pictures[0]), 1);
}

// The photograph, and pictures at the ends of what samples can do: the largest coefficients, every sample
// clipped. Noise takes all that a still may have.
TEST(StillEncoder, AnyPictureIsSound) {
  for (const int height : {576, 480}) {
    Picture checkers(720, height);
    Picture lines(720, height);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < 720; ++x) {
        checkers.Set(x, y, (x + y) % 2 == 0 ? 0xFFFFFF : 0);
        lines.Set(x, y, x / 3 % 2 == 0 ? 0xFF : y % 5 == 0 ? 0xFF0000 : 0x00FF00);
      }
    }
    for (const Picture& picture : {PhotographLike(720, height, 1), checkers, lines, Picture(720, height)}) {
      ExpectSound(EncodeBitmap(picture, {}, Rules::Players), static_cast<unsigned>(height));
    }
    const Bytes noise = EncodeBitmap(Noise(720, height, 5), {}, Rules::Players);
    ExpectSound(noise, static_cast<unsigned>(height));
    EXPECT_GE(noise.size(), LargestStillBytes * 99 / 100);
  }
}

// A patch of noise in a plain picture leaves room for the finest scale; the noisy macroblocks must take a
// coarser one, since main level bounds each at 4608 bits.
TEST(StillEncoder, NoMacroblockExceedsMainLevel) {
  const Picture noise = Noise(720, 576, 3);
  Picture picture(720, 576);
  for (int y = 128; y < 144; ++y) {
    for (int x = 0; x < 720; ++x) {
      picture.Set(x, y, noise.At(x, y));
    }
  }
  const Bytes still = EncodeBitmap(picture, {}, Rules::Players);
  ExpectSound(still, 576);
  std::size_t largestSlice = 0;
  UnitReader units(still);
  for (StreamUnit unit{}; units.Next(unit);) {
    largestSlice = std::max(largestSlice, unit.Payload.size());
  }
  EXPECT_LE(largestSlice, 45U * 4608 / 8);
  EXPECT_GE(largestSlice, 45U * 4608 / 16);
}

TEST(Colours, CutOrRounded) {
  struct Case {
    std::uint32_t Colour;  // 0xBBGGRR
    std::array<int, 3> Cut, Rounded;
  };
  // In thousandths: red 81.535, 90.26, 239.945; green 144.52, 53.795, 34.16; grey 117.259, 128, 128.
  const std::vector<Case> cases{
      {0x000000, {16, 128, 128}, {16, 128, 128}}, {0xFFFFFF, {235, 128, 128}, {235, 128, 128}},
      {0x0000FF, {81, 90, 239}, {82, 90, 240}},   {0x00FF00, {144, 53, 34}, {145, 54, 34}},
      {0xFF0000, {40, 239, 109}, {41, 240, 110}}, {0x010100, {16, 128, 127}, {17, 128, 128}}};
  for (const Case& one : cases) {
    Picture picture(2, 2);
    for (int i = 0; i < 4; ++i) {
      picture.Set(i % 2, i / 2, one.Colour);
    }
    const Planes cut = PlanesFromPicture(picture, Rules::Classic);
    const Planes rounded = PlanesFromPicture(picture, Rules::Players);
    for (std::size_t plane = 0; plane < 3; ++plane) {
      EXPECT_EQ(cut.Of[plane].Samples[0], one.Cut[plane]) << one.Colour;
      EXPECT_EQ(rounded.Of[plane].Samples[0], one.Rounded[plane]) << one.Colour;
    }
  }
}

TEST(Colours, BackToPixels) {
  for (const auto& [y, cb, cr, colour] : std::vector<std::array<unsigned, 4>>{{16, 128, 128, 0x000000},
                                                                              {235, 128, 128, 0xFFFFFF},
                                                                              {0, 128, 128, 0x000000},
                                                                              {81, 90, 240, 0x0000FE},
                                                                              {126, 128, 129, 0x807F82}}) {
    Planes planes;
    planes.Y() = Plane(1, 1, static_cast<std::uint8_t>(y));
    planes.Of[1] = Plane(1, 1, static_cast<std::uint8_t>(cb));
    planes.Of[2] = Plane(1, 1, static_cast<std::uint8_t>(cr));
    EXPECT_EQ(PictureFromPlanes(planes).At(0, 0), colour) << y;
  }
}

// At qualities 1, 2 and 4 of libavcodec's encoder, with the options that gain most: -trellis 1 -intra_vlc 1
// -non_linear_quant 1 -dc 1.
TEST(StillEncoder, AtEqualSizeNoWorseThanLibavcodec) {
  struct Recorded {
    std::size_t Bytes;
    double Psnr;  // dB
  };
  const std::array<Recorded, 3> photographs[] = {
      {{{133740, 49.215}, {46704, 44.630}, {28887, 42.950}}},
      {{{150988, 49.446}, {63261, 44.797}, {39044, 42.585}}},
  };
  const Bytes header = EncodeBitmap(Picture(720, 576), {}, Rules::Players);
  for (unsigned seed = 0; seed < std::size(photographs); ++seed) {
    const Planes planes = PlanesFromPicture(PhotographLike(720, 576, seed), Rules::Players);
    for (const auto& [bytes, psnr] : photographs[seed]) {
      const Bytes still = Joined(Bytes(header.begin(), header.begin() + StillHeaderBytes),
                                 EncodeIntraSlices(planes, bytes - StillHeaderBytes));
      EXPECT_LE(still.size(), bytes);
      EXPECT_GE(Psnr(planes, *DecodeIntraPicture(still, true)), psnr - 0.1) << seed << ", " << bytes;
    }
  }
}

}  // namespace
}  // namespace quorvelant
