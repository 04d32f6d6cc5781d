#include "edit/button_sets.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "edit/messages.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "film_track.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/walk.h"
#include "support/rules_without.h"

namespace quorvelant {
namespace {

HighlightPlay SetOf(const char* start, const std::string& names) {
  HighlightPlay set;
  set.StartTimeToVideo = start;
  set.Duration = "00:00:02:00";
  set.NumericalButtons = static_cast<std::int32_t>(names.size());
  for (const char name : names) {
    HighlightButton& button = set.Buttons.emplace_back();
    button.Name = std::string(1, name);
    button.Areas.fill({.X1 = 0, .X2 = 20, .Y1 = 0, .Y2 = 20});
  }
  return set;
}

// Commands "go a", "go b", ...: one for each button by its name; a space begins another list.
std::vector<ButtonCommands_P> CommandsFor(const std::string& names) {
  std::vector<ButtonCommands_P> plays;
  int number = 0;
  for (const char name : names) {
    if (plays.empty() || name == ' ') {
      plays.emplace_back();
    }
    if (name != ' ') {
      VMICommand_P& command = plays.back().Commands.emplace_back();
      command.FullCommand = name == '-' ? "NOP" : fmt::format("LinkTopC, button={}", name);
      command.CommandHex = std::string(16, name);
      command.Key = fmt::format("Button{}", ++number);
    }
  }
  return plays;
}

std::string NamesIn(const Cell_P& cell) {
  std::string names;
  int number = 0;
  for (const ButtonCommands_P& play : cell.ButtonCommands) {
    names += names.empty() ? "" : " ";
    for (const VMICommand_P& command : play.Commands) {
      names += command.FullCommand == "NOP" ? '-' : command.FullCommand.back();
      EXPECT_EQ(command.Key, fmt::format("Button{}", ++number));
    }
  }
  return names;
}

// A menu track of two scenes: sets "abc" and "de" start in the first, "f" in the second. Cells of the menu
// show the first, the second and the first scene again.
struct Menu {
  explicit Menu(const Rules& rules = Rules::Classic) : Session(rules) {
    Project project = Session.Work();
    Track& track = project.Tracks.Add(Film("Menu", 2));
    track.HasHighlights = true;
    track.Scenes[1].Frame = 200;
    track.HighlightPlays = {SetOf("00:00:04:00", "de"), SetOf("00:00:00:00", "abc"),
                            SetOf("00:00:09:00", "f")};
    PGC_P* const chain = FindPgc(project.Disc, MenuKey);
    PG_P& program = chain->PG.Add({});
    program.Key = ProgramKey(chain->Key, 1);
    for (const auto& [scene, names] : {std::pair{0, "abc de"}, {1, "f"}, {0, ""}}) {
      Cell_P cell;
      cell.Key = CellKey(program.Key, static_cast<int>(program.Cell.Count()) + 1);
      cell.SegmentUsed = 0;
      cell.pScene = scene;
      cell.SceneUsed = track.Scenes[static_cast<std::size_t>(scene)].Name;
      cell.TrackName = track.TrackName;
      cell.ButtonCommands = CommandsFor(names);
      program.Cell.Add(std::move(cell));
    }
    Session.Replace(std::move(project), {});
  }

  const Track& MenuTrack() const { return Session.Work().Tracks[0]; }
  // Those of each cell, parted by "|".
  std::string Commands() const {
    std::string names;
    for (const auto& at : LivePgcs(Session.Work())) {
      for (const Cell_P* cell : LiveCells(*at.Chain)) {
        names += NamesIn(*cell) + "|";
      }
    }
    return names;
  }
  EditedSet Open(std::size_t set) const { return OpenSet(MenuTrack(), set, {}); }
  // The commands of all cells after the set is saved.
  std::string Put(const EditedSet& set, std::string_view key = "") {
    const Outcome outcome = PutButtons(Session, 0, set);
    EXPECT_TRUE(outcome.IsDone() && (key.empty() || outcome.Key == key)) << outcome.Words.Text << outcome.Key;
    return Commands();
  }

