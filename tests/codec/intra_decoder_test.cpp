#include "codec/intra_decoder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>

#include "codec/picture_headers.h"
#include "ffmpeg_decode.h"
#include "support/folders.h"
#include "support/media.h"
#include "support/temp_folder.h"
#include "test_pictures.h"

namespace quorvelant {
namespace {

Bytes ReadBytes(const std::string& file) {
  const std::string content = TempFolder::Read(file);
  return {content.begin(), content.end()};
}

std::string RecordedFile(const std::string& name) {
  return SourceFile("tests/codec/data/" + name + ".mpv");
}
Bytes Recorded(const std::string& name) {
  return ReadBytes(RecordedFile(name));
}

class EveryStream : public testing::TestWithParam<const char*> {};

// Recorded pictures of every mode; and of films by real encoders the intra pictures, each read at its
// sequence header as an index gives it. ffmpeg decodes them in their stream, and nothing else.
TEST_P(EveryStream, EqualsFfmpegWithinOneStep) {
  const std::string name = GetParam();
  const bool isFilm = name.starts_with("Film");
  const std::optional<std::string> file =
      name == "FilmPal"         ? SampleVideo({.Frames = 26, .Interlaced = true})
      : name == "FilmNtsc"      ? SampleVideo({.Standard = "NTSC", .Frames = 26})
      : name == "FilmMpeg1"     ? SampleVideo({.Width = 352, .Height = 288, .Frames = 26, .Mpeg1 = true})
      : name == "FilmBroadcast" ? SharedFile("samples/broadcast-pal-169-interlaced.m2v")
                                : RecordedFile(name);
  if (!file) {
    GTEST_SKIP() << StreamsMissing;
  }
  const Bytes stream = ReadBytes(*file);
  const Bytes header{0, 0, 1, start_code::Sequence};
  std::vector<Planes> ours;
  auto at = std::search(stream.begin(), stream.end(), header.begin(), header.end());
  while (at != stream.end() && ours.size() < 4) {
    auto planes = DecodeIntraPicture(Bytes(at, stream.end()), name != "mpeg1" && name != "FilmMpeg1");
    ASSERT_TRUE(planes);
    ours.push_back(std::move(*planes));
    at = std::search(at + 4, stream.end(), header.begin(), header.end());
  }
  ASSERT_GE(ours.size(), isFilm ? 2U : 1U);
  const FfmpegResult theirs = DecodeByFfmpeg(stream, ours[0], isFilm ? "-skip_frame nokey" : "");
  ASSERT_TRUE(isFilm ? theirs.Pictures.size() >= ours.size() : theirs.Pictures.size() == 1);
  EXPECT_TRUE(isFilm || theirs.Complaints.empty()) << theirs.Complaints;
  for (std::size_t i = 0; i < ours.size(); ++i) {
    EXPECT_LE(LargestDifference(ours[i], theirs.Pictures[i]), 1) << "picture " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(IntraDecoder, EveryStream,
                         testing::Values("plain", "mpeg1", "odd_size", "dc9_b15_nonlinear", "dc10_alternate",
                                         "field_dct_own_matrix", "field_dct_b15_alternate", "concealment",
                                         "field_pictures", "chroma_422", "chroma_444", "FilmPal", "FilmNtsc",
                                         "FilmMpeg1", "FilmBroadcast"),
                         [](const auto& stream) { return std::string(stream.param); });

Bytes::iterator LastPicture(Bytes& stream) {
  const Bytes pictureCode{0, 0, 1, start_code::Picture};
  return std::find_end(stream.begin(), stream.end(), pictureCode.begin(), pictureCode.end());
}

TEST(IntraDecoder, AFieldAloneShowsOnAllLines) {
  Bytes stream = Recorded("field_pictures");
  const auto both = DecodeIntraPicture(stream, true);
  stream.erase(LastPicture(stream), stream.end());
  const auto one = DecodeIntraPicture(stream, true);
  ASSERT_TRUE(both && one);
  for (unsigned y = 0; y < both->Y().Height; ++y) {
    EXPECT_TRUE(std::equal(one->Y().Row(y), one->Y().Row(y) + 160, both->Y().Row(y / 2 * 2))) << y;
  }
}

TEST(IntraDecoder, DamageCostsTheRestOfItsSlice) {
  Bytes stream = Recorded("plain");
  const auto whole = DecodeIntraPicture(stream, true);
  const Bytes thirdRow{0, 0, 1, 3};
  const Bytes fourthRow{0, 0, 1, 4};
  const auto start = std::search(stream.begin(), stream.end(), thirdRow.begin(), thirdRow.end());
  const auto end = std::search(start, stream.end(), fourthRow.begin(), fourthRow.end());
  std::fill(start + 5, end, std::uint8_t{0});
  const auto damaged = DecodeIntraPicture(stream, true);
  ASSERT_TRUE(whole && damaged);
  for (unsigned y = 0; y < 128; ++y) {
    const std::uint8_t* concealed = whole->Y().Row(y / 16 == 2 ? y - 16 : y);
    EXPECT_TRUE(std::equal(concealed, concealed + 160, damaged->Y().Row(y))) << y;
  }
}

TEST(IntraDecoder, TakesWhatIsThere) {
  EXPECT_FALSE(DecodeIntraPicture({}, true));
  EXPECT_TRUE(DecodeIFrame(Bytes(100, 0), true).empty());
  Bytes stream = Recorded("plain");
  const auto headerOnly = DecodeIntraPicture(ByteView(stream).first(12), true);
  ASSERT_TRUE(headerOnly);
  EXPECT_EQ(headerOnly->Y().Samples, Bytes(160UL * 128, BlackLuma));
  const Bytes bitmap = DecodeIFrame(stream, true);
  EXPECT_EQ(bitmap.size(), 54U + 160U * 128U * 3U);
  EXPECT_EQ(bitmap[0], 'B');
  for (std::size_t length = 0; length < stream.size(); length += 13) {
    DecodeIntraPicture(ByteView(stream).first(length), true);
  }
  stream[4] = stream[5] = stream[6] = 0xFF;  // 4095 by 4095: a picture all the same
  EXPECT_TRUE(DecodeIntraPicture(stream, true));
  stream[4] = stream[5] = 0;  // no width
  EXPECT_FALSE(DecodeIntraPicture(stream, true));
}

// Extensions that change the picture's form between its fields must not reach beyond its planes.
TEST(IntraDecoder, AFormChangedWithinAFrameEndsIt) {
  Bytes stream = Recorded("field_pictures");
  const Bytes chroma444{0, 0, 1, 0xB5, 0x18, 0x56, 0x00, 0x01, 0x00, 0x00};
  stream.insert(LastPicture(stream), chroma444.begin(), chroma444.end());
  const auto planes = DecodeIntraPicture(stream, true);
  ASSERT_TRUE(planes);
  EXPECT_EQ(planes->Of[1].Width, 80U);
}

}  // namespace
}  // namespace quorvelant
