#include "edit/command_lists.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "boxes.h"
#include "edit/messages.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/walk.h"
#include "script/script_writer.h"
#include "support/rules_without.h"

namespace quorvelant {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* Film = "VTS1.TITLE1.PGC1";
constexpr const char* FilmCell = "VTS1.TITLE1.PGC1.PG1.CELL1";

class CommandListsTest : public testing::Test {
 protected:
  // Two cells, the first with a play of one button.
  CommandListsTest() {
    Project project = Session.Work();
    PGC_P& film = *FindPgc(project.Disc, Film);
    PG_P& program = film.PG.Add({});
    for (const char* name : {"One", "Two"}) {
      Cell_P& cell = program.Cell.Add({});
      cell.Key = CellKey(ProgramKey(Film, 1), static_cast<int>(program.Cell.Count()));
      cell.CellName = name;
    }
    AddCommand(program.Cell.Item(1)->ButtonCommands.emplace_back().Commands, "Button", "JumpTT VTS1_Title1");
    Session.Replace(std::move(project), {});
  }

  void Fill(const CommandPlace& list, const Texts& texts) {
    for (const std::string& text : texts) {
      CommandPlace place = list;
      EXPECT_TRUE(InsertCommand(Session, list).IsDone());
      place.Position = CommandsAt(Session.Work(), list)->size() - 1;
      EXPECT_TRUE(SetCommand(Session, place, text).IsDone()) << text;
    }
  }
  [[nodiscard]] Texts TextsAt(const CommandPlace& list) const {
    Texts texts;
    for (const VMICommand_P& command : *CommandsAt(Session.Work(), list)) {
      texts.push_back(command.FullCommand);
    }
    return texts;
  }
  // The numbers of both cells.
  void SetCellCommands(std::int32_t first, std::int32_t second) {
    Project project = Session.Work();
    const auto cells = AllCells(*FindPgc(project.Disc, Film));
    cells[0]->CellCommand = first;
    cells[1]->CellCommand = second;
    Session.Replace(std::move(project), {});
  }
  [[nodiscard]] std::vector<std::int32_t> CellCommands() const {
    std::vector<std::int32_t> numbers;
    for (const Cell_P* cell : AllCells(*Session.Work().Disc.Item(2)->Title.Item(1)->PGC.Item(1))) {
      numbers.push_back(cell->CellCommand);
    }
    return numbers;
  }

