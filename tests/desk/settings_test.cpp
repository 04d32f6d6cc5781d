#include "desk/settings.h"

#include <gtest/gtest.h>

#include <functional>

#include "desk/user_folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// A file in which everything is there and 0, as the end of a batch run leaves it.
std::string Zeros() {
  return SettingsText(Settings());
}

TEST(Settings, EveryLineInItsOrder) {
  Settings settings = DefaultSettings();
  settings.DestinationFolder = "C:\\out";
  EXPECT_EQ(SettingsText(settings),
            "[SETTINGS]\r\nRemove_Seq_End=1\r\nSubrip=0\r\nSeamless_Cells=1\r\nSeamless_PGC=0\r\n"
            "Use_Track_Names=0\r\nAuto_Create_Chapters=0\r\nAuto_Slide_Chapters=1\r\nExtend_Final_Slide=1\r\n"
            "Extend_Final_Subtitle=0\r\nPAL_Chapters=15000\r\nNTSC_Chapters=18000\r\n"
            "PAL_Slide_Duration=250\r\nNTSC_Slide_Duration=300\r\nRegion1=1\r\nRegion2=1\r\nRegion3=1\r\n"
            "Region4=1\r\nRegion5=1\r\nRegion6=1\r\nRegion8=1\r\n\r\n[FILE PATHS]\r\n"
            "Destination Folder=C:\\out\r\n");
}

TEST(Settings, Repairs) {
  const Settings defaults = DefaultSettings();
  struct Case {
    const char* What;
    std::string Text;
    std::function<bool(const Settings&)> Holds;
  };
  const std::vector<Case> cases{
      {"zero numbers take their defaults, zero flags stay off", Zeros(),
       [&](const Settings& s) {
         return s.PalChapters == 15000 && s.NtscChapters == 18000 && s.PalSlideDuration == 250 &&
                s.NtscSlideDuration == 300 && !s.RemoveSeqEnd && !s.AutoSlideChapters;
       }},
      {"no region at all allows every region", Zeros(),
       [&](const Settings& s) { return s.RegionAllowed == defaults.RegionAllowed; }},
      {"the seamless PGC is off at each start", "SEAMLESS_PGC=1",
       [](const Settings& s) { return !s.SeamlessPGC; }},
      {"keys match in any case", "sUbRip=1\nregion8=0",
       [](const Settings& s) { return s.Subrip && !s.RegionAllowed[6] && s.RegionAllowed[5]; }},
      {"there is no region 7", "Region7=0",
       [&](const Settings& s) { return s.RegionAllowed == defaults.RegionAllowed; }},
      {"only an exact 1 turns on", "Subrip=yes\r\nUse_Track_Names= 1\r\nExtend_Final_Subtitle=1 ",
       [&](const Settings& s) { return s == defaults; }},
      {"the inverted key", "Seamless_Cells=0", [](const Settings& s) { return s.ScenesNotSeamless; }},
      {"one zero resets both slide times", "PAL_Slide_Duration=9\r\nNTSC_Slide_Duration=0",
       [](const Settings& s) { return s.PalSlideDuration == 250 && s.NtscSlideDuration == 300; }},
      {"a missing number leaves the other", "PAL_Slide_Duration=9",
       [](const Settings& s) { return s.PalSlideDuration == 9 && s.NtscSlideDuration == 300; }},
      {"no automatic chapters at interval 0", "Auto_Create_Chapters=1\nPAL_Chapters=0",
       [](const Settings& s) { return !s.AutoCreateChapters; }},
      {"a negative number counts as 0", "NTSC_Chapters=-5",
       [](const Settings& s) { return s.NtscChapters == 18000; }},
      {"a path is cut at its own equals sign", "Destination Folder=/a=b",
       [](const Settings& s) { return s.DestinationFolder == "/a"; }},
  };
  for (const Case& c : cases) {
    EXPECT_TRUE(c.Holds(ParseSettings(c.Text))) << c.What;
  }
}

TEST(Settings, TheFileAndTheFolderGivenOtherwise) {
  const TempFolder folder;
  const std::string file = folder / "config/quorvelant/Quorvelant.ini";
  EXPECT_EQ(ReadSettings(file), DefaultSettings());
  EXPECT_EQ(ReadSettings(folder.Path().string()), DefaultSettings()) << "a folder is no file";
  Settings settings = DefaultSettings();
  settings.RemoveSeqEnd = settings.RegionAllowed[2] = settings.RegionAllowed[6] = false;
  settings.ScenesNotSeamless = settings.AutoCreateChapters = true;
  settings.PalChapters = 1;
  settings.NtscSlideDuration = 7;
  settings.DestinationFolder = "/disc/\xC3\xBC";
  ASSERT_TRUE(WriteSettings(file, settings));
  EXPECT_EQ(ReadSettings(file), settings);
  EXPECT_EQ(ReadSettings(file, "/given").DestinationFolder, "/given");
  EXPECT_FALSE(WriteSettings(file + "/below", settings));
  EXPECT_FALSE(WriteSettings("", settings));
}

TEST(Settings, OfABatchRunChangeNothing) {
  const TempFolder temp;
  RecordingUi ui;
  EXPECT_EQ(ReadUserSettings(temp.Write("a", SettingsText({})), ui), DefaultSettings());
  Settings own = DefaultSettings();
  own.NtscSlideDuration = 0;
  own.RemoveSeqEnd = false;
  EXPECT_FALSE(ReadUserSettings(temp.Write("b", SettingsText(own)), ui).RemoveSeqEnd);
}

TEST(UserFolders, FollowTheBaseDirectories) {
  const auto with = [](std::string config, std::string home) {
    return [=](const std::string& name) {
      return name == "HOME" ? home : name == "XDG_CONFIG_HOME" ? config : std::string();
    };
  };
  EXPECT_EQ(SettingsFile(with("/c", "/h")), "/c/quorvelant/Quorvelant.ini");
  EXPECT_EQ(SettingsFile(with("relative", "/h")), "/h/.config/quorvelant/Quorvelant.ini");
  EXPECT_EQ(LogFile(with("/c", "/h")), "/h/.local/state/quorvelant/Quorvelant.LOG");
  EXPECT_EQ(LogFile(with("/c", "")), "");
}

}  // namespace
}  // namespace quorvelant
