#include "ifo/attributes.h"

#include <gtest/gtest.h>

#include "disc/bcd_time.h"

namespace quorvelant {
namespace {

TEST(Attributes, TimesAreBcdWithTheRateOnTop) {
  EXPECT_EQ(ToBcdTime((3600 * 12 + 34 * 60 + 56) * 30 + 29, 30).Value, 0x123456E9U);
  EXPECT_EQ(ToBcdTime(-1, 25).Value, 0x00000040U);
}

TEST(Attributes, VideoBits) {
  VTS_P entry;
  EXPECT_EQ(VideoAttributes(entry, Domain::Title, "PAL").Value, 0x5300U);
  EXPECT_EQ(VideoAttributes(entry, Domain::Menu, "NTSC").Value, 0x4300U);

  struct Case {
    const char* Standard;
    const char* Aspect;
    const char* Resolution;
    bool Pan, Letter, Letterboxed, Film;
    std::uint64_t Title, Menu;
  };
  for (const Case& c : {
           Case{"PAL", "4:3", "720x576", false, false, false, false, 0x5300, 0x5300},
           Case{"PAL", "4:3", "640x576", false, false, false, false, 0x5300, 0x5300},  // no size of a disc
           Case{"PAL", "16:9", "704x576", false, true, false, false, 0x5E08, 0x5E08},
           Case{"NTSC", "16:9", "352x480", true, true, true, true, 0x4C14, 0x4C14},
           Case{"PAL", "4:3", "352x288", true, false, false, true, 0x5D19, 0x5118},  // pan-scan, film
       }) {
    for (VideoInfo_P* info : {&entry.VTSTitleInfo, &entry.VTSMenuInfo}) {
      *info = {c.Standard, c.Resolution, c.Aspect, c.Pan, c.Letter, "MPEG2", true};
    }
    entry.TitleLetterBoxed = entry.MenuLetterBoxed = c.Letterboxed;
    entry.TitleCameraMode = c.Film;
    EXPECT_EQ(VideoAttributes(entry, Domain::Title, "PAL").Value, c.Title) << c.Resolution;
    EXPECT_EQ(VideoAttributes(entry, Domain::Menu, "PAL").Value, c.Menu) << c.Resolution;
  }
}

TEST(Attributes, AudioBytes) {
  const struct {
    AudioMapRow Row;
    Domain Of;
    std::uint64_t Value;
    const Rules& By = Rules::Players;
  } cases[] = {
      {{"English", 48, "Directors Comments", 2, "AC3", 1, 0, 0}, Domain::Title, 0x04C1'656E'0003'0000},
      {{"English", 48, "Directors Comments", 2, "AC3", 1, 0, 0}, Domain::Menu, 0x00C1'0000'0000'0000},
      {{"None Specified", 96, "Directors Comments", 6, "PCM", 1, 0, 20},
       Domain::Title,
       0x8455'0000'0003'0000},
      {{"", 48, "unknown", 8, "PCM", 1, 0, 16}, Domain::Menu, 0x8007'0000'0000'0000},
      {{"", 48, "unknown", 8, "PCM", 1, 0, 16}, Domain::Menu, 0x8000'0000'0000'0000, Rules::Classic},
      {{"", 48, "unknown", 1, "DTS", 1, 0, 16}, Domain::Title, 0xC000'0000'0000'0000}};
  for (const auto& [row, domain, value, rules] : cases) {
    EXPECT_EQ(AudioAttributes(row, domain, rules).Value, value) << row.Format;
  }
}

TEST(Attributes, SubpictureBytes) {
  SubMapRow row{"german", "Director Comments for Children", "", 0, 1, 0};
  EXPECT_EQ(SubpictureAttributes(row).Value, 0x0100'6465'000FU);
  row.Extension = "Forced";
  EXPECT_EQ(SubpictureAttributes(row).Value, 0x0100'6465'0009U);
}

TEST(Attributes, ColoursInStudioRange) {
  EXPECT_EQ(PaletteEntry(0x000000).Value, 0x108080U);  // black: ties go to the even value
  EXPECT_EQ(PaletteEntry(0xFFFFFF).Value, 0xEB8080U);  // white is held at 235
  EXPECT_EQ(PaletteEntry(0x0000FF).Value, 0x52F05BU);  // red stands in the low byte
  EXPECT_EQ(PaletteEntry(0xFF0000).Value, 0x296EF0U);
}

}  // namespace
}  // namespace quorvelant
