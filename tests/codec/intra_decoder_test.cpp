#include "codec/intra_decoder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>

#include "codec/picture_headers.h"
#include "ffmpeg_decode.h"
#include "intra_stream_maker.h"
#include "support/media.h"
#include "support/temp_folder.h"
#include "test_pictures.h"

namespace quorvelant {
namespace {

class EveryMode : public testing::TestWithParam<IntraStreamShape> {};

TEST_P(EveryMode, EqualsFfmpegWithinOneStep) {
  const IntraStreamShape& shape = GetParam();
  const unsigned across = shape.ChromaFormat == 3 ? 1 : 2;
  const unsigned down = shape.ChromaFormat == 1 ? 2 : 1;
  for (unsigned seed = 1; seed <= 3; ++seed) {
    const Bytes stream = MakeIntraStream(shape, seed);
    const FfmpegResult expected = DecodeByFfmpeg(stream, shape.Width, shape.Height, across, down);
    ASSERT_EQ(expected.Complaints, "");
    ASSERT_EQ(expected.Pictures.size(), 1U);
    const auto planes = DecodeIntraPicture(stream, shape.Mpeg2);
    ASSERT_TRUE(planes);
    EXPECT_LE(LargestDifference(*planes, expected.Pictures[0]), 1);
  }
}

INSTANTIATE_TEST_SUITE_P(
    IntraDecoder, EveryMode,
    testing::Values(
        IntraStreamShape{.Name = "Plain"}, IntraStreamShape{.Name = "Mpeg1", .Mpeg2 = false},
        IntraStreamShape{.Name = "OddSize", .Width = 85, .Height = 50},
        IntraStreamShape{
            .Name = "Dc9B15NonLinear", .DcPrecision = 1, .NonLinearScale = true, .TableB15 = true},
        IntraStreamShape{.Name = "Dc10Alternate", .DcPrecision = 2, .AlternateScan = true},
        IntraStreamShape{.Name = "FieldDctOwnMatrix", .FieldDct = true, .OwnMatrix = true},
        IntraStreamShape{
            .Name = "FieldDctAlternateB15", .FieldDct = true, .TableB15 = true, .AlternateScan = true},
        IntraStreamShape{.Name = "Concealment", .FieldDct = true, .ConcealmentVectors = true},
        IntraStreamShape{.Name = "FieldPictures", .FieldPictures = true, .OwnMatrix = true},
        IntraStreamShape{.Name = "FieldConcealment",
                         .FieldPictures = true,
                         .ConcealmentVectors = true,
                         .AlternateScan = true},
        IntraStreamShape{.Name = "Chroma422", .ChromaFormat = 2, .FieldDct = true},
        IntraStreamShape{.Name = "Chroma444", .ChromaFormat = 3, .FieldDct = true}),
    [](const auto& shape) { return shape.param.Name; });

// The intra pictures of real encoders, each read at its sequence header as an index gives it. ffmpeg decodes
// them in their stream, and nothing else.
TEST(IntraDecoder, EqualsFfmpegOnFilm) {
  struct Film {
    std::optional<std::string> File;
    bool Mpeg2;
  };
  for (const auto& [file, isMpeg2] :
       {Film{SampleVideo({.Frames = 26, .Interlaced = true}), true},
        Film{SampleVideo({.Standard = "NTSC", .Frames = 26}), true},
        Film{SampleVideo({.Width = 352, .Height = 288, .Frames = 26, .Mpeg1 = true}), false},
        Film{SharedFile("samples/broadcast-pal-169-interlaced.m2v"), true}}) {
    if (!file) {
      GTEST_SKIP() << "the folder of real streams is missing";
    }
    const std::string content = TempFolder::Read(*file);
    const Bytes stream(content.begin(), content.end());
    const Bytes header{0, 0, 1, start_code::Sequence};
    std::vector<Planes> ours;
    for (auto at = stream.begin(); ours.size() < 4; at += 4) {
      at = std::search(at, stream.end(), header.begin(), header.end());
      if (at == stream.end()) {
        break;
      }
      auto planes = DecodeIntraPicture(Bytes(at, stream.end()), isMpeg2);
      ASSERT_TRUE(planes);
      ours.push_back(std::move(*planes));
    }
    ASSERT_GE(ours.size(), 2U) << *file;
    const auto theirs =
        DecodeByFfmpeg(stream, ours[0].Y().Width, ours[0].Y().Height, 2, 2, "-skip_frame nokey").Pictures;
    ASSERT_GE(theirs.size(), ours.size()) << *file;
    for (std::size_t i = 0; i < ours.size(); ++i) {
      EXPECT_LE(LargestDifference(ours[i], theirs[i]), 1) << *file << " picture " << i;
    }
  }
}

TEST(IntraDecoder, AFieldAloneShowsOnAllLines) {
  const IntraStreamShape shape{.FieldPictures = true};
  const Bytes stream = MakeIntraStream(shape, 1);
  const auto both = DecodeIntraPicture(stream, true);
  const Bytes pictureCode{0, 0, 1, 0};
  const auto second = std::find_end(stream.begin(), stream.end(), pictureCode.begin(), pictureCode.end());
  const auto one = DecodeIntraPicture(Bytes(stream.begin(), second), true);
  ASSERT_TRUE(both && one);
  for (unsigned y = 0; y < shape.Height; ++y) {
    EXPECT_TRUE(std::equal(one->Y().Row(y), one->Y().Row(y) + shape.Width, both->Y().Row(y / 2 * 2))) << y;
  }
}

TEST(IntraDecoder, DamageCostsTheRestOfItsSlice) {
  const Bytes stream = MakeIntraStream({}, 7);
  const auto whole = DecodeIntraPicture(stream, true);
  const Bytes thirdRow{0, 0, 1, 3};
  const Bytes fourthRow{0, 0, 1, 4};
  Bytes broken = stream;
  const auto start = std::search(broken.begin(), broken.end(), thirdRow.begin(), thirdRow.end());
  const auto end = std::search(start, broken.end(), fourthRow.begin(), fourthRow.end());
  std::fill(start + 5, end, std::uint8_t{0});
  const auto damaged = DecodeIntraPicture(broken, true);
  ASSERT_TRUE(whole && damaged);
  const auto sameLine = [&](unsigned y, unsigned as) {
    return std::equal(damaged->Y().Row(y), damaged->Y().Row(y) + 96, whole->Y().Row(as));
  };
  for (unsigned y = 0; y < 64; ++y) {
    EXPECT_TRUE(y / 16 == 2 ? sameLine(y, y - 16) : sameLine(y, y)) << y;
  }
}

TEST(IntraDecoder, TakesWhatIsThere) {
  EXPECT_FALSE(DecodeIntraPicture({}, true));
  EXPECT_TRUE(DecodeIFrame(Bytes(100, 0), true).empty());
  const Bytes stream = MakeIntraStream({}, 3);
  const auto headerOnly = DecodeIntraPicture(ByteView(stream).first(12), true);
  ASSERT_TRUE(headerOnly);
  EXPECT_EQ(headerOnly->Y().Samples, Bytes(96UL * 64, BlackLuma));
  const Bytes bitmap = DecodeIFrame(stream, true);
  EXPECT_EQ(bitmap.size(), 54U + 96U * 64U * 3U);
  EXPECT_EQ(bitmap[0], 'B');
  Bytes huge = stream;
  huge[4] = huge[5] = huge[6] = 0xFF;  // 4095 by 4095: a picture all the same
  EXPECT_TRUE(DecodeIntraPicture(huge, true));
  huge[4] = huge[5] = 0;  // no width
  EXPECT_FALSE(DecodeIntraPicture(huge, true));
  for (std::size_t length = 0; length < stream.size(); length += 13) {
    DecodeIntraPicture(ByteView(stream).first(length), true);
  }
}

// Extensions that change the picture's form between its fields must not reach beyond its planes.
TEST(IntraDecoder, AFormChangedWithinAFrameEndsIt) {
  Bytes stream = MakeIntraStream({.FieldPictures = true}, 1);
  const Bytes pictureCode{0, 0, 1, 0};
  const Bytes chroma444{0, 0, 1, 0xB5, 0x18, 0x56, 0x00, 0x01, 0x00, 0x00};
  const auto second = std::find_end(stream.begin(), stream.end(), pictureCode.begin(), pictureCode.end());
  stream.insert(second, chroma444.begin(), chroma444.end());
  const auto planes = DecodeIntraPicture(stream, true);
  ASSERT_TRUE(planes);
  EXPECT_EQ(planes->Of[1].Width, 48U);
}

}  // namespace
}  // namespace quorvelant
