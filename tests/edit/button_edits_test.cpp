#include "edit/button_edits.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "edit/command_lists.h"
#include "edit/drop.h"
#include "edit/messages.h"
#include "edit/segments.h"
#include "film_track.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

// A menu with a set of three buttons in a ring, placed on the root menu of the first title set.
struct Menu {
  Menu() {
    Project project = Session.Work();
    Track& track = project.Tracks.Add(Film("Menu", 2));
    track.VideoFrames = 200;
    HighlightPlay& set = track.HighlightPlays.emplace_back();
    set.StartTimeToVideo = "00:00:01:00";
    set.Duration = "00:00:02:00";
    set.ForcedSelect = 2;
    for (const char* name : {"A", "B", "C"}) {
      HighlightButton& button = set.Buttons.emplace_back();
      button.Name = name;
      button.Number = static_cast<std::int32_t>(set.Buttons.size());
      button.Areas.fill({.X1 = 10, .X2 = 60, .Y1 = 10, .Y2 = 40});
      button.Right = "B";
    }
    Session.Replace(std::move(project), {});
  }
  void Place() { ASSERT_TRUE(Drop(Session, {0, {}}, "VTS1.LANGUAGE1.PGC1").IsDone()); }
  [[nodiscard]] const HighlightPlay& Set() const { return Session.Work().Tracks[0].HighlightPlays.at(0); }
  [[nodiscard]] std::string Commands() const {
    std::string texts;
    for (const auto& at : LivePgcs(Session.Work())) {
      for (const Cell_P* cell : LiveCells(*at.Chain)) {
        for (const ButtonCommands_P& play : cell->ButtonCommands) {
          for (const VMICommand_P& command : play.Commands) {
            texts += command.FullCommand + "|";
          }
        }
      }
    }
    return texts;
  }
  EditSession Session{Rules::Players};
};

using Operation = std::function<Outcome(EditSession&)>;

Operation WithArea(HighlightArea area) {
  return [area](EditSession& s) {
    return SetButton(s, 0, {0, 1}, [area](HighlightButton& button) { button.Areas[0] = area; });
  };
}

TEST(ButtonEdits, RefusalsChangeNothing) {
  const struct {
    Operation Do;
    const MessageKind& Kind;
  } cases[] = {
      {[](auto& s) {
         return RenameButton(s, 0, {0, 0}, "B");
       },
       message::ButtonNameTaken},
      {[](auto& s) {
         return RenameButton(s, 0, {0, 0}, " \t");
       },
       message::ButtonNameTaken},
      {[](auto& s) {
         return RenameButton(s, 0, {0, 0}, "a\nb");
       },
       message::ButtonNameTaken},
      {[](auto& s) {
         return RenameButton(s, 0, {0, 3}, "D");
       },
       message::NoSuchElement},
      {[](auto& s) {
         return RenameButton(s, 1, {0, 0}, "D");
       },
       message::NoSuchElement},
      {WithArea({.X1 = 10, .X2 = 10, .Y1 = 0, .Y2 = 5}), message::ButtonAreaBeyond},
      {WithArea({.X1 = 10, .X2 = 720, .Y1 = 0, .Y2 = 5}), message::ButtonAreaBeyond},
      {WithArea({.X1 = 10, .X2 = 20, .Y1 = 0, .Y2 = 576}), message::ButtonAreaBeyond},
      {[](auto& s) {
         return SetButton(s, 0, {0, 0}, [](auto& b) { b.Up = "D"; });
       },
       message::ButtonLinkUnfit},
      {[](auto& s) { return ForceButton(s, 0, 0, Force::Select, "D"); }, message::ButtonLinkUnfit},
      {[](auto& s) { return SetButtonTimes(s, 0, 0, 200, 5); }, message::ButtonTimesUnfit},
      {[](auto& s) { return SetButtonTimes(s, 0, 0, 10, 0); }, message::ButtonTimesUnfit},
      {[](auto& s) {
         return SetButtonCommand(s, 0, {0, 0}, "NOP");
       },
       message::ButtonPlayedNowhere},
  };
  Menu menu;
  const Project before = menu.Session.Work();
  for (const auto& test : cases) {
    const Outcome outcome = test.Do(menu.Session);
    EXPECT_EQ(outcome.Words.Code, test.Kind.Code);
    EXPECT_EQ(outcome.Result, Outcome::Kind::Refused);
  }
  EXPECT_TRUE(menu.Session.Work().SameContent(before));
}