  static constexpr const char* MenuKey = "VMG1.LANGUAGE1.PGC1";
  EditSession Session;
};

void Draw(EditedSet& set) {
  ASSERT_TRUE(AddButton(set.Buttons, {.X1 = 10, .X2 = 50, .Y1 = 10, .Y2 = 50}, {}));
}

TEST(ButtonSets, CommandsStayWithTheirButtons) {
  Menu menu;
  EXPECT_EQ(menu.Commands(), "abc de|f||");
  EditedSet set = menu.Open(1);
  set.Buttons[1].Removed = true;
  Draw(set);
  EXPECT_EQ(menu.Put(set, "Track.0.High2"), "ac- de|f||");
  EXPECT_EQ(menu.MenuTrack().HighlightPlays[1].Buttons[2].Name, "Button_1");
  menu.Session.Undo();
  EXPECT_EQ(menu.Commands(), "abc de|f||");

  set = menu.Open(0);  // the later one of the scene
  set.Buttons[0].Removed = true;
  std::swap(set.Buttons[0], set.Buttons[1]);
  EXPECT_EQ(menu.Put(set), "abc e|f||");

  set = menu.Open(2);
  set.Set.StartTimeToVideo = "00:00:02:00";  // into the first scene, between the two others
  EXPECT_EQ(menu.Put(set), "abc f e|||");

  set = menu.Open(1);
  for (EditedButton& button : set.Buttons) {
    button.Removed = true;
  }
  EXPECT_EQ(menu.Put(set), "f e|||");
  EXPECT_EQ(menu.MenuTrack().HighlightPlays.size(), 2U);
}

// Into a scene that no cell plays, and back; and with a scene that goes, into the one before.
TEST(ButtonSets, CommandsFollowScenes) {
  Menu menu;
  ASSERT_EQ(NewScene(menu.Session, TrackKey(0), "00:00:02:00").Key, "Track.0.Scene2");
  EXPECT_EQ(menu.Commands(), "abc de|f||") << "those of the later set wait";
  EditedSet set = menu.Open(1);
  Draw(set);
  EXPECT_EQ(menu.Put(set), "abc-de|f||");
  ASSERT_TRUE(RemoveSource(menu.Session, SceneKey(0, 2), Consent::Given).IsDone());
  EXPECT_EQ(menu.Commands(), "abc-de|f||");
  ASSERT_TRUE(RemoveSource(menu.Session, SceneKey(0, 2), Consent::Given).IsDone());
  EXPECT_EQ(menu.Commands(), "abc- de f||") << "the cell of its scene has gone";
  while (menu.Session.CanUndo()) {
    menu.Session.Undo();
  }
  EXPECT_EQ(menu.Commands(), "abc de|f||");
}

TEST(ButtonSets, RoutesFollowTheRules) {
  Menu classic;
  EXPECT_TRUE(RouteButtons(classic.Session, 0, 1, Route::Geometry).Words.Is(message::RouteNotOffered));
  EXPECT_TRUE(RouteButtons(classic.Session, 0, 3, Route::Ring).Words.Is(message::NoSuchElement));
  EXPECT_EQ(RouteButtons(classic.Session, 0, 1, Route::Ring).Key, "Track.0.High2");
  EXPECT_EQ(classic.MenuTrack().HighlightPlays[1].Buttons[0].Left, "c");
  classic.Session.Undo();
  EXPECT_FALSE(classic.Session.CanUndo());
  Menu players(Rules::Players);
  EXPECT_TRUE(RouteButtons(players.Session, 0, 0, Route::Geometry).IsDone());
  EXPECT_EQ(players.MenuTrack().HighlightPlays[0].Buttons[0].Up, "e");
}

TEST(ButtonSets, SilentCellsSpeakOnlyWhereNoneDoes) {
  Menu menu;
  EditedSet set = NewSet(menu.MenuTrack(), 260, nullptr);
  Draw(set);
  EXPECT_EQ(menu.Put(set, "Track.0.High4"), "abc de|f -||");
  set = menu.Open(2);
  set.Buttons[0].Removed = true;
  EXPECT_EQ(menu.Put(set), "abc de|-||");
}

TEST(ButtonSets, AWantedSetKeepsButtonsByTheirNames) {
  Menu menu;
  EditedSet set = menu.Open(1);
  const std::vector<HighlightButton> wanted = SetOf("", "cxa").Buttons;
  set.Buttons = EditedButtons(set.Set, wanted, {});
  set.Set.ForcedSelect = 2;
  set.Set.ForcedAction = 1;
  EXPECT_EQ(menu.Put(set), "c-a de|f||");
  const HighlightPlay& saved = menu.MenuTrack().HighlightPlays[1];
  EXPECT_EQ(saved.ForcedSelect, 1);  // its button is gone
  EXPECT_EQ(saved.ForcedAction, 3);
  EXPECT_EQ(saved.NumericalButtons, 3);
}

TEST(ButtonSets, LimitsBindNewButtonsAlone) {
  const std::tuple<Rules, const char*, const char*, std::size_t> rows[] = {
      {Rules::Classic, "4:3", "Not Specified", 12},
      {PlayersWithout(&Rules::FullButtonSets), "16:9", "Only LetterBox", 6},
      {Rules::Classic, "16:9", "Both PanScan and LetterBox", 4},
      {Rules::Players, "4:3", "Not Specified", 36},
      {Rules::Players, "16:9", "Only PanScan", 18},
      {Rules::Players, "16:9", "Both PanScan and LetterBox", 12},
  };
  for (const auto& [rules, aspect, mode, limit] : rows) {
    Menu menu(rules);
    Project project = menu.Session.Work();
    project.Tracks[0].Aspect = aspect;
    project.Tracks[0].DisplayMode = mode;
    menu.Session.Replace(std::move(project), {});
    EditedSet set = menu.Open(1);
    set.Buttons.resize(limit);
    menu.Put(set);
    set = menu.Open(1);
    Draw(set);
    EXPECT_EQ(PutButtons(menu.Session, 0, set).Words.Text,
              fmt::format("Max Number of Buttons Reached ({})", limit));
    EXPECT_EQ(menu.MenuTrack().HighlightPlays[1].Buttons.size(), limit);
    set.Buttons[1].Removed = true;
    menu.Put(set);
  }
  Menu menu;
  EditedSet set = menu.Open(1);
  EXPECT_TRUE(PutButtons(menu.Session, 7, set).Words.Is(message::NoSuchElement));
  set.Saved = 3;
  EXPECT_EQ(PutButtons(menu.Session, 0, set).Words.Place, "Track.0.High4");
}

TEST(ButtonSets, SelectedButtonsFollowTheirNumbers) {
  // The command with its number now, then, and then where all cells show the set.
  const std::pair<std::string, const char*> cases[] = {
      {"LinkTopPGC, button=#", "322"},      {"If ( GPRM1 == 3 ) LinkTopPGC, button=#", "200"},
      {"linktoppgc, button=#", "111"},      {"LinkTopPGC, button=#", "999"},
      {"LinkPGN Buttons, button=#", "322"}, {"LinkCN Second, button=#", "333"},  // to another set, or none
      {"LinkNextC, button=#", "332"},                                            // to no certain one
      {"SetHL_BTNN HL_BTTN=#", "221"},      {"{ SetHL_BTNN HL_BTTN=1 ; LinkTopPGC, button=# }", "322"},
  };
  const auto add = [](PGC_P& chain, const std::string& text) {
    chain.PreCommands.emplace_back().FullCommand = text;
  };
  for (const bool alone : {false, true}) {
    Menu menu;
    Project project = menu.Session.Work();
    PGC_P& chain = *FindPgc(project.Disc, Menu::MenuKey);
    PG_P& program = *chain.PG.Item(1);
    program.PGName = "Buttons";
    program.Cell.Item(2)->CellName = "Second";
    program.Cell.Item(2)->Removed = alone;
    VTS_P& titles = *project.Disc.Item(2);
    PGC_P& film = *titles.Title.Item(1)->PGC.Item(1);
    film.PG.Add(program).PGName = "Part";
    film.PG.Item(1)->Key = ProgramKey(film.Key, 1);
    PGC_P other = film;  // which comes before it
    other.Key = PgcKey("VTS1.TITLE1", 2);
    other.PGCName = "Other";
    other.PG = {};
    other.NextPGC = film.PGCName;
    chain.PreCommands.clear();
    for (const auto& row : cases) {
      add(chain, Replace(row.first, "#", std::string(1, row.second[0])));
    }
    for (const char* text : {"LinkNextPGC, button=3", "LinkPrevPGC, button=3", "LinkPTT Part, button=3"}) {
      add(other, text);
    }
    titles.Title.Item(1)->PGC.Add(std::move(other));
    menu.Session.Replace(std::move(project), {});
    EditedSet set = menu.Open(1);
    set.Buttons[1].Removed = true;
    menu.Put(set);
    auto command = FindPgc(menu.Session.Work().Disc, Menu::MenuKey)->PreCommands.begin();
    for (const auto& [text, numbers] : cases) {
      EXPECT_EQ((command++)->FullCommand, Replace(text, "#", std::string(1, numbers[alone ? 2 : 1])));
    }
    command = FindPgc(menu.Session.Work().Disc, "VTS1.TITLE1.PGC2")->PreCommands.begin();
    for (const char* text : {"LinkNextPGC, button=2", "LinkPrevPGC, button=3", "LinkPTT Part, button=2"}) {
      EXPECT_EQ((command++)->FullCommand, text);
    }
  }
}

TEST(ButtonSets, ANewSetLastsAsLongAsItsSubtitle) {
  Menu menu;
  Track track = menu.MenuTrack();
  SubPicturePlay subtitle;
  subtitle.Start = "00:00:03:00";
  subtitle.End = "00:00:07:10";
  EXPECT_EQ(NewSet(track, 80, &subtitle).Set.StartTimeToVideo, "00:00:03:00");
  EXPECT_EQ(NewSet(track, 80, &subtitle).Set.Duration, "00:00:04:10");
  track.VideoFrames = 200;
  EXPECT_EQ(NewSet(track, 80, nullptr).Set.StartTimeToVideo, "00:00:03:05");
  EXPECT_EQ(NewSet(track, 80, nullptr).Set.Duration, "00:00:04:20");
  track.TrackType = "Still";
  EXPECT_EQ(NewSet(track, 80, nullptr).Set.Duration, "00:00:10:00");
  EXPECT_EQ(SetAt(track, 49), 1U);
  EXPECT_EQ(SetAt(track, 50), std::nullopt);
  EXPECT_EQ(SetAt(track, 100), 0U);
}

}  // namespace
}  // namespace quorvelant
