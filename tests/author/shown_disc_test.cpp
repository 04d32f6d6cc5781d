// Whole discs of everything that shows besides motion video: subtitles, slides, stills, and menus on all of
// them, pressed by libdvdnav.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/timecode.h"
#include "disc_maker.h"
#include "model/default_structure.h"
#include "picture/bmp.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/vob_walk.h"
#include "verify/read_back.h"

namespace quorvelant {
namespace {

using testing::IsEmpty;

struct Shown {
  const char* Name;
  VideoSample Video;
  const char* DisplayMode;
  const char* Displays;  // of the groups of buttons
  quorvelant::Rules Rule;
};

// The traditional rules but for the rounding of clocks, which brings packs closer than a sector's time, and
// for the sound that waits behind a whole unit.
Rules ClassicInStep() {
  Rules rules = Rules::Classic;
  rules.OneScrRounding = true;
  rules.AudioBetweenUnitPacks = true;
  return rules;
}

class ShownDisc : public testing::TestWithParam<Shown> {
 protected:
  ShownDisc() : maker_(GetParam().Video) {
    const bool ntsc = GetParam().Video.Standard == "NTSC";
    fps_ = ntsc ? 30 : 25;
    height_ = ntsc ? 480 : 576;
    film_ = SampleVideo(GetParam().Video);
    MakeFilm();
    MakeSlides();
    MakeMenus();
  }

