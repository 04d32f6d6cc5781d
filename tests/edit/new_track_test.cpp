#include "edit/new_track.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "boxes.h"
#include "support/recording_ui.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

TEST(NewSegment, NamesByTheCountOfAllTracksAndStopsAtFourByHand) {
  Tracks tracks;
  EXPECT_EQ(NewSegment(tracks, "Motion", "")->TrackName, "Track_1");
  EXPECT_EQ(tracks[0].Scenes.at(0).Name, "Track_1_Scene1");
  NewSegment(tracks, "Still", "");
  tracks[0].Removed = true;
  EXPECT_EQ(NewSegment(tracks, "Motion", "")->TrackName, "Track_3");
  EXPECT_NE(NewSegment(tracks, "Motion", ""), nullptr);
  EXPECT_NE(NewSegment(tracks, "Motion", ""), nullptr);
  EXPECT_EQ(NewSegment(tracks, "Motion", ""), nullptr) << "four live tracks";
  EXPECT_EQ(NewSegment(tracks, "SlideShow", "Slides")->TrackType, "SlideShow");
}

TEST(NewSegment, ASecondPlayNeedsAFileInTheFirst) {
  Tracks tracks;
  Track& track = *NewSegment(tracks, "Motion", "");
  EXPECT_EQ(AddVideoPlay(track), nullptr);
  track.VideoPlays[0].File = "a.m2v";
  ASSERT_NE(AddVideoPlay(track), nullptr);
  EXPECT_EQ(AddVideoPlay(track), nullptr);
  track.VideoPlays[1].Removed = true;
  EXPECT_NE(AddVideoPlay(track), nullptr) << "the removed play no longer stands last";

  AudioStream& stream = *AddAudioStream(track);
  EXPECT_EQ(stream.StreamName, "Audio Stream 1");
  EXPECT_EQ(AddAudioPlay(stream), nullptr);
  for (int i = 1; i < 8; ++i) {
    EXPECT_EQ(AddAudioStream(track)->StreamNumber, i);
  }
  EXPECT_EQ(AddAudioStream(track), nullptr);
}

TEST(SubtitleStreams, NeedAVideoAndTakeTheLowestFreeNumber) {
  RecordingUi ui;
  Tracks tracks;
  Track& track = *NewSegment(tracks, "Motion", "");
  track.Aspect = "16:9";
  EXPECT_EQ(AddSubtitleStream(track, ui).Stream, nullptr);
  EXPECT_EQ(ui.Messages.size(), 1U);
  track.VideoPlays[0].File = "a.m2v";
  ui.Answers = {true, false, false};
  EXPECT_TRUE(AddSubtitleStream(track, ui).ImportScript);
  track.SubStreams[0].StreamNumber = 3;
  const NewSubtitleStream second = AddSubtitleStream(track, ui);
  EXPECT_FALSE(second.ImportScript);
  EXPECT_EQ(second.Stream->StreamNumber, 0);
  EXPECT_EQ(second.Stream->StreamName, "Subtitle Stream 2");
  EXPECT_EQ(second.Stream->DisplayMode, "Wide");
  second.Stream->Removed = true;  // so its number is free
  EXPECT_EQ(AddSubtitleStream(track, ui).Stream->StreamNumber, 0);
}

TEST(Scenes, EveryRefusal) {
  RecordingUi ui;
  Tracks tracks;
  Track& track = *NewSegment(tracks, "Motion", "");
  track.VideoFrames = 1000;
  const FrameCorrection toStart = [](std::int64_t) { return 0; };
  struct Case {
    const char* Timecode;
    int Rate;
    FrameCorrection Correct;
    std::string_view Text;  // empty where the scene is added
  };
  for (const Case& c : {
           Case{"", 25, {}, "Please set a valid Timestamp"},
           Case{"00:00:40:00", 25, {}, "Timestamp exceeds Video Length"},
           Case{"00:00:39:10", 25, {}, "Timestamp is too close to end of Video Stream"},
           Case{"00:00:39:09", 25, {}, ""},
           Case{"00:00:32:28", 30, {}, "Timestamp is too close to end of Video Stream"},
           Case{"00:00:32:27", 30, {}, ""},
           Case{"00:00:00;00", 25, {}, "This Timestamp already exists, please select another"},
           Case{"00:00:10:00", 25, toStart, "This Corrected Timestamp already exists, please select another"},
       }) {
    ui.Messages.clear();
    EXPECT_EQ(AddScene(track, c.Timecode, c.Rate, ui, c.Correct), c.Text.empty()) << c.Timecode;
    ASSERT_EQ(ui.Messages.size(), c.Text.empty() ? 0U : 1U);
    EXPECT_TRUE(c.Text.empty() || ui.Messages[0].Text == c.Text) << ui.Messages[0].Text;
    std::ranges::for_each(ui.Messages, ExpectBox);
  }
}

TEST(Scenes, StandInTheOrderOfTime) {
  RecordingUi ui;
  Tracks tracks;
  Track& track = *NewSegment(tracks, "Motion", "Film");
  EXPECT_TRUE(AddScene(track, "00:02:00:00", 25, ui));
  EXPECT_TRUE(AddScene(track, "00:01:00:00", 25, ui, [](std::int64_t frame) { return frame - 2; }));
  EXPECT_EQ(track.Scenes[1].Name, "Film_Scene3");
  EXPECT_EQ(track.Scenes[1].Frame, 1498);
  track.Scenes.erase(track.Scenes.begin() + 2);
  EXPECT_TRUE(AddScene(track, "00:03:00:00", 25, ui));
  EXPECT_EQ(track.Scenes[2].Name, "Film_Scene4") << "the third name is taken";
}

TEST(DisplayModes, FollowAspectAndPermittedDisplays) {
  Track track;
  track.Aspect = "4:3";
  track.DisplayMode = "Only PanScan";
  SetVideoInfo(track);
  EXPECT_EQ(track.DisplayMode, "Not Specified");
  EXPECT_THAT(AdmittedSubDisplayModes(track), ElementsAre("Normal"));
  track.Pan = true;
  EXPECT_THAT(OfferedDisplayModes(track), ElementsAre("Only PanScan", "Both PanScan and LetterBox"));
  SetVideoInfo(track);
  EXPECT_THAT(AdmittedSubDisplayModes(track), ElementsAre("Pan", "Wide", "Wide/Letter"));
  track = {};
  track.Aspect = "16:9";
  EXPECT_EQ(OfferedDisplayModes(track).size(), 4U);
  EXPECT_THAT(AdmittedSubDisplayModes(track), ElementsAre("Wide"));
}

}  // namespace
}  // namespace quorvelant
