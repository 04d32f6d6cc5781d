#include "mux/ac3_mender.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <functional>

#include "mux/audio_source.h"
#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

constexpr std::size_t Frame = 768;
constexpr std::size_t Frames = 12;

// The frames that are heard, by their places in the whole stream.
std::string Heard(const Bytes& whole, ByteView mended) {
  std::string heard;
  for (std::size_t at = 0; at + Frame <= mended.size(); at += Frame) {
    std::size_t place = 0;
    while (place < Frames &&
           !std::ranges::equal(mended.subspan(at, Frame), ByteView(whole).subspan(place * Frame, Frame))) {
      ++place;
    }
    heard += fmt::format("{} ", place);
  }
  return heard;
}

TEST(Ac3Mender, KeepsTheTimeOfWhatFollowsWhereItIsKnown) {
  struct Case {
    const char* Name;
    std::function<void(Bytes&)> Harm;
    const char* Heard;
    std::int64_t Lost;
    std::uint64_t BytesOut;
  };
  const auto at = [](Bytes& bytes, std::size_t place) {
    return bytes.begin() + static_cast<std::ptrdiff_t>(place);
  };
  const Case cases[] = {
      {"whole", [](Bytes&) {}, "0 1 2 3 4 5 6 7 8 9 10 11 ", 0, 0},
      {"sync", [](Bytes& b) { b[Frame * 3] = 0; }, "0 1 2 2 4 5 6 7 8 9 10 11 ", 1, Frame},
      {"two", [](Bytes& b) { b[Frame * 3] = b[Frame * 4 + 1] = 0; }, "0 1 2 2 2 5 6 7 8 9 10 11 ", 2,
       2 * Frame},
      {"rate", [](Bytes& b) { b[Frame * 3 + 4] = 0x1E; }, "0 1 2 2 4 5 6 7 8 9 10 11 ", 1, Frame},
      {"short", [&](Bytes& b) { b.erase(at(b, Frame * 3 + 400), at(b, Frame * 4)); },
       "0 1 2 2 4 5 6 7 8 9 10 11 ", 1, 400},
      {"gone", [&](Bytes& b) { b.erase(at(b, Frame * 3), at(b, Frame * 4)); }, "0 1 2 4 5 6 7 8 9 10 11 ", 0,
       0},
      {"noise", [&](Bytes& b) { b.insert(at(b, Frame * 3), 100, 0x0B); }, "0 1 2 3 4 5 6 7 8 9 10 11 ", 0,
       100},
      {"long",
       [&](Bytes& b) {
         b.insert(at(b, Frame * 3), 400000, 0);
         b.resize(b.size() - 100);
       },
       nullptr, 520 + 1, 400000 + Frame - 100},
      {"cut", [](Bytes& b) { b.resize(b.size() - 1); }, "0 1 2 3 4 5 6 7 8 9 10 ", 1, Frame - 1},
  };
  Bytes whole = FileBytes(SampleAc3({.Seconds = 1}));
  whole.resize(Frames * Frame);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    const TempFolder folder;
    Bytes harmed = whole;
    c.Harm(harmed);
    const MuxAudioStream stream = Ac3Stream(Saved(folder, harmed, c.Name));
    RecordingUi ui;
    Random files(ui);
    files.DimFiles(9);
    AudioSource source(files, 2, stream, 1);
    source.MendFrames();
    const ByteView mended = source.Peek(std::size_t{1} << 20);
    EXPECT_EQ(mended.size() % Frame, 0U);
    if (c.Heard != nullptr) {
      EXPECT_EQ(Heard(whole, mended), c.Heard);
    }
    EXPECT_EQ(source.Damage().Lost, c.Lost);
    EXPECT_EQ(source.Damage().Bytes, c.BytesOut);
  }
}

}  // namespace
}  // namespace quorvelant
