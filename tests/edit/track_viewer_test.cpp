#include "edit/track_viewer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <tuple>

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Two films of 40 and 30 frames in a row, with a removed one between them.
Project TwoFilms() {
  Project project;
  Track& track = project.Tracks.Add({});
  track.TrackType = "Motion";
  track.Standard = "PAL";
  track.Aspect = "16:9";
  track.DisplayMode = "Both PanScan and LetterBox";
  track.VideoFrames = 70;
  track.VideoPlays.resize(4);
  track.VideoPlays[0].File = "a.m2v";
  track.VideoPlays[1].File = "gone.m2v";
  track.VideoPlays[1].Removed = true;
  track.VideoPlays[2].File = "b.m2v";
  for (const char* mode : {"Wide/Letter", "Pan", "Not Specified", "Letter/Pan", "Wide"}) {
    track.SubStreams.emplace_back().DisplayMode = mode;
  }
  track.SubStreams[4].Removed = true;
  return project;
}

std::optional<PictureIndex> IndexOf(const std::string& path) {
  static const std::map<std::string, PictureIndex> Indexes{
      {"a.m2v", {.Entries = {{0, 0, 100}, {12, 500, 90}, {24, 900, 80}}, .TotalFrames = 40, .Letters = {}}},
      {"b.m2v", {.Entries = {{0, 16, 70}, {15, 400, 60}}, .TotalFrames = 30, .Letters = {}}},
      {"slide.m2v", {.Entries = {{0, 8, 1000}}, .TotalFrames = 1, .Letters = {}}}};
  const auto found = Indexes.find(path);
  return found == Indexes.end() ? std::nullopt : std::optional(found->second);
}

void AddEntry(Track& track, std::size_t stream, const char* start, const char* end,
              const char* duration = "") {
  SubPicturePlay& entry = track.SubStreams[stream].SubPlays.emplace_back();
  entry.Start = start;
  entry.End = end;
  entry.Duration = duration;
}

TEST(TrackViewer, PicturesOfSeveralPlaysStandInARow) {
  Project project = TwoFilms();
  EXPECT_THAT(
      PicturesOf(project, 0, IndexOf),
      ElementsAre(ViewerPicture{0, 0, 0, 100}, ViewerPicture{12, 0, 500, 90}, ViewerPicture{24, 0, 900, 80},
                  ViewerPicture{40, 2, 16, 70}, ViewerPicture{55, 2, 400, 60}));
  project.Tracks[0].VideoPlays[0].File = "unknown.m2v";
  EXPECT_THAT(PicturesOf(project, 0, IndexOf), IsEmpty());

  Track& slides = project.Tracks[0];
  slides.TrackType = "SlideShow";
  slides.VideoPlays[0].File = "slide.bmp";
  slides.VideoPlays[0].SlideDuration = "00:00:10:00";
  slides.VideoPlays[2].File = "slide.m2v";
  slides.VideoPlays[3].File = "last.bmp";
  EXPECT_THAT(
      PicturesOf(project, 0, IndexOf),
      ElementsAre(ViewerPicture{0, 0, 0, 0}, ViewerPicture{250, 2, 8, 1000}, ViewerPicture{262, 3, 0, 0}));
}

TEST(TrackViewer, ViewsFollowAspectAndDisplayMode) {
  const std::tuple<const char*, const char*, std::vector<ViewMode>> cases[] = {
      {"4:3", "Both PanScan and LetterBox", {ViewMode::Normal}},
      {"16:9", "Not Specified", {ViewMode::Wide}},
      {"16:9", "Only PanScan", {ViewMode::Wide, ViewMode::Pan}},
      {"16:9", "Only LetterBox", {ViewMode::Wide, ViewMode::LetterBox}},
      {"16:9", "Both PanScan and LetterBox", {ViewMode::Wide, ViewMode::Pan, ViewMode::LetterBox}}};
  Track track;
  for (const auto& [aspect, mode, views] : cases) {
    track.Aspect = aspect;
    track.DisplayMode = mode;
    EXPECT_EQ(OfferedViews(track), views) << aspect << mode;
    EXPECT_EQ(ButtonViewOf(track, ViewMode::Pan).DisplayModes, views.size());
  }
}

