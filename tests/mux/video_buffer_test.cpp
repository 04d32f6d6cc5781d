#include "mux/video_buffer.h"

#include <gtest/gtest.h>

namespace quorvelant {
namespace {

// A full buffer of one old picture that leaves at `dts`, with the picture being sent after it.
VideoBuffer Full(std::int64_t dts, std::int64_t free) {
  VideoBuffer buffer;
  QueuePicture(buffer, {dts, VideoBufferBytes - free});
  QueuePicture(buffer, {dts + 3600, 5000});
  buffer.Fill = VideoBufferBytes - free;
  return buffer;
}

TEST(VideoBuffer, APackThatJustFitsDoesNotWait) {
  VideoBuffer buffer = Full(90000, 2025);
  const Clock scr = Clock::FromTicks(1000);
  EXPECT_EQ(WaitForVideoBuffer(buffer, scr, 2025).Scr, scr);
  EXPECT_EQ(ChargeVideoBuffer(buffer, scr, 2025), 0);
  EXPECT_EQ(buffer.Fill, VideoBufferBytes);
}

TEST(VideoBuffer, WaitsInQuartersOfASectorAndThenThePacksOwnTime) {
  struct Case {
    std::size_t Bytes;
    std::int64_t OwnQuarters;
  };
  for (const Case& c :
       {Case{506, 1}, Case{507, 2}, Case{1012, 2}, Case{1518, 3}, Case{1519, 4}, Case{2025, 4}}) {
    VideoBuffer buffer = Full(9000, 100);
    const VideoBufferWait wait = WaitForVideoBuffer(buffer, Clock::FromTicks(8100), c.Bytes);
    EXPECT_FALSE(wait.Stuck);
    // Released at the first step whose end, in units of nine ticks, is behind tick 9000.
    std::int64_t units = Clock::FromTicks(8100).Units;
    do {
      units += QuarterSectorTicks.Units;
    } while ((units + static_cast<std::int64_t>(c.Bytes)) / 126 <= 1000);
    EXPECT_EQ(wait.Scr.Units, units + c.OwnQuarters * QuarterSectorTicks.Units) << c.Bytes;
    EXPECT_EQ(buffer.Fill, 0);
  }
}

TEST(VideoBuffer, APictureDueBeforeItsDataIsShortByWhatIsMissing) {
  VideoBuffer buffer;
  QueuePicture(buffer, {9000, 6000});
  EXPECT_EQ(ChargeVideoBuffer(buffer, Clock::FromTicks(8000), 2000), 0);
  EXPECT_EQ(ChargeVideoBuffer(buffer, Clock::FromTicks(9100), 2000), 4000);
  EXPECT_EQ(ChargeVideoBuffer(buffer, Clock::FromTicks(9300), 2025), 0);
  EXPECT_EQ(buffer.Fill, 25) << "only the next picture's bytes stay";
}

}  // namespace
}  // namespace quorvelant
