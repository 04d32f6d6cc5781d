#include "edit/overlays.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "boxes.h"
#include "check/messages.h"
#include "edit/messages.h"
#include "edit/saved_frame.h"
#include "film_track.h"
#include "picture/picture_loader.h"
#include "script/script_writer.h"
#include "subpicture/messages.h"
#include "support/folders.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using namespace message;
using testing::ElementsAre;

// A film of 40 s with buttons from 20 to 30 s, a stream with entries at 4 to 6 and 8 to 10 s, an empty one
// and a removed one with an entry.
Project Sample() {
  Project project;
  Track& track = project.Tracks.Add(Film("Film", 1, "16:9"));
  track.DisplayMode = "Only LetterBox";
  track.Letter = true;
  track.VideoFrames = 1000;
  track.SubStreams.resize(3);
  for (const std::size_t stream : {0U, 0U, 2U}) {
    SubPicturePlay& entry = track.SubStreams[stream].SubPlays.emplace_back();
    entry.File = "gone.bmp";
    entry.Start = track.SubStreams[stream].SubPlays.size() == 1 ? "00:00:04:00" : "00:00:08:00";
    entry.Duration = "00:00:02:00";
  }
  track.SubStreams[2].Removed = true;
  HighlightPlay& set = track.HighlightPlays.emplace_back();
  set.StartTimeToVideo = "00:00:20:00";
  set.Duration = "00:00:10:00";
  set.Buttons.resize(1);
  track.HasHighlights = true;
  project.Palettes.Add({.Key = "Default", .PaletteColors = {}});
  return project;
}

struct FilmSession {
  FilmSession() { Session.Replace(Sample(), {}); }
  const Track& Shown() const { return Session.Work().Tracks[0]; }
  const SubPicturePlay& Entry(std::size_t entry) const { return Shown().SubStreams[0].SubPlays.at(entry); }
  EditSession Session{Rules::Players};
};

SubPicturePlay Settings() {
  SubPicturePlay settings;
  settings.File = SourceFile("examples/media/en1.png");
  settings.X1 = 7;
  settings.Start = "00:09:00:00";  // of the entry that the settings were taken from
  settings.StopTime = "00:00:01:00";
  return settings;
}

FourColors Colours(std::int32_t index) {
  return {.Conversion = {1, 2, 3, 0xFF000004}, .Index = {index, 1, 2, 3}, .Contrast = {15, 14, 13, 0}};
}

using Operation = std::function<Outcome(EditSession&)>;

SubtitleMoment At(std::int64_t frame, std::optional<std::size_t> stream = 0) {
  return {0, stream, frame};
}
Operation Timed(std::size_t entry, const SubtitleTimes& times) {
  return [=](EditSession& s) { return SetTimes(s, {0, 0, entry}, times); };
}

constexpr SubtitlePlace Second{0, 0, 1};

TEST(Overlays, EveryRefusalHasItsBoxAndChangesNothing) {
  const auto shown = SpreadColor::Display;
  const struct {
    Operation Do;
    const MessageKind& Kind;
    const char* Says = "";
  } cases[] = {
      {[](auto& s) { return NewSubtitle(s, At(0, {}), Settings()); }, SubtitleStreamMissing},
      {[](auto& s) { return NewSubtitle(s, At(100), Settings()); }, SubtitleExists},
      {[](auto& s) { return NewSubtitle(s, At(99), Settings()); }, SubtitleWithoutRoom, "00:00:04:00"},
      {[](auto& s) { return NewSubtitle(s, At(0, 2), Settings()); }, NoSuchElement, "Sub3"},
      {[](auto& s) { return ReplaceBitmap(s, At(150), "b.bmp"); }, SubtitleMissing},
      {Timed(0, {100, 100}), SubtitleMeetsNext, "(00:00:08:00)"},
      {Timed(0, {1000, 10}), SubtitlePastEnd, "(00:00:40:00)"},
      {Timed(2, {0, 1}), NoSuchElement, "SubPlay3"},
      {[](auto& s) { return NewPalette(s, "Default", {}); }, PaletteNameTaken},
      {[](auto& s) { return NewPalette(s, "", {}); }, PaletteNameless},
      {[](auto& s) { return ChangePalette(s, "Defaults", {}); }, NoSuchElement, "\"Defaults\""},
      {[=](auto& s) { return SpreadColors(s, 0, 0, Colours(16), shown, true); }, PaletteIndexBeyond, "16"},
      {[=](auto& s) { return SpreadColors(s, 0, 2, Colours(1), shown, false); }, NoSuchElement, "Sub3"},
      {[](auto& s) { return NewSubtitle(s, At(170), {}); }, SourceMissing},
      {[](auto& s) { return ReplaceBitmap(s, At(120), SourceFile("README.md")); }, SubtitleNoPicture},
      {[](auto& s) { return SaveFrameAsTrack(s, 1, Picture(8, 8), {"a.bmp"}); }, NoSuchElement, "Track.1"},
      {[](auto& s) { return SaveFrameAsTrack(s, 0, {}, {"a.bmp"}); }, FrameEmpty},
      {[](auto& s) { return SaveFrame(s, Picture(8, 8), {"a.png"}); }, FrameFileUnfit, "'a.png'"},
      {[](auto& s) { return SaveFrame(s, Picture(8, 8), {"/nowhere/a.bmp"}); }, ImageUnwritten,
       "'/nowhere/a.bmp': No such file or directory"},
  };
  FilmSession film;
  const Project before = film.Session.Work();
  for (const auto& test : cases) {
    const Outcome outcome = test.Do(film.Session);
    EXPECT_EQ(outcome.Result, Outcome::Kind::Refused);
    EXPECT_EQ(outcome.Words.Code, test.Kind.Code);
    EXPECT_THAT(outcome.Words.Text, testing::HasSubstr(test.Says));
    ExpectBox(outcome.Words);
  }
  EXPECT_FALSE(film.Session.CanUndo());
  EXPECT_TRUE(film.Session.Work().SameContent(before));
}