TEST(TrackViewer, StreamsFollowTheWordsOfTheirDisplayMode) {
  Project project = TwoFilms();
  Track& track = project.Tracks[0];
  EXPECT_THAT(StreamsIn(ViewMode::Wide, track), ElementsAre(0, 2));
  EXPECT_THAT(StreamsIn(ViewMode::LetterBox, track), ElementsAre(0, 3));
  EXPECT_THAT(StreamsIn(ViewMode::Pan, track), ElementsAre(1, 3));
  EXPECT_THAT(StreamsIn(ViewMode::Normal, track), IsEmpty());
  track.Aspect = "4:3";
  EXPECT_THAT(StreamsIn(ViewMode::Normal, track), ElementsAre(2));
  const std::tuple<ViewMode, bool, const char*> lines[] = {
      {ViewMode::Normal, false, "that are available for this Viewing Mode (4:3)"},
      {ViewMode::Wide, false, "that are available for this Viewing Mode (Wide)"},
      {ViewMode::Wide, true, "set for this Viewing Mode (Wide)"},
      {ViewMode::Pan, true, "set for this Viewing Mode (Pan-Scan)"},
      {ViewMode::LetterBox, true, "set for this Viewing Mode (LetterBoxed)"}};
  for (const auto& [view, buttons, line] : lines) {
    EXPECT_EQ(StreamsLine(view, buttons), std::string("Subtitle streams ") + line);
  }
}

TEST(TrackViewer, MovesKeepTheExactFrameAndItsPicture) {
  Project project = TwoFilms();
  Track& track = project.Tracks[0];
  AddEntry(track, 0, "00:00:00:13", "00:00:00:20");
  AddEntry(track, 0, "00:00:01:15", "", "00:00:00:10");  // frame 40
  AddEntry(track, 0, "00:00:02:17", "");                 // frame 67, in the last GOP
  const std::vector<ViewerPicture> pictures = PicturesOf(project, 0, IndexOf);
  const ViewerMaterial material{track, pictures};
  ViewerState state = OpenViewer(material);
  EXPECT_EQ(state, (ViewerState{.View = ViewMode::Wide, .Stream = 0}));
  EXPECT_EQ(StatusLine(state, material), "No Subpictures at this time frame");

  constexpr std::size_t None = 99;
  const struct {
    ViewerMove Move;
    std::int64_t Frame;
    std::size_t Picture, Entry;
  } moves[] = {
      {ViewerMove::PrevGop, 0, 0, None}, {ViewerMove::PrevSub, 0, 0, None},  {ViewerMove::NextSub, 13, 1, 0},
      {ViewerMove::PrevSub, 13, 1, 0},   {ViewerMove::NextGop, 24, 2, None}, {ViewerMove::NextSub, 40, 3, 1},
      {ViewerMove::NextSub, 67, 4, 2},   {ViewerMove::NextSub, 67, 4, 2},    {ViewerMove::NextGop, 67, 4, 2},
      {ViewerMove::PrevGop, 40, 3, 1},   {ViewerMove::FirstSub, 13, 1, 0},   {ViewerMove::LastSub, 67, 4, 2}};
  for (const auto& step : moves) {
    state = Moved(state, step.Move, material);
    EXPECT_EQ(std::tuple(state.Frame, state.Picture, state.Entry.value_or(None)),
              std::tuple(step.Frame, step.Picture, step.Entry));
  }
  EXPECT_EQ(StatusLine(state, material),
            "Subpicture Start= 00:00:02:17 ; Subpicture End=CELL_END (Duration=00:00:00:00)");
  state = AtFrame(state, 49, material);
  EXPECT_EQ(state.Picture, 3U);
  EXPECT_EQ(StatusLine(state, material),
            "Subpicture Start= 00:00:01:15 ; Subpicture End=00:00:02:00 (Duration=00:00:00:10)");
  EXPECT_EQ(AtFrame(state, 50, material).Entry, std::nullopt);
  EXPECT_EQ(AtFrame(state, 5000, material).Frame, 69);
  EXPECT_EQ(AtFrame(state, -1, material).Frame, 0);
}

TEST(TrackViewer, AViewTakesAStreamThatItShows) {
  Project project = TwoFilms();
  Track& track = project.Tracks[0];
  AddEntry(track, 1, "00:00:00:00", "00:00:02:00");
  const ViewerMaterial material{track, {}};
  ViewerState state = OpenViewer(material);
  EXPECT_EQ(state.Picture, 0U);  // nothing to show
  EXPECT_EQ(OnStream(state, 1, material), state);
  EXPECT_EQ(OnStream(state, 2, material).Stream, 2U);
  EXPECT_EQ(InView(state, ViewMode::Normal, material), state);
  EXPECT_EQ(InView(state, ViewMode::LetterBox, material).Stream, 0U);  // the same shows here
  state = InView(state, ViewMode::Pan, material);
  EXPECT_EQ(state.Stream, 1U);
  EXPECT_EQ(state.Entry, 0U);
  track.SubStreams[1].Removed = true;
  EXPECT_EQ(Refreshed(state, material).Stream, 3U);
  track.DisplayMode = "Only LetterBox";
  EXPECT_EQ(Refreshed(state, material).View, ViewMode::Wide);
  track.SubStreams.clear();
  EXPECT_EQ(Moved(Refreshed(state, material), ViewerMove::FirstSub, material).Stream, std::nullopt);
}

}  // namespace
}  // namespace quorvelant
