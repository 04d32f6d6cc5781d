#include "edit/button_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "boxes.h"
#include "edit/auto_route.h"
#include "edit/subtitle_ticks.h"
#include "model/highlight_groups.h"
#include "support/folders.h"
#include "support/rules_without.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

HighlightArea Area(int x1, int y1, int x2, int y2) {
  return {.X1 = x1, .X2 = x2, .Y1 = y1, .Y2 = y2};
}

TEST(ButtonGroups, TakeTheAreaOfTheirNamesPlace) {
  HighlightPlay turned;
  turned.ButtonModes = {"Pan", "wide", "LETTER"};
  EXPECT_THAT(ButtonGroupsOf(turned, "16:9", "Both PanScan and LetterBox"),
              ElementsAre(ButtonGroup{1, 1}, ButtonGroup{2, 2}, ButtonGroup{4, 0}));
  EXPECT_THAT(ButtonGroupsOf(turned, "16:9", "Not Specified"), ElementsAre(ButtonGroup{1, 1}));
  EXPECT_THAT(ButtonGroupsOf(turned, "4:3", ""), ElementsAre(ButtonGroup{0, 1}));
}

TEST(ButtonRules, ColumnsOfScreenAndDisc) {
  EXPECT_EQ(DiscColumn(767, 768), 719);
  EXPECT_EQ(DiscColumn(1, 1024), 1);
  EXPECT_EQ(ScreenColumn(719, 640), 639);
  for (const int columns : {768, 1024, 853}) {
    for (int x = 0; x < 720; ++x) {
      ASSERT_EQ(DiscColumn(ScreenColumn(x, columns), columns), x) << columns;
    }
  }
  EXPECT_EQ(ScreenColumns({.Ntsc = true, .ShowsWide = true}, 0), 853);
  EXPECT_EQ(ScreenColumns({.Ntsc = true, .ShowsWide = true}, 1), 640);
  EXPECT_EQ(ScreenColumns({.ShowsWide = true, .Mode = ViewMode::Wide}, 0), 1024);
}

TEST(ButtonRules, DragsOfThreePixelsMakeButtonsWithFreeNames) {
  const ButtonView view{};
  std::vector<EditedButton> buttons;
  EXPECT_FALSE(AddButton(buttons, Area(10, 10, 12, 40), view));
  EXPECT_FALSE(AddButton(buttons, Area(10, 10, 40, 12), view));
  EXPECT_FALSE(AddButton(buttons, Area(-50, 10, 0, 40), view));  // nothing of it is on the picture
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(AddButton(buttons, Area(10, 10, 13, 13), view));
  }
  EXPECT_EQ(buttons[2].Button.Name, "Button_3");
  EXPECT_EQ(buttons[2].Button.Number, 3);
  EXPECT_TRUE(RemoveButton(buttons[1], Consent::Given).IsDone());
  EXPECT_TRUE(AddButton(buttons, Area(10, 10, 13, 13), view));
  EXPECT_EQ(buttons[3].Button.Name, "Button_4");  // the removed one keeps its name until the set is saved
  HighlightPlay saved;
  saved.Buttons = KeptButtons(buttons);
  buttons = EditedButtons(saved, view);
  EXPECT_TRUE(AddButton(buttons, Area(10, 10, 13, 13), view));
  EXPECT_EQ(buttons[3].Button.Name, "Button_2");
}