  std::string Bitmap(int width, int height, std::uint32_t color) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        picture.Set(x, y, (x / 8 + y / 8) % 2 == 0 ? color : 0xFFFFFF);
      }
    }
    const Bytes bmp = WriteBmp(picture);
    return maker_.Temp.Write(fmt::format("b{}.bmp", bitmaps_++), std::string(bmp.begin(), bmp.end()));
  }

  std::string Time(int frames) const { return FramesToTimecode(frames, fps_); }

  Track& TrackOf(int index) { return maker_.Disc.Tracks[static_cast<std::size_t>(index)]; }

  void AddSubtitle(int track, std::size_t stream, int start, int frames, bool forced) {
    Track& target = TrackOf(track);
    target.HasSubs = true;
    if (target.SubStreams.size() <= stream) {
      target.SubStreams.resize(stream + 1);
      target.SubStreams.back().StreamNumber = static_cast<std::int32_t>(stream);
    }
    SubPicturePlay play;
    play.ConversionP = 0xFFFFFF;
    play.ColorP = 1;
    play.ContrastP = 15;
    play.ContrastBg = forced ? 0 : 15;
    play.X1 = 100;
    play.Y1 = 100;
    play.File = Bitmap(400, 250, 0x000000);
    play.Start = Time(start);
    play.Duration = Time(frames);
    play.Forced = forced;
    target.SubStreams[stream].SubPlays.push_back(play);
  }

  // Buttons whose four arrows lead to four others, in colours and places that differ by scheme and group.
  void AddButtons(int track, int start, int frames) {
    Track& target = TrackOf(track);
    target.HasHighlights = true;
    target.DisplayMode = GetParam().DisplayMode;
    HighlightPlay& set = target.HighlightPlays.emplace_back();
    set.ButtonModes = {"wide", "letter", "pan"};
    set.StartTimeToVideo = Time(start);
    set.Duration = Time(frames);
    set.SelectionEndTime = Time(0);
    set.ForcedSelect = 1;
    for (std::int32_t i = 0; i < 3; ++i) {
      set.Schemes.at(static_cast<std::size_t>(i)) = {
          {i, i + 1, i + 2, i + 3}, {15, 14, 13, i}, {i + 8, i + 7, i + 6, i + 5}, {12, 11, 10, i + 1}};
    }
    for (std::int32_t i = 0; i < ButtonCount; ++i) {
      const auto other = [i](int steps) { return fmt::format("B{}", (i + steps) % ButtonCount); };
      HighlightButton& button = set.Buttons.emplace_back();
      button.Name = other(0);
      button.Number = i + 1;
      button.Right = other(1);
      button.Up = other(2);
      button.Down = other(3);
      button.Left = other(4);
      button.ColorScheme = 1 + i % 3;
      for (std::int32_t place = 0; place < 3; ++place) {
        const std::int32_t x = 20 + 130 * i + 8 * place;
        button.Areas.at(static_cast<std::size_t>(place)) = {x, x + 80, 110 + 8 * place, 170 + 8 * place};
      }
    }
  }

  // What a player should make of the buttons of a track's first set.
  void ExpectButtons(int title, const std::vector<int>& pressed, int track) {
    const HighlightPlay& set = TrackOf(track).HighlightPlays[0];
    const MenuPage page = LookAtMenu(maker_.Folder, title, pressed);
    EXPECT_EQ(page.Displays, GetParam().Displays) << title;
    EXPECT_EQ(page.Endless, track == stillTrack_ || track == timedTrack_ ||
                                (track == pageTrack_ && GetParam().Rule.ButtonsOutlastStillTime))
        << title;
    ASSERT_EQ(page.Buttons.size(), set.Buttons.size()) << title;
    for (std::size_t i = 0; i < set.Buttons.size(); ++i) {
      const MenuButton& seen = page.Buttons[i];
      const HighlightButton& button = set.Buttons[i];
      std::string leads;
      for (const std::string& name : {button.Up, button.Down, button.Left, button.Right}) {
        leads += static_cast<char>(name[1] + 1);
      }
      EXPECT_EQ(seen.Leads, leads) << button.Name;
      const ColorScheme& scheme = set.Schemes.at(static_cast<std::size_t>(button.ColorScheme - 1));
      EXPECT_EQ(seen.Selected, Nibbles(scheme.SelectionColor, scheme.SelectionContrast)) << button.Name;
      EXPECT_EQ(seen.Activated, Nibbles(scheme.ActionColor, scheme.ActionContrast)) << button.Name;
      for (std::size_t group = 0; group < seen.Areas.size(); ++group) {
        const char display = page.Displays[group];
        const HighlightArea& area = button.Areas.at(display == '4' ? 2 : display == '2' ? 1 : 0);
        EXPECT_EQ(
            (HighlightArea{static_cast<int>(seen.Areas[group][0]), static_cast<int>(seen.Areas[group][1]),
                           static_cast<int>(seen.Areas[group][2]), static_cast<int>(seen.Areas[group][3])}),
            area)
            << button.Name << display;
      }
    }
  }
  static std::uint32_t Nibbles(const ColorQuad& colors, const ColorQuad& contrasts) {
    std::uint32_t all = 0;
    for (const ColorQuad* quad : {&colors, &contrasts}) {
      for (const std::int32_t value : *quad) {
        all = all << 4U | static_cast<std::uint32_t>(value);
      }
    }
    return all;
  }

  void Press(PGC_P& chain, std::size_t program, const std::vector<std::string>& commands) {
    Cell_P& cell = *chain.PG.Item(program)->Cell.Item(1);
    for (const std::string& command : commands) {
      AddCommand(cell.ButtonCommands.emplace_back().Commands, "Button", command);
    }
  }

  void MakeFilm() {
    filmTrack_ = maker_.AddTrack("Film", film_, {SampleAc3({.Seconds = 6})}, {0, 60});
    AddSubtitle(filmTrack_, 0, 10, 30, false);
    AddSubtitle(filmTrack_, 0, 60, 50, false);
    AddSubtitle(filmTrack_, 1, 60, 20, true);
  }

  void MakeSlides() {
    slideTrack_ = maker_.AddTrack("Slides", Bitmap(720, height_, 0x4060A0),
                                  {SampleAc3({.Seconds = 6}), SampleWav({.Seconds = 3.5})}, {0, 50, 80});
    Track& slides = TrackOf(slideTrack_);
    slides.TrackType = "SlideShow";
    slides.VideoPlays.emplace_back().File = Bitmap(360, height_ / 2, 0xA02040);
    slides.VideoPlays.emplace_back().File =
        SampleVideo({.Standard = GetParam().Video.Standard, .Aspect = GetParam().Video.Aspect, .Frames = 1});
    for (std::size_t i = 0; i < 3; ++i) {
      slides.VideoPlays[i].SlideDuration = Time(i == 0 ? 50 : 30);
    }
    slides.ExtendSlideForAudio = true;
    slides.ExtendFinalSubtitle = true;
    AddSubtitle(slideTrack_, 0, 20, 20, false);
    AddSubtitle(slideTrack_, 0, 50, 20, false);
    AddSubtitle(slideTrack_, 0, 85, 20, false);
  }

  void MakeMenus() {
    // The title menu: a still that waits for ever, with sound or without.
    const std::vector<std::string> sound{SampleAc3({.Seconds = 3})};
    stillTrack_ = maker_.AddTrack("Still", Bitmap(720, height_, 0x208040),
                                  fps_ == 25 ? sound : std::vector<std::string>(), {0});
    TrackOf(stillTrack_).TrackType = "Still";
    AddSubtitle(stillTrack_, 0, 0, 100, true);
    AddButtons(stillTrack_, 0, 100);
    PGC_P& top = maker_.TitleMenu();
    maker_.PlaceAll(top, stillTrack_, maker_.Disc.Disc.Item(1)->VTSMenuInfo);
    top.PG.Item(1)->Cell.Item(1)->StillTime = 255;
    Press(top, 1,
          {"JumpTT VTS1_Title1", "JumpTT VTS2_Title1", "JumpSS vts_1, vts_ttn_1 : RootMenu",
           "JumpTT VTS3_Title1", "JumpSS vts_2, vts_ttn_1 : RootMenu"});
    // Pages: slides, each a cell that waits.
    pageTrack_ = maker_.AddTrack("Pages", Bitmap(720, height_, 0x805020), {}, {0, 12});
    Track& pages = TrackOf(pageTrack_);
    pages.TrackType = "SlideShow";
    pages.VideoPlays.emplace_back().File = Bitmap(720, height_, 0x202080);
    pages.VideoPlays[0].SlideDuration = pages.VideoPlays[1].SlideDuration = Time(12);
    for (const int page : {0, 12}) {
      AddSubtitle(pageTrack_, 0, page, 12, true);
      AddButtons(pageTrack_, page, 12);
    }
    PGC_P& root = AddSetWith(slideTrack_, pageTrack_);
    for (PG_P& program : root.PG) {
      program.Cell.Item(1)->StillTime = 255;
    }
    Press(root, 1,
          {"LinkPGN Root1_PG2", "JumpVTS_TT VTS1_Title1", "JumpVTS_PTT VTS1_Title1_PGC1_PG3",
           "LinkPGN Root1_PG1", "JumpVTS_PTT VTS1_Title1_PGC1_PG2"});
    Press(root, 2,
          {"LinkPGN Root1_PG1", "JumpVTS_PTT VTS1_Title1_PGC1_PG2", "JumpSS TitleMenu", "LinkTopPG, button=2",
           "JumpVTS_TT VTS1_Title1"});
    // A menu in motion that loops.
    loopTrack_ = maker_.AddTrack("Loop", film_, {}, {0});
    AddSubtitle(loopTrack_, 0, 0, GetParam().Video.Frames, true);
    AddButtons(loopTrack_, 0, GetParam().Video.Frames);
    Press(AddSetWith(filmTrack_, loopTrack_), 1,
          {"JumpVTS_TT VTS2_Title1", "JumpVTS_PTT VTS2_Title1_PGC1_PG2", "JumpSS TitleMenu",
           "LinkTopPG, button=2", "NOP"});
    // Stills that wait for a time: one is the title, the other its menu.
    timedTrack_ = TimedStill("Timed", 40);
    AddSubtitle(timedTrack_, 0, 0, 40, true);
    AddButtons(timedTrack_, 0, 40);
    Press(AddSetWith(TimedStill("Alone", 50), timedTrack_), 1,
          {"JumpVTS_TT VTS3_Title1", "JumpSS TitleMenu", "LinkTopPG, button=4", "NOP", "NOP"});
  }

  int TimedStill(const std::string& name, int frames) {
    const int track = maker_.AddTrack(name, Bitmap(720, height_, 0x602060), {}, {0});
    TrackOf(track).TrackType = "Still";
    TrackOf(track).VideoPlays[0].SlideDuration = Time(frames);
    return track;
  }

  // The root menu of a set with a title.
  PGC_P& AddSetWith(int title, int menu) {
    VTS_P& set = maker_.AddSet();
    PGC_P& root = DiscMaker::RootMenu(set);
    maker_.PlaceAll(root, menu, set.VTSMenuInfo);
    maker_.AddTitle(set, title);
    return root;
  }

  static constexpr int ButtonCount = 5;
  DiscMaker maker_;
  std::string film_;
  int fps_ = 25, height_ = 576, bitmaps_ = 0;
  int filmTrack_ = 0, slideTrack_ = 0, stillTrack_ = 0, pageTrack_ = 0, loopTrack_ = 0, timedTrack_ = 0;
};

