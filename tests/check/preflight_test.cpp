#include "check/preflight.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "picture/bmp.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

SubPicturePlay Play(const char* start, const char* end, const char* file = "good.bmp") {
  SubPicturePlay play;
  play.Start = start;
  play.End = end;
  play.File = file;
  play.ConversionP = 0xFFFFFF;
  return play;
}

struct PreflightTest : testing::Test {
  PreflightTest() {
    const Bytes good = WriteBmp(Picture(8, 8));
    folder.Write("good.bmp", {reinterpret_cast<const char*>(good.data()), good.size()});
    folder.Write("cut.bmp", {reinterpret_cast<const char*>(good.data()), good.size() - 20});
    folder.Write("empty.bmp", "");
    track.TrackName = "Film";
    track.Standard = "PAL";
    track.Aspect = "16:9";
    track.DisplayMode = "Both PanScan and LetterBox";
    track.VideoFrames = 250;
    track.SubStreams.resize(2);
  }
  // "E place: text" or "W place: text" of each message.
  std::vector<std::string> Check() {
    BmpLoader loader;
    std::vector<std::string> told;
    const SubpictureChecks checks{Rules::Players, loader, ui, folder.Path().string()};
    for (const Message& message : CheckTrackSubpictures(track, 1, checks)) {
      told.push_back(std::string(message.Level == Severity::Error ? "E " : "W ") + message.Place + ": " +
                     message.Text);
    }
    return told;
  }

  TempFolder folder;
  Track track;
  RecordingUi ui;
};

TEST_F(PreflightTest, TimesOfSubtitles) {
  track.SubStreams[1].SubPlays = {Play("00:00:01:00", "00:00:02:00"), Play("00:00:01:10", "00:00:03:00"),
                                  Play("00:00:01:05", "00:00:04:00"), Play("00:00:01:05", "00:00:04:00"),
                                  Play("00:00:05:00", "00:00:04:24"), Play("00:00:06:00", "00:00:06:00"),
                                  Play("00:00:09:00", "00:00:10:01"), Play("00:00:10:00", "00:00:10:00")};
  const std::string at = " Track.1.Sub2 (Film) entry ";
  EXPECT_THAT(
      Check(),
      ElementsAre(
          "W" + at + "2: the subtitle starts (00:00:01:10) before the one ahead of it ends (00:00:02:00)",
          "E" + at + "3: the subtitle starts (00:00:01:05) before the one ahead of it (00:00:01:10)",
          "W" + at + "4: the subtitle starts with the one ahead of it (00:00:01:05), which never shows",
          "E" + at + "5: the subtitle ends (00:00:04:24) before it starts (00:00:05:00)",
          "W" + at + "6: the subtitle has no duration and stays until the next one",
          "W" + at + "7: the subtitle ends (00:00:10:01) past the end of the track (00:00:10:00)",
          "W" + at + "8: the subtitle has no duration and stays until the next one",
          "W" + at + "8: the subtitle starts (00:00:10:00) before the one ahead of it ends (00:00:10:01)",
          "W" + at + "8: the subtitle starts (00:00:10:00) past the end of the track (00:00:10:00)"));
  track.TrackType = "Still";
  EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(PreflightTest, BitmapsOfSubtitles) {
  auto& plays = track.SubStreams[0].SubPlays;
  const char* files[] = {"good.bmp", "none.bmp", "cut.bmp", "empty.bmp", "good.bmp", ""};
  for (std::size_t i = 0; i < std::size(files); ++i) {
    const std::string second = std::to_string(i);
    plays.push_back(
        Play(("00:00:0" + second + ":00").c_str(), ("00:00:0" + second + ":20").c_str(), files[i]));
  }
  plays[4].X1 = 800;
  plays[0].ColorE2 = 16;
  plays[0].ContrastBg = -1;
  const auto told = Check();
  ASSERT_EQ(told.size(), 7U);
  const std::string at = " Track.1.Sub1 (Film) entry ";
  const std::string path = (folder / "");
  EXPECT_EQ(told[0], "W" + at + "6: the subtitle has no bitmap");
  EXPECT_EQ(told[1], "W" + at + "1: colours and contrasts of a subtitle are 0 to 15, not 16");
  EXPECT_EQ(told[2], "W" + at + "1: colours and contrasts of a subtitle are 0 to 15, not -1");
  EXPECT_EQ(told[3], "E" + at + "2: " + path + "none.bmp: the file does not exist");
  EXPECT_EQ(told[4], "E" + at + "3: " + path + "cut.bmp: the bitmap is shorter than its header says");
  EXPECT_EQ(told[5], "E" + at + "4: " + path + "empty.bmp: the file is empty");
  EXPECT_THAT(told[6], HasSubstr("good.bmp: no line of this subtitle's bitmap lies within the picture"));
}

HighlightPlay Buttons(std::size_t count, const char* start, const char* duration) {
  HighlightPlay play;
  play.StartTimeToVideo = start;
  play.Duration = duration;
  for (std::size_t i = 0; i < count; ++i) {
    HighlightButton& button = play.Buttons.emplace_back();
    button.Name = "b" + std::to_string(i);
    button.Areas.fill({.X1 = 0, .X2 = 719, .Y1 = 0, .Y2 = 575});
  }
  return play;
}

TEST_F(PreflightTest, ButtonsAndTheirSpans) {
  SubPicturePlay forced = Play("00:00:00:00", "00:00:09:24");
  forced.Forced = true;
  track.SubStreams[0].SubPlays = {forced};
  HighlightPlay first = Buttons(3, "00:00:01:00", "00:00:02:00");
  first.Buttons[0].Up = "b2";
  first.Buttons[0].Left = "nowhere";
  first.Buttons[1].Name = "b2";
  first.Buttons[1].ColorScheme = 0;
  first.Buttons[1].Areas[2].Y2 = 576;
  first.ForcedSelect = 4;
  track.HighlightPlays = {first, Buttons(12, "00:00:02:00", "00:00:09:00"),
                          Buttons(13, "00:00:01:24", "00:00:00:01"),
                          Buttons(0, "00:00:10:00", "00:00:01:00")};
  const std::string at = " Track.1.High1 (Film) entry ";
  EXPECT_THAT(
      Check(),
      ElementsAre(
          "W" + at + "1: button \"b2\" has colour scheme 0, and there are 1 to 3",
          "W" + at + "1: button \"b2\" has no area within the picture (0,0 to 719,576)",
          "W" + at + "1: the forced button is number 4, and there are 3",
          "W" + at + "1: two buttons are named \"b2\": links reach the first",
          "W" + at + "1: the left link of button \"b0\" names \"nowhere\", which does not exist",
          "W" + at + "2: the buttons last (00:00:11:00) past the end of the track (00:00:10:00) and are cut",
          "W" + at +
              "2: the buttons start (00:00:02:00) before the set ahead of them ends (00:00:03:00), "
              "which is cut",
          "E" + at + "3: the buttons start (00:00:01:24) before the set ahead of them (00:00:02:00)",
          "E" + at + "3: 13 buttons, and 3 display modes leave room for 12",
          "E" + at + "4: the buttons start (00:00:10:00) past the end of the track (00:00:10:00)"));
}

}  // namespace
}  // namespace quorvelant
