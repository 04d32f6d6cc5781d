#include "base/text.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/timecode.h"

namespace quorvelant {
namespace {

TEST(Text, NumbersStopAtTheFirstOtherByteAndHoldAtTheLimit) {
  EXPECT_EQ(LeadingNumber(" 12a"), 12);
  EXPECT_EQ(LeadingNumber("-7"), -7);
  EXPECT_EQ(LeadingNumber("x"), 0);
  EXPECT_EQ(LeadingNumber("99999999999999999999"), std::numeric_limits<std::int32_t>::max());
}

TEST(Text, SplitKeepsEmptyPieces) {
  EXPECT_EQ(Split("=a=", "=").size(), 3U);
  EXPECT_EQ(Split("", "=").size(), 1U);
}

TEST(Timecode, FramesAndBack) {
  EXPECT_EQ(FramesToTimecode(90061 * 25 + 24, 25), "25:01:01:24");
  EXPECT_EQ(TimecodeToFrames("01:00:00;05", 30), 3600 * 30 + 5);
  EXPECT_EQ(TimecodeToFrames("", 25), 0);
  EXPECT_EQ(FramesToTimecode(-3, 25), "00:00:00:00");
}

TEST(Timecode, DropFrameAddsTwoAMinuteButForEachTenth) {
  EXPECT_EQ(CorrectDropFrame(10 * 1800, DropFrame::Add), 10 * 1800 + 18);
  EXPECT_EQ(CorrectDropFrame(1800, DropFrame::Add), 1802);
}

}  // namespace
}  // namespace quorvelant
