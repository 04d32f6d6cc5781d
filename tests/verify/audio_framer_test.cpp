#include "verify/audio_framer.h"

#include <gmock/gmock.h>

#include "support/media.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// Frames are found wherever packs cut them, in their headers too.
TEST(AudioFramer, FindsFramesHoweverPacksCutThem) {
  const std::string sound = TempFolder::Read(SampleAc3({.Seconds = 1}));
  const ByteView bytes(reinterpret_cast<const std::uint8_t*>(sound.data()), sound.size());
  std::optional<std::size_t> frame;
  for (const std::size_t step : {1U, 2U, 3U, 5U, 6U, 7U, 100U, 767U, 2005U}) {
    AudioFramer framer(AudioCoding::Ac3);
    std::vector<std::size_t> starts;
    for (std::size_t at = 0; at < bytes.size(); at += step) {
      const auto& found = framer.Feed(bytes.subspan(at, std::min(step, bytes.size() - at)), 0);
      for (const AudioFrameStart& start : found) {
        starts.push_back(at + start.At);
      }
    }
    ASSERT_GT(starts.size(), 2U) << step;
    frame = frame.value_or(starts[1]);
    for (std::size_t i = 0; i < starts.size(); ++i) {
      ASSERT_EQ(starts[i], i * *frame) << step;
    }
    EXPECT_EQ(starts.size(), bytes.size() / *frame) << step;
    EXPECT_EQ(framer.Lost(), 0) << step;
    EXPECT_EQ(framer.Ticks(), 2880) << step;
  }
}

TEST(AudioFramer, TellsALostFrameOnceAndGoesOnAtThePointer) {
  const std::string sound = TempFolder::Read(SampleAc3({.Seconds = 1}));
  Bytes bytes(sound.begin(), sound.end());
  AudioFramer whole(AudioCoding::Ac3);
  const std::size_t frame = whole.Feed(bytes, 0).at(1).At;
  bytes.erase(bytes.begin() + 10);  // the second frame begins a byte early
  AudioFramer damaged(AudioCoding::Ac3);
  const auto& starts = damaged.Feed(bytes, 0);
  EXPECT_EQ(damaged.Lost(), 1);
  EXPECT_EQ(starts.size(), 1U);
  bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(frame) - 1);
  EXPECT_EQ(damaged.Feed(bytes, 0).size(), bytes.size() / frame);
  EXPECT_EQ(damaged.Lost(), 1);
}

TEST(AudioFramer, RefusesLpcmThatThereIsNot) {
  AudioFramer framer(AudioCoding::Lpcm);
  EXPECT_TRUE(framer.SetLpcm(0x01));                    // 16 bits at 48 kHz, stereo
  EXPECT_EQ(framer.Feed(Bytes(1000), 200).size(), 3U);  // of 320 bytes, from byte 200 on
  EXPECT_FALSE(framer.SetLpcm(0xC1));                   // no such size
  EXPECT_FALSE(framer.SetLpcm(0x21));                   // no such frequency
  EXPECT_FALSE(framer.SetLpcm(0x97));                   // 24 bits of 96 kHz, eight channels
}

}  // namespace
}  // namespace quorvelant
