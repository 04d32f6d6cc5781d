#include "edit/button_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit/auto_route.h"
#include "edit/subtitle_ticks.h"
#include "model/highlight_groups.h"
#include "support/folders.h"
#include "support/recording_ui.h"

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

TEST(ButtonRules, DragsMakeButtonsUpToTheLimit) {
  for (const auto& [modes, limit] : {std::pair{1U, 12U}, {2U, 6U}, {3U, 4U}}) {
    const ButtonView view{.DisplayModes = modes};
    std::vector<EditedButton> buttons;
    EXPECT_FALSE(AddButton(buttons, Area(10, 10, 12, 40), view));
    EXPECT_FALSE(AddButton(buttons, Area(10, 10, 40, 12), view));
    EXPECT_FALSE(AddButton(buttons, Area(-50, 10, 0, 40), view));  // nothing of it is on the picture
    for (unsigned i = 0; i < limit; ++i) {
      EXPECT_TRUE(AddButton(buttons, Area(10, 10, 13, 13), view));
    }
    EXPECT_FALSE(AddButton(buttons, Area(10, 10, 13, 13), view));
    EXPECT_EQ(buttons.size(), limit);
    EXPECT_EQ(buttons.back().Button.Name, "Button_" + std::to_string(limit));
    EXPECT_EQ(buttons.back().Button.Number, static_cast<int>(limit));
  }
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

TEST(AutoRoute, IsARingThatNamesRemovedButtonsToo) {
  std::vector<EditedButton> buttons = Three();
  buttons[1].Removed = true;
  AutoRoute(buttons);
  const HighlightButton& first = buttons[0].Button;
  EXPECT_THAT((std::array{first.Left, first.Up, first.Right, first.Down}), ElementsAre("c", "c", "b", "b"));
  EXPECT_EQ(buttons[1].Button.Left, "");
  const std::vector<HighlightButton> kept = KeptButtons(buttons);
  ASSERT_EQ(kept.size(), 2U);
  EXPECT_EQ(kept[1].Name, "c");
  EXPECT_EQ(kept[1].Number, 2);

  std::vector<HighlightButton> one(1);
  one[0].Name = "alone";
  AutoRoute(one);
  EXPECT_EQ(one[0].Up, "alone");
}

TEST(ButtonRules, LinksAndRemovals) {
  std::vector<EditedButton> buttons = Three();
  LinkButton(buttons, 0, 0, LinkDirection::Up);
  LinkButton(buttons, 0, 1, LinkDirection::Left);
  LinkButton(buttons, 0, 2, LinkDirection::Down);
  EXPECT_THAT((std::array{buttons[0].Button.Up, buttons[0].Button.Left, buttons[0].Button.Down}),
              ElementsAre("", "b", "c"));
  RecordingUi ui;
  ui.Answers = {false, true};
  RemoveButton(buttons[1], ui);
  EXPECT_FALSE(buttons[1].Removed);
  RemoveButton(buttons[1], ui);
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
  RecordingUi ui;
  EXPECT_FALSE(SetForced(under, false, track.HighlightPlays, 25, ui));
  EXPECT_TRUE(under.Forced);
  EXPECT_EQ(ui.Messages.size(), 1U);
  EXPECT_TRUE(SetForced(after, true, track.HighlightPlays, 25, ui));
  EXPECT_TRUE(SetForced(after, false, track.HighlightPlays, 25, ui));

  after.File = "gone.bmp";
  EXPECT_FALSE(KeepIfBitmapExists(after, "/nowhere", ui));
  EXPECT_FALSE(after.Used);
  EXPECT_EQ(ui.Messages.size(), 2U);
  under.File = SourceFile("README.md");
  EXPECT_TRUE(KeepIfBitmapExists(under, "", ui));
  EXPECT_TRUE(under.Used);
}

}  // namespace
}  // namespace quorvelant