  EditSession Session{Rules::Classic};
};

// Lines, levels and cells lead to the command that they led to, wherever it moves.
TEST_F(CommandListsTest, NumbersFollowTheirCommands) {
  const CommandPlace list{.Key = Film, .List = ListKind::Cell};
  const auto at = [&list](std::size_t position) { return CommandPlace{list.Key, list.List, 0, position}; };
  const struct {
    std::function<Outcome()> Do;
    std::string After;
    std::vector<std::int32_t> Cells;
    std::string Key;
  } rows[] = {
      {[&] { return InsertCommand(Session, at(0)); },
       "NOP|GoTo 4|If ( GPRM1 == 2 ) GoTo 5|SetTmpPML parental:3 command:3|GoTo 2|GoTo 9",
       {4, 6},
       "1"},
      {[&] { return InsertCommand(Session, at(3)); },
       "goto 3|If ( GPRM1 == 2 ) GoTo 5|SetTmpPML parental:3 command:2|NOP|GoTo 1|GoTo 9",
       {3, 6},
       "4"},
      {[&] { return RemoveCommand(Session, at(2)); },
       "goto 3|If ( GPRM1 == 2 ) GoTo 3|GoTo 1|GoTo 9",
       {0, 4},
       "3"},
      {[&] { return MoveCommand(Session, at(0), 3); },
       "If ( GPRM1 == 2 ) GoTo 3|SetTmpPML parental:3 command:1|GoTo 4|GoTo 2|GoTo 9",
       {2, 5},
       "4"},
      {[&] { return MoveCommand(Session, at(3), 1); },
       "GoTo 4|GoTo 1|If ( GPRM1 == 2 ) GoTo 2|SetTmpPML parental:3 command:3|GoTo 9",
       {4, 5},
       "2"},
  };
  Fill(list, {"goto 3", "If ( GPRM1 == 2 ) GoTo 4", "SetTmpPML parental:3 command:2", "GoTo 1", "GoTo 9"});
  SetCellCommands(3, 5);
  const std::string before = WriteScript(Session.Work());
  for (const auto& [act, after, cells, key] : rows) {
    EXPECT_EQ(act().Key, "VTS1.TITLE1.PGC1 Cell" + key);
    EXPECT_EQ(fmt::format("{}", fmt::join(TextsAt(list), "|")), after);
    EXPECT_EQ(CellCommands(), cells);
    for (std::size_t i = 0; i < TextsAt(list).size(); ++i) {
      EXPECT_EQ((*CommandsAt(Session.Work(), list))[i].Key, fmt::format("Cell{}", i + 1));
    }
    Session.Undo();
    EXPECT_EQ(WriteScript(Session.Work()), before);
  }
}

TEST_F(CommandListsTest, OtherListsOfThePgcStay) {
  Fill({.Key = Film, .List = ListKind::Cell}, {"NOP"});
  Fill({.Key = Film, .List = ListKind::Pre}, {"GoTo 2", "NOP"});
  SetCellCommands(1, 0);
  EXPECT_EQ(InsertCommand(Session, {.Key = Film, .List = ListKind::Post, .Position = 0}).Key,
            "VTS1.TITLE1.PGC1 Post1");
  EXPECT_EQ(TextsAt({.Key = Film, .List = ListKind::Pre}), (Texts{"GoTo 2", "NOP"}));
  EXPECT_TRUE(RemoveCommand(Session, {.Key = Film, .List = ListKind::Pre, .Position = 0}).IsDone());
  EXPECT_THAT(CellCommands(), testing::ElementsAre(1, 0));
  EXPECT_EQ(InsertCommand(Session, {.Key = "FirstPGC", .List = ListKind::Post}).Key, "FirstPGC FirstPGC1");
}

// The digits and the stored target of the former text are gone: a target that is missing counts as an error.
TEST_F(CommandListsTest, ATextBringsItsOwnDigits) {
  const CommandPlace first{.Key = "FirstPGC", .List = ListKind::Pre, .Position = 0};
  Project loaded = Session.Work();
  loaded.FirstPlay.PreCommands[0].To_Action = "VTS1_Title1";
  Session.Replace(std::move(loaded), {});
  EXPECT_TRUE(SetCommand(Session, first, " JumpTT Nowhere ").IsDone());
  ASSERT_EQ(Session.Commands().Errors.size(), 1U);
  EXPECT_EQ(Session.Commands().Errors[0].Command, "JumpTT Nowhere");
  EXPECT_TRUE(SetCommand(Session, first, "JumpSS TitleMenu").IsDone());
  EXPECT_TRUE(Session.Commands().Errors.empty());
  EXPECT_EQ(Session.Work().FirstPlay.PreCommands[0].CommandHex, "3006000000420000");
  EXPECT_TRUE(SetCommand(Session, first, "").IsDone());
  EXPECT_EQ(TextsAt(first), Texts{"NOP"});
  Session.Undo();
  EXPECT_TRUE(SetCommand(Session, first, "JumpSS TitleMenu").IsDone());
  EXPECT_TRUE(Session.CanRedo()) << "the same text is no step";
}

TEST_F(CommandListsTest, ButtonCommandsOfACell) {
  const CommandPlace play{.Key = FilmCell, .List = ListKind::Button};
  EXPECT_EQ(InsertCommand(Session, {.Key = FilmCell, .List = ListKind::Button, .Position = 0}).Key,
            "VTS1.TITLE1.PGC1.PG1.CELL1 Button1");
  EXPECT_EQ(TextsAt(play), (Texts{"NOP", "JumpTT VTS1_Title1"}));
  EXPECT_TRUE(InsertCommand(Session, {.Key = FilmCell, .List = ListKind::Button, .Play = 1}).IsDone());
  EXPECT_EQ(TextsAt({.Key = FilmCell, .List = ListKind::Button, .Play = 1}), Texts{"NOP"});
  const std::string before = WriteScript(Session.Work());
  EXPECT_FALSE(InsertCommand(Session, {.Key = FilmCell, .List = ListKind::Button, .Play = 3}).IsDone());
  EXPECT_EQ(WriteScript(Session.Work()), before);
}

// How many commands fit into a list beside two post commands, and the number that the box tells.
TEST_F(CommandListsTest, TheLastThatFitsAndTheNext) {
  const CommandPlace play{.Key = FilmCell, .List = ListKind::Button};
  const CommandPlace pre{.Key = Film, .List = ListKind::Pre};
  const struct {
    Rules By;
    CommandPlace List;
    int Most;
    int Told;
  } limits[] = {{PlayersWithout(&Rules::CommandsToFormatLimit), pre, 24, 24},
                {Rules::Classic, {.Key = Film, .List = ListKind::Cell}, 24, 24},
                {Rules::Players, pre, 126, 128},
                {Rules::Classic, play, 23, 24},  // beside the one that is there
                {Rules::Players, play, 35, 36}};
  Fill({.Key = Film, .List = ListKind::Post}, {"NOP", "NOP"});
  for (const auto& [rules, list, most, told] : limits) {
    EditSession session(rules);
    session.Replace(Session.Work(), {});
    for (int i = 0; i < most; ++i) {
      ASSERT_TRUE(InsertCommand(session, list).IsDone()) << i;
    }
    const std::string before = WriteScript(session.Work());
    const Message full = InsertCommand(session, list).Words;
    EXPECT_EQ(full.Text, MessageOf(message::CommandListFull, "", told).Text);
    ExpectBox(full);
    EXPECT_EQ(WriteScript(session.Work()), before);
  }
}

TEST_F(CommandListsTest, ALongerListStaysAndTakesNoMore) {
  Project project = Session.Work();
  project.FirstPlay.PostCommands.resize(30);
  Session.Replace(std::move(project), {});
  const CommandPlace list{.Key = "FirstPGC", .List = ListKind::Post, .Position = 0};
  EXPECT_TRUE(RemoveCommand(Session, list).IsDone());
  EXPECT_TRUE(InsertCommand(Session, list).Words.Is(message::CommandListFull));
  EXPECT_EQ(CommandsAt(Session.Work(), list)->size(), 29U);
}

TEST_F(CommandListsTest, WhatIsRefused) {
  const CommandPlace first{.Key = "FirstPGC", .List = ListKind::Pre, .Position = 0};
  const CommandPlace second{.Key = "FirstPGC", .List = ListKind::Pre, .Position = 1};
  const CommandPlace nowhere{.Key = "VTS9.TITLE1.PGC1", .List = ListKind::Pre, .Position = 0};
  const CommandPlace ofCell{.Key = FilmCell, .List = ListKind::Pre};
  const std::pair<Outcome, const MessageKind*> rows[] = {
      {InsertCommand(Session, nowhere), &message::CommandListMissing},
      {InsertCommand(Session, ofCell), &message::CommandListMissing},
      {InsertCommand(Session, {FilmCell, ListKind::Pre, 0, 1}), &message::CommandMissing},
      {SetCommand(Session, nowhere, "NOP"), &message::CommandListMissing},
      {SetCommand(Session, second, "NOP"), &message::CommandMissing},
      {SetCommand(Session, first, "Please play"), &message::CommandTextUnknown},
      {SetCommand(Session, first, "Exit\nBreak"), &message::CommandTextUnknown},
      {MoveCommand(Session, first, 1), &message::CommandMissing},
      {RemoveCommand(Session, second), &message::CommandMissing},
      {RemoveCommand(Session, {.Key = "FirstPGC"}), &message::CommandMissing},
  };
  for (const auto& [outcome, kind] : rows) {
    EXPECT_EQ(outcome.Result, Outcome::Kind::Refused) << kind->Code;
    EXPECT_EQ(outcome.Words.Code, kind->Code) << outcome.Words.Text;
  }
  EXPECT_FALSE(Session.CanUndo());
}

}  // namespace
}  // namespace quorvelant