TEST(Overlays, EveryOperationCanBeUndone) {
  TempFolder folder;
  const std::string bitmap = folder / "frame.bmp";
  const FourColors nine = Colours(9);
  const struct {
    Operation Do;
    const char* Key;
    bool Adds = false;
  } cases[] = {
      {[](auto& s) { return NewSubtitle(s, At(170), Settings()); }, "Track.0.Sub1.SubPlay2", true},
      {[](auto& s) { return ReplaceBitmap(s, At(120), SourceFile("examples/media/de1.png")); },
       "Track.0.Sub1.SubPlay1"},
      {Timed(0, {900, 10}), "Track.0.Sub1.SubPlay3", true},
      {[](auto& s) { return SetUsed(s, Second, false); }, "Track.0.Sub1.SubPlay2"},
      {[](auto& s) { return SetForcedMark(s, Second, true); }, "Track.0.Sub1.SubPlay2"},
      {[=](auto& s) { return SpreadColors(s, 0, 0, nine, SpreadColor::Conversion, false); }, "Track.0.Sub1"},
      {[=](auto& s) { return SpreadColors(s, 0, 0, nine, SpreadColor::Display, true); }, "Track.0"},
      {[](auto& s) { return NewPalette(s, ProposedPaletteName(s.Work()), {5}); }, "Palette_2", true},
      {[](auto& s) { return ChangePalette(s, "Default", {6}); }, "Default"},
      {[&](auto& s) { return SaveFrameAsTrack(s, 0, Picture(360, 288), {bitmap}); }, "Track.1.Video1", true},
  };
  FilmSession film;
  std::vector<Project> states{film.Session.Work()};
  for (const auto& test : cases) {
    EXPECT_EQ(test.Do(film.Session).Key, test.Key);
    EXPECT_FALSE(film.Session.Work().SameContent(states.back())) << test.Key;
    states.push_back(film.Session.Work());
    if (!test.Adds) {
      EXPECT_TRUE(test.Do(film.Session).IsDone());  // what is so already is no step
    }
  }
  for (auto state = states.rbegin() + 1; state != states.rend(); ++state) {
    film.Session.Undo();
    EXPECT_TRUE(film.Session.Work().SameContent(*state));
  }
  EXPECT_FALSE(film.Session.CanUndo());
}

TEST(Overlays, ANewSubtitleTakesTheSettingsAndItsPlace) {
  FilmSession film;
  EXPECT_TRUE(NewSubtitle(film.Session, At(170), Settings()).IsDone());
  EXPECT_EQ(film.Entry(1).Start, "00:00:06:20");
  EXPECT_EQ(film.Entry(1).End, "00:00:07:24");  // a frame before the next
  EXPECT_EQ(film.Entry(1).Duration, "00:00:01:04");
  EXPECT_EQ(film.Entry(1).StopTime, "");
  EXPECT_EQ(film.Entry(1).X1, 7);
  EXPECT_FALSE(film.Entry(1).Forced);
  EXPECT_TRUE(film.Shown().HasSubs);
  EXPECT_TRUE(NewSubtitle(film.Session, At(600), Settings()).IsDone());  // under the buttons
  EXPECT_TRUE(film.Entry(3).Forced);
  EXPECT_EQ(SetForcedMark(film.Session, {0, 0, 3}, false).Words.Text,
            "Subtitles must always be set to Forced when highlight buttons exist");
  EXPECT_TRUE(SetTimes(film.Session, {0, 0, 2}, {700, 10}).IsDone());  // moved under them
  EXPECT_TRUE(film.Entry(3).Forced);
}