TEST(ButtonEdits, NamesTakeLinksForcedButtonAndCommandsAlong) {
  Menu menu;
  menu.Place();
  ASSERT_TRUE(SetButtonCommand(menu.Session, 0, {0, 1}, "LinkTopC, button=2").IsDone());
  EXPECT_EQ(menu.Commands(), "NOP|LinkTopC, button=2|");
  ASSERT_TRUE(RenameButton(menu.Session, 0, {0, 1}, " Play ").IsDone());
  EXPECT_EQ(menu.Set().Buttons[1].Name + menu.Set().Buttons[0].Right, "PlayPlay");
  EXPECT_EQ(menu.Set().ForcedSelect, 2);
  ASSERT_TRUE(ForceButton(menu.Session, 0, 0, Force::Action, "Play").IsDone());
  ASSERT_TRUE(SetButtonTimes(menu.Session, 0, 0, 50, 10).IsDone());
  EXPECT_EQ(menu.Set().ForcedAction, 2);
  EXPECT_EQ(menu.Set().StartTimeToVideo + menu.Set().Duration, "00:00:02:0000:00:00:10");
  EXPECT_EQ(RemoveButton(menu.Session, 0, {0, 0}, Consent::None).Result, Outcome::Kind::Asks);
  ASSERT_TRUE(RemoveButton(menu.Session, 0, {0, 0}, Consent::Given).IsDone());
  EXPECT_EQ(menu.Set().Buttons[0].Name, "Play");
  EXPECT_EQ(menu.Set().ForcedSelect, 1);
  EXPECT_EQ(menu.Commands().substr(0, 10), "LinkTopC, ");  // it goes with its button
  const auto places = CommandsOfButton(menu.Session.Work(), 0, {0, 0});
  ASSERT_EQ(places.size(), 1U);
  EXPECT_EQ(places[0].Position, 0U);
}

TEST(MovedScenes, KeepTheirNamesAndCells) {
  Menu menu;
  menu.Place();
  const std::string name = menu.Session.Work().Tracks[0].Scenes[1].Name;
  ASSERT_TRUE(NewScene(menu.Session, "Track.0", "00:00:02:00").IsDone());
  const struct {
    const char* Scene;
    const char* Time;
    const MessageKind* Refusal;
  } refused[] = {{"Track.0.Scene1", "00:00:01:00", &message::FirstSceneStays},
                 {"Track.0.Scene3", "00:00:02:00", &message::SceneTimeTaken},
                 {"Track.0.Scene3", "00:00:20:00", &message::SceneTimeTooLate},
                 {"Track.0.Scene4", "00:00:01:00", &message::NoSuchElement}};
  const Project before = menu.Session.Work();
  for (const auto& test : refused) {
    EXPECT_EQ(MoveScene(menu.Session, test.Scene, test.Time).Words.Code, test.Refusal->Code) << test.Scene;
    EXPECT_TRUE(menu.Session.Work().SameContent(before));
  }
  EXPECT_EQ(MoveScene(menu.Session, "Track.0.Scene3", "00:00:01:00").Key, "Track.0.Scene2");
  EXPECT_EQ(menu.Session.Work().Tracks[0].Scenes[1].Name, name);
  const auto cells = LiveCells(*FindPgc(menu.Session.Work().Disc, "VTS1.LANGUAGE1.PGC1"));
  EXPECT_EQ(cells[1]->SceneUsed, name);
  EXPECT_EQ(cells[1]->pScene, 1);
}

}  // namespace
}  // namespace quorvelant