TEST(ButtonRules, RectanglesGoToAllGroupsInDiscPixels) {
  const ButtonView view{.ShowsWide = true, .Mode = ViewMode::Wide, .DisplayModes = 3};
  std::vector<EditedButton> buttons;
  ASSERT_TRUE(AddButton(buttons, Area(2000, 600, 512, 100), view));
  const HighlightArea disc = Area(360, 100, 719, 575);
  EXPECT_THAT(buttons[0].Button.Areas, ElementsAre(disc, disc, disc));
  EXPECT_EQ(buttons[0].Screen[0], Area(512, 100, 1023, 575));
  EXPECT_EQ(buttons[0].Screen[1], Area(384, 100, 767, 575));
  const ButtonView letter{.ShowsWide = true, .Mode = ViewMode::LetterBox, .DisplayModes = 3};
  MoveButton(buttons[0], Area(0, 10, 100, 20), letter, false);
  EXPECT_EQ(buttons[0].Button.Areas[0], disc);
  EXPECT_EQ(buttons[0].Button.Areas[1], Area(0, 10, 94, 20));
  EXPECT_EQ(ButtonAt(buttons, 100, 20, letter), 0U);
  EXPECT_EQ(ButtonAt(buttons, 101, 20, letter), std::nullopt);
  EXPECT_EQ(ButtonAt(buttons, 100, 20, view), std::nullopt);
}

std::vector<EditedButton> Three() {
  std::vector<EditedButton> buttons(3);
  for (std::size_t i = 0; i < 3; ++i) {
    buttons[i].Button.Name = std::string(1, static_cast<char>('a' + i));
    buttons[i].Button.Number = static_cast<int>(i + 1);
  }
  return buttons;
}

std::string LinksOf(const HighlightButton& button) {
  return button.Left + button.Right + button.Up + button.Down;
}

TEST(AutoRoute, RingsJoinLiveButtons) {
  std::vector<EditedButton> buttons = Three();
  AutoRoute(buttons, Route::Ring);
  EXPECT_EQ(LinksOf(buttons[0].Button), "cbcb");
  buttons[1].Removed = true;
  buttons[1].Button.Left = "stays";
  AutoRoute(buttons, Route::Ring);
  EXPECT_EQ(LinksOf(buttons[0].Button), "cccc");
  EXPECT_EQ(LinksOf(buttons[2].Button), "aaaa");
  EXPECT_EQ(buttons[1].Button.Left, "stays");
  const std::vector<HighlightButton> kept = KeptButtons(buttons);
  ASSERT_EQ(kept.size(), 2U);
  EXPECT_EQ(kept[1].Name, "c");
  EXPECT_EQ(kept[1].Number, 2);

  std::vector<HighlightButton> one(1);
  one[0].Name = "alone";
  for (const Route route : {Route::Ring, Route::Geometry}) {
    AutoRoute(one, route);
    EXPECT_EQ(one[0].Up, "alone");
  }
  EXPECT_THAT(OfferedRoutes(PlayersWithout(&Rules::RoutesByGeometry)), ElementsAre(Route::Ring));
  EXPECT_THAT(OfferedRoutes(Rules::Players), ElementsAre(Route::Geometry, Route::Ring));
}

TEST(AutoRoute, GeometryLeadsToTheNearestThatWay) {
  const struct {
    const char* What;
    std::vector<HighlightArea> Areas;
    std::vector<std::string> Links;  // left, right, up, down of a, b, c, ...
  } cases[] = {
      {"a grid goes round in rows and columns, whatever the order of its buttons",
       {Area(300, 100, 400, 150), Area(100, 100, 200, 150), Area(100, 300, 200, 350),
        Area(300, 300, 400, 350)},
       {"bbdd", "aacc", "ddbb", "ccaa"}},
      {"a list: level moves read on",
       {Area(100, 100, 200, 130), Area(100, 200, 200, 230), Area(100, 300, 200, 330)},
       {"cbcb", "acac", "baba"}},
      {"a tall button beside three",
       {Area(0, 0, 100, 300), Area(200, 0, 300, 80), Area(200, 110, 300, 190), Area(200, 220, 300, 300)},
       {"ccbc", "aadc", "aabd", "aacb"}},
      {"two askew", {Area(0, 0, 50, 50), Area(400, 100, 450, 150)}, {"bbbb", "aaaa"}},
  };
  for (const auto& test : cases) {
    std::vector<HighlightButton> buttons(test.Areas.size());
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      buttons[i].Name = std::string(1, static_cast<char>('a' + i));
      buttons[i].Areas[1] = test.Areas[i];
    }
    AutoRoute(buttons, Route::Geometry, 1);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      EXPECT_EQ(LinksOf(buttons[i]), test.Links[i]) << test.What << ", " << buttons[i].Name;
    }
  }
}

