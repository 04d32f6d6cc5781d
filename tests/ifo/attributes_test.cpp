#include "ifo/attributes.h"

#include <gtest/gtest.h>

#include "disc/bcd_time.h"

namespace quorvelant {
namespace {

TEST(Attributes, TimesAreBcdWithTheRateOnTop) {
  struct Case {
    std::int64_t Frames;
    int Rate;
    std::uint32_t Value;
  };
  for (const Case& c : {Case{25, 25, 0x00000140}, Case{24, 25, 0x00000064}, Case{29, 30, 0x000000E9},
                        Case{(3600 * 12 + 34 * 60 + 56) * 30, 30, 0x123456C0}, Case{-1, 25, 0x00000040}}) {
    EXPECT_EQ(ToBcdTime(c.Frames, c.Rate).Value, c.Value) << c.Frames;
  }
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
  AudioMapRow row;
  row.Language = "English";
  row.SampleRate = 48;
  row.Extension = "Directors Comments";
  row.ChannelCount = 2;
  row.Format = "AC3";
  EXPECT_EQ(AudioAttributes(row, Domain::Title).Value, 0x04C1'656E'0003'0000U);
  EXPECT_EQ(AudioAttributes(row, Domain::Menu).Value, 0x00C1'0000'0000'0000U);
  row.Format = "PCM";
  row.Quantisation = 20;
  row.SampleRate = 96;
  row.ChannelCount = 6;
  row.Language = "None Specified";
  EXPECT_EQ(AudioAttributes(row, Domain::Title).Value, 0x8455'0000'0003'0000U);
  row.Quantisation = 16;
  row.SampleRate = 48;
  row.ChannelCount = 1;
  row.Language.clear();
  row.Extension = "unknown";
  row.Format = "DTS";
  EXPECT_EQ(AudioAttributes(row, Domain::Title).Value, 0xC000'0000'0000'0000U);
}

TEST(Attributes, SubpictureBytes) {
  SubMapRow row;
  row.Language = "german";
  row.Extension = "Director Comments for Children";
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