TEST_P(ShownDisc, EveryReaderAgreesAndEveryButtonLeadsWhereItSays) {
  const AuthorResult result = maker_.Author(GetParam().Rule);
  ASSERT_EQ(result.Outcome, AuthorOutcome::Done);
  for (const Message& message : maker_.Ui.Messages) {
    ADD_FAILURE() << message.Text << " " << message.Place;
  }
  EXPECT_THAT(ReadBack(maker_.Folder, maker_.Ui), IsEmpty());
  const DiscWalk walk = WalkDisc(maker_.Folder);
  EXPECT_THAT(walk.Complaints, IsEmpty());
  for (const WalkedTitle& title : walk.Titles) {
    EXPECT_TRUE(title.ReachedEnd) << title.Title;
    EXPECT_EQ(title.ChaptersSeen.size(), static_cast<std::size_t>(title.Chapters)) << title.Title;
  }
  struct Way {
    int Title;
    std::vector<int> Buttons;
    const char* Leads;
  };
  for (const Way& way : {Way{0, {1}, "title 1 chapter 1"},
                         Way{0, {2}, "title 2 chapter 1"},
                         Way{0, {3, 3}, "title 1 chapter 3"},
                         Way{0, {4}, "title 3 chapter 1"},
                         Way{0, {5, 2}, "title 2 chapter 2"},
                         Way{1, {2}, "title 1 chapter 1"},
                         Way{1, {3}, "title 1 chapter 3"},
                         Way{1, {5}, "title 1 chapter 2"},
                         Way{1, {1, 2}, "title 1 chapter 2"},
                         Way{1, {1, 5}, "title 1 chapter 1"},
                         Way{1, {4, 1, 4, 3, 2}, "title 2 chapter 1"},
                         Way{1, {1, 1, 3}, "title 1 chapter 3"},
                         Way{2, {1}, "title 2 chapter 1"},
                         Way{2, {2}, "title 2 chapter 2"},
                         Way{2, {3, 2}, "title 2 chapter 1"},
                         Way{2, {4, 5, 2}, "title 2 chapter 2"},
                         Way{3, {1}, "title 3 chapter 1"},
                         Way{3, {2, 2}, "title 2 chapter 1"},
                         Way{3, {3, 2, 3, 3}, "title 1 chapter 3"},
                         Way{3, {5, 1}, "title 3 chapter 1"}}) {
    EXPECT_EQ(PressButtons(maker_.Folder, way.Title, way.Buttons), way.Leads)
        << way.Title << " " << testing::PrintToString(way.Buttons);
  }
  ExpectButtons(0, {}, stillTrack_);
  ExpectButtons(1, {}, pageTrack_);
  ExpectButtons(1, {1}, pageTrack_);
  ExpectButtons(2, {}, loopTrack_);
  ExpectButtons(3, {}, timedTrack_);
  for (const char* vob : {"VIDEO_TS.VOB", "VTS_01_0.VOB", "VTS_01_1.VOB", "VTS_02_0.VOB", "VTS_02_1.VOB",
                          "VTS_03_0.VOB", "VTS_03_1.VOB"}) {
    EXPECT_THAT(Decode({maker_.Folder + "/" + vob}).Complaints, IsEmpty()) << vob;
  }
  // Buttons of the still never expire; those of a page that waits expire with its 12 frames by tradition.
  const auto buttonsEnd = [&](const char* vob) {
    return WalkVobs({maker_.Folder + vob}).at(0).Field(147, 4);
  };
  EXPECT_EQ(buttonsEnd("/VIDEO_TS.VOB"), 0xFFFFFFFFU);
  EXPECT_EQ(buttonsEnd("/VTS_01_0.VOB"),
            GetParam().Rule.ButtonsOutlastStillTime ? 0xFFFFFFFFU : 25257U + 12 * (fps_ == 25 ? 3600 : 3003));
  const auto errors = CheckerErrors(maker_.Folder);
  if (!errors) {
    GTEST_SKIP() << "the folder's checker is not at hand";
  }
  EXPECT_THAT(*errors, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ShownDisc,
    testing::Values(
        Shown{"Pal", {.Frames = 150, .Closed = true}, "Both PanScan and LetterBox", "0", Rules::Players},
        Shown{"NtscWide",
              {.Standard = "NTSC", .Aspect = "16:9", .Frames = 150, .Closed = true},
              "Both PanScan and LetterBox",
              "124",
              Rules::Players},
        Shown{"PalWideClassic",
              {.Aspect = "16:9", .Frames = 150, .Closed = true},
              "Only LetterBox",
              "12",
              ClassicInStep()},
        Shown{"NtscWideClassic",
              {.Standard = "NTSC", .Aspect = "16:9", .Frames = 150, .Closed = true},
              "Only PanScan",
              "14",
              ClassicInStep()}),
    [](const auto& kind) { return std::string(kind.param.Name); });

}  // namespace
}  // namespace quorvelant
