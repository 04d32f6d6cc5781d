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
  std::string Name;
  VideoSample Video;
  const char* DisplayMode;
  const char* Displays;  // of the groups of buttons
  quorvelant::Rules Rule;
};

void PrintTo(const Shown& shown, std::ostream* out) {
  *out << shown.Name;
}

// The traditional rules but for the rounding of clocks, which brings packs closer than a sector's time, and
// for the sound that waits for a whole unit.
Rules ClassicInStep() {
  Rules rules = Rules::Classic;
  rules.OneScrRounding = true;
  rules.AudioBetweenUnitPacks = true;
  return rules;
}

// The disc of data/shown.qvp: its menus have buttons whose four arrows lead to four others, in colours and
// places that differ by scheme and group.
class ShownDisc : public testing::TestWithParam<Shown> {
 protected:
  ShownDisc() : maker_(GetParam().Video) {
    const VideoSample& video = GetParam().Video;
    const int height = video.Standard == "PAL" ? 576 : 480;
    maker_.Link("film.m2v", SampleVideo(video));
    maker_.Link("frame.m2v", SampleVideo({.Standard = video.Standard, .Aspect = video.Aspect, .Frames = 1}));
    maker_.Link("film.ac3", SampleAc3({.Seconds = 6}));
    maker_.Link("menu.ac3", SampleAc3({.Seconds = 3}));
    maker_.Link("film.wav", SampleWav({.Seconds = 3.5}));
    maker_.Paint("words.bmp", 400, 250, 0x000000);
    maker_.Paint("red.bmp", 360, height / 2, 0xA02040);
    for (const auto& [name, colour] : {std::pair{"blue.bmp", 0x4060A0U},
                                       {"green.bmp", 0x208040U},
                                       {"brown.bmp", 0x805020U},
                                       {"navy.bmp", 0x202080U},
                                       {"purple.bmp", 0x602060U}}) {
      maker_.Paint(name, 720, height, colour);
    }
    maker_.Load("shown.qvp", {{"DISPLAY", GetParam().DisplayMode}});
    for (Track& track : maker_.Disc.Tracks) {  // a script has no aspect of bitmaps
      track.Aspect = video.Aspect;
    }
    for (VTS_P& set : maker_.Disc.Disc) {
      set.VTSTitleInfo.Aspect = set.VTSMenuInfo.Aspect = video.Aspect;
    }
  }

  // What a player should make of the buttons of a track's first set.
  void ExpectButtons(int title, const std::vector<int>& pressed, std::size_t track) {
    const HighlightPlay& set = maker_.Disc.Tracks[track].HighlightPlays[0];
    const MenuPage page = LookAtMenu(maker_.Folder, title, pressed);
    EXPECT_EQ(page.Displays, GetParam().Displays) << title;
    EXPECT_EQ(page.Endless, track == StillTrack || track == TimedTrack ||
                                (track == PageTrack && GetParam().Rule.ButtonsOutlastStillTime))
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

  static constexpr std::size_t StillTrack = 2, PageTrack = 3, LoopTrack = 4, TimedTrack = 5;
  DiscMaker maker_;
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
  ExpectButtons(0, {}, StillTrack);
  ExpectButtons(1, {}, PageTrack);
  ExpectButtons(1, {1}, PageTrack);
  ExpectButtons(2, {}, LoopTrack);
  ExpectButtons(3, {}, TimedTrack);
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
            GetParam().Rule.ButtonsOutlastStillTime
                ? 0xFFFFFFFFU
                : 25257U + 12 * (GetParam().Video.Standard == "PAL" ? 3600 : 3003));
}

TEST_P(ShownDisc, TheCheckerFindsNothing) {
  if (!HasChecker()) {
    GTEST_SKIP() << CheckerMissing;
  }
  ASSERT_EQ(maker_.Author(GetParam().Rule).Outcome, AuthorOutcome::Done);
  EXPECT_THAT(CheckerErrors(maker_.Folder), IsEmpty());
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
    [](const auto& kind) { return kind.param.Name; });

}  // namespace
}  // namespace quorvelant