// Whether every button can be reached from every other, and none links to itself.
bool HasNoDeadEnd(const std::vector<HighlightButton>& buttons) {
  for (const HighlightButton& from : buttons) {
    std::set<std::string> reached{from.Name};
    for (std::size_t before = 0; before < reached.size();) {
      before = reached.size();
      for (const HighlightButton& button : buttons) {
        if (reached.contains(button.Name)) {
          reached.insert({button.Left, button.Right, button.Up, button.Down});
        }
      }
    }
    if (reached.size() < buttons.size() || LinksOf(from).find(from.Name) != std::string::npos) {
      return false;
    }
  }
  return true;
}

TEST(AutoRoute, GeometryHasNoDeadEnds) {
  std::mt19937 random(11);
  for (int round = 0; round < 2000; ++round) {
    std::vector<HighlightButton> buttons(2 + random() % 12);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      const int x = static_cast<int>(random() % 8) * 80;
      const int y = static_cast<int>(random() % 8) * 60;
      buttons[i].Name = std::string(1, static_cast<char>('a' + i));
      buttons[i].Areas[0] =
          Area(x, y, x + 10 + static_cast<int>(random() % 200), y + 10 + static_cast<int>(random() % 150));
    }
    AutoRoute(buttons, Route::Geometry);
    ASSERT_TRUE(HasNoDeadEnd(buttons)) << round;
  }
}

TEST(ButtonRules, LinksAndRemovals) {
  std::vector<EditedButton> buttons = Three();
  LinkButton(buttons, 0, 0, LinkDirection::Up);
  LinkButton(buttons, 0, 1, LinkDirection::Left);
  LinkButton(buttons, 0, 2, LinkDirection::Down);
  EXPECT_THAT((std::array{buttons[0].Button.Up, buttons[0].Button.Left, buttons[0].Button.Down}),
              ElementsAre("", "b", "c"));
  const Outcome asked = RemoveButton(buttons[1], Consent::None);
  EXPECT_EQ(asked.Result, Outcome::Kind::Asks);
  ExpectBox(asked.Words);
  EXPECT_FALSE(buttons[1].Removed);
  EXPECT_TRUE(RemoveButton(buttons[1], Consent::Given).IsDone());
  EXPECT_TRUE(buttons[1].Removed);
}

TEST(ButtonRules, SubtitlesUnderButtonsAreForcedAndStaySo) {
  Track track;
  HighlightPlay& set = track.HighlightPlays.emplace_back();
  set.StartTimeToVideo = set.Duration = "00:00:10:00";
  std::vector<SubPicturePlay>& plays = track.SubStreams.emplace_back().SubPlays;
  plays.resize(2);
  SubPicturePlay& under = plays[0];
  SubPicturePlay& after = plays[1];
  under.Start = "00:00:19:24";
  after.Start = "00:00:20:00";
  under.Duration = after.Duration = "00:00:01:00";
  std::vector<EditedButton> buttons = Three();
  buttons[0].Removed = true;
  SaveButtons(track, set, buttons, 25);
  EXPECT_TRUE(track.HasHighlights);
  EXPECT_THAT(set.ButtonModes, ElementsAre("wide", "letter", "pan"));
  EXPECT_EQ(set.Buttons.size(), 2U);
  EXPECT_TRUE(under.Forced);
  EXPECT_FALSE(after.Forced);
  ExpectBox(*RefuseForcedMark(under, false, track.HighlightPlays, 25));
  EXPECT_FALSE(RefuseForcedMark(under, true, track.HighlightPlays, 25));
  EXPECT_FALSE(RefuseForcedMark(after, false, track.HighlightPlays, 25));

  after.File = "gone.bmp";
  ExpectBox(*RefuseUse(after, "/nowhere"));
  under.File = SourceFile("README.md");
  EXPECT_FALSE(RefuseUse(under, ""));
}

}  // namespace
}  // namespace quorvelant