TEST(Overlays, ASubtitleWithoutItsBitmapIsNoLongerUsed) {
  FilmSession film;
  ExpectBox(*DeselectMissing(film.Session, {0, 0, 0}));
  EXPECT_FALSE(film.Entry(0).Used);
  EXPECT_EQ(SetUsed(film.Session, {0, 0, 0}, true).Words.Title, "Bitamp View Error");
  EXPECT_TRUE(ReplaceBitmap(film.Session, {0, 0, 100}, Settings().File).IsDone());
  EXPECT_TRUE(SetUsed(film.Session, {0, 0, 0}, true).IsDone());
  EXPECT_FALSE(DeselectMissing(film.Session, {0, 0, 0}));
  EXPECT_TRUE(film.Entry(0).Used);
}

TEST(Overlays, ColoursSpreadOverAStreamOrAllLiveOnes) {
  FilmSession film;
  EXPECT_TRUE(NewSubtitle(film.Session, {0, 1, 0}, Settings()).IsDone());
  EXPECT_TRUE(SpreadColors(film.Session, 0, 0, Colours(9), SpreadColor::Conversion, false).IsDone());
  EXPECT_TRUE(SpreadColors(film.Session, 0, 1, Colours(9), SpreadColor::Display, true).IsDone());
  const auto& streams = film.Shown().SubStreams;
  for (const SubPicturePlay& entry : streams[0].SubPlays) {
    EXPECT_THAT(ColorsOf(entry).Conversion, ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(ColorsOf(entry).Index, ElementsAre(9, 1, 2, 3));
    EXPECT_THAT(ColorsOf(entry).Contrast, ElementsAre(15, 14, 13, 0));
  }
  EXPECT_EQ(streams[1].SubPlays[0].ColorE2, 9);
  EXPECT_EQ(streams[1].SubPlays[0].ConversionE2, 0U);
  EXPECT_EQ(streams[2].SubPlays[0].ColorE2, 0);  // removed
}

TEST(SavedFrame, BecomesAStillOfFullSizeAndTheAspectOfItsSource) {
  TempFolder folder;
  FilmSession film;
  const std::string file = folder / "frame.bmp";
  Picture frame(352, 288);
  frame.Set(0, 0, 0x0000FF);
  frame.Set(351, 287, 0xFF0000);
  EXPECT_EQ(SaveFrame(film.Session, frame, {file}).Key, file);
  const Outcome asked = SaveFrameAsTrack(film.Session, 0, frame, {file});
  EXPECT_TRUE(asked.Words.Is(message::AskReplaceImage));
  ExpectBox(asked.Words);
  EXPECT_EQ(BmpLoader().Load(file), frame);
  EXPECT_TRUE(SaveFrameAsTrack(film.Session, 0, frame, {file, Consent::Given}).IsDone());
  const Picture saved = BmpLoader().Load(file);
  EXPECT_EQ(saved.Width, 720);
  EXPECT_EQ(saved.Height, 576);
  EXPECT_EQ(saved.At(0, 0), 0x0000FFU);
  EXPECT_EQ(saved.At(719, 575), 0xFF0000U);
  const Track& still = film.Session.Work().Tracks[1];
  EXPECT_EQ(still.TrackName + still.TrackType + still.Aspect + still.Resolution + still.DisplayMode,
            "Track_2Still16:9720x576Only LetterBox");
  EXPECT_EQ(still.Scenes.size(), 1U);
  EXPECT_NE(WriteScript(film.Session.Work()).find("Aspect=16:9"), std::string::npos);
}

TEST(SavedFrame, ResizingKeepsFlatColoursAndMiddles) {
  Picture flat(3, 5);
  for (std::uint8_t& value : flat.Pixels) {
    value = 200;
  }
  const Picture wide = Resized(flat, 720, 480);
  EXPECT_TRUE(std::ranges::all_of(wide.Pixels, [](std::uint8_t value) { return value == 200; }));
  Picture two(2, 1);
  two.Set(1, 0, 0xFFFFFF);
  const Picture four = Resized(two, 4, 1);
  EXPECT_EQ(four.At(1, 0), 0x404040U);  // a quarter of the way
  EXPECT_EQ(four.At(2, 0), 0xBFBFBFU);
  EXPECT_EQ(Resized(two, 2, 1), two);
}

}  // namespace
}  // namespace quorvelant
