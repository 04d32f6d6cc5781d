#include "subtitle/subtitle_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvelant {
namespace {

using testing::ElementsAre;

const std::string Head =
    "Display_Start\tnon_forced\r\n"
    "Directory\tC:\\subs\r\n"
    "Pixel_Area\t(2 479)\n"
    "Display_Area (10 20 719 477)\n"
    "Color (1 2 3 4)\n"
    "Contrast\t(15 14 13 0)\n"
    "BG (1 2 3 ---)\nPA (255 0 16 ---)\nE1 (128 128 128 ---)\nE2 (0 255 0 ---)\n"
    "PA without a bracket\n"
    "SP_NUMBER\tSTART\tEND\tFILE_NAME\n";

// Palette indexes and contrasts: emphasis 2, emphasis 1, pattern, background.
std::vector<int> ColorsOf(const SubPicturePlay& play) {
  return {play.ColorE2,    play.ColorE1,    play.ColorP,    play.ColorBg,
          play.ContrastE2, play.ContrastE1, play.ContrastP, play.ContrastBg};
}

TEST(SubtitleScript, EntriesTakeTheValuesBeforeThem) {
  const SubtitleScript script =
      ParseSubtitleScript(Head +
                              "1\t00:00:10:00\t00:00:12;05\ta.bmp\n"
                              "\n"
                              "Color (0 16 1 2)\nDisplay_Area (-5 1 100 100)\n"
                              "2\t\t00:00:20:00\t\t\t00:00:21:00\tColor_01 (2).bmp\n"
                              "Display_Start\tforced\n"
                              "3\t-00:00:01:00\t00:00:22:00\tContrast.bmp\n"
                              "a line with\ttoo little\n",
                          {.FramesPerSecond = 25, .UnitsMayBeForced = true});
  ASSERT_EQ(script.Entries.size(), 3U);
  const SubPicturePlay& first = script.Entries[0];
  EXPECT_THAT((std::array{first.SPNumber, first.Start, first.End, first.Duration, first.File}),
              ElementsAre("1", "00:00:10:00", "00:00:12:05", "00:00:02:05", "C:\\subs\\a.bmp"));
  EXPECT_THAT(ColorsOf(first), ElementsAre(0, 1, 2, 3, 15, 14, 13, 0));
  EXPECT_THAT((std::array{first.ConversionBg, first.ConversionP, first.ConversionE1, first.ConversionE2}),
              ElementsAre(0x030201U, 0x1000FFU, 0x808080U, 0x00FF00U));
  EXPECT_THAT((std::array{first.X1, first.Y1, first.X2, first.Y2}), ElementsAre(10, 20, 719, 477));
  EXPECT_TRUE(first.Used && !first.Forced);
  const SubPicturePlay& second = script.Entries[1];
  EXPECT_EQ(second.File, "C:\\subs\\Color_01 (2).bmp");
  EXPECT_THAT(ColorsOf(second), ElementsAre(0, 15, 0, 1, 15, 14, 13, 0));
  EXPECT_THAT((std::array{second.X1, second.Y1}), ElementsAre(-5, 2));
  EXPECT_EQ(script.Entries[2].Start, "00:00:00:00");
  EXPECT_TRUE(script.Entries[2].Forced);
  EXPECT_THAT(script.LinesPassedOver, ElementsAre(20U));
}

TEST(SubtitleScript, RippedScriptsAreSevenFramesEarlyAndCountColoursFromZero) {
  const std::string list = Head + "1\t00:00:00:05\t00:00:12:00\ta.bmp\n";
  for (const bool named : {false, true}) {
    const auto script = ParseSubtitleScript((named ? "# Generator: SubRip 1.17\n" : "") + list,
                                            {.SubRipMode = !named, .FramesPerSecond = 30});
    const SubPicturePlay& ripped = script.Entries.at(0);
    EXPECT_THAT((std::array{ripped.Start, ripped.End, ripped.Duration}),
                ElementsAre("00:00:00:00", "00:00:11:23", "00:00:11:23"));
    EXPECT_THAT((std::array{ripped.ColorE2, ripped.ColorBg}), ElementsAre(1, 4));
  }
}

}  // namespace
}  // namespace quorvelant
