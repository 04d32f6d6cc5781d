#include "edit/command_lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "edit/change.h"
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
    Change change(Session, "Film");
    PGC_P& film = *FindPgc(change.Touch({Part::OfEntry(2)}).Disc, Film);
    PG_P& program = film.PG.Add({});
    for (const char* name : {"One", "Two"}) {
      Cell_P& cell = program.Cell.Add({});
      cell.Key = CellKey(ProgramKey(Film, 1), static_cast<int>(program.Cell.Count()));
      cell.CellName = name;
    }
    AddCommand(program.Cell.Item(1)->ButtonCommands.emplace_back().Commands, "Button", "JumpTT VTS1_Title1");
    static_cast<void>(change.Commit());
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
    Change change(Session, "Cells");
    const auto cells = AllCells(*FindPgc(change.Touch({Part::OfEntry(2)}).Disc, Film));
    cells[0]->CellCommand = first;
    cells[1]->CellCommand = second;
    static_cast<void>(change.Commit());
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

enum class Do { Insert, Move, Remove };
struct Row {
  Do What;
  std::size_t At;
  std::size_t To;
  Texts After;
  std::vector<std::int32_t> Cells;
  std::string Key;
};

// Lines, levels and cells lead to the command that they led to, wherever it moves.
TEST_F(CommandListsTest, NumbersFollowTheirCommands) {
  const Texts start{"goto 3", "If ( GPRM1 == 2 ) GoTo 4", "SetTmpPML parental:3 command:2", "GoTo 1",
                    "GoTo 9"};
  const std::vector<Row> rows{
      {Do::Insert,
       0,
       0,
       {"NOP", "GoTo 4", "If ( GPRM1 == 2 ) GoTo 5", "SetTmpPML parental:3 command:3", "GoTo 2", "GoTo 9"},
       {4, 6},
       "VTS1.TITLE1.PGC1 Cell1"},
      {Do::Insert,
       3,
       0,
       {"goto 3", "If ( GPRM1 == 2 ) GoTo 5", "SetTmpPML parental:3 command:2", "NOP", "GoTo 1", "GoTo 9"},
       {3, 6},
       "VTS1.TITLE1.PGC1 Cell4"},
      {Do::Remove,
       2,
       0,
       {"goto 3", "If ( GPRM1 == 2 ) GoTo 3", "GoTo 1", "GoTo 9"},
       {0, 4},
       "VTS1.TITLE1.PGC1 Cell3"},
      {Do::Move,
       0,
       3,
       {"If ( GPRM1 == 2 ) GoTo 3", "SetTmpPML parental:3 command:1", "GoTo 4", "GoTo 2", "GoTo 9"},
       {2, 5},
       "VTS1.TITLE1.PGC1 Cell4"},
      {Do::Move,
       3,
       1,
       {"GoTo 4", "GoTo 1", "If ( GPRM1 == 2 ) GoTo 2", "SetTmpPML parental:3 command:3", "GoTo 9"},
       {4, 5},
       "VTS1.TITLE1.PGC1 Cell2"},
  };
  const CommandPlace list{.Key = Film, .List = ListKind::Cell};
  Fill(list, start);
  SetCellCommands(3, 5);
  const std::string before = WriteScript(Session.Work());
  for (const Row& row : rows) {
    CommandPlace place = list;
    place.Position = row.At;
    const Outcome outcome = row.What == Do::Insert ? InsertCommand(Session, place)
                            : row.What == Do::Move ? MoveCommand(Session, place, row.To)
                                                   : RemoveCommand(Session, place);
    EXPECT_EQ(outcome.Key, row.Key);
    EXPECT_EQ(TextsAt(list), row.After);
    EXPECT_EQ(CellCommands(), row.Cells);
    for (std::size_t i = 0; i < row.After.size(); ++i) {
      EXPECT_EQ((*CommandsAt(Session.Work(), list))[i].Key, "Cell" + std::to_string(i + 1));
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
  {
    Change change(Session, "Load");
    change.EditFirstPlay().PreCommands[0].To_Action = "VTS1_Title1";
    static_cast<void>(change.Commit());
  }
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
struct Limit {
  Rules By;
  ListKind Kind;
  std::size_t Most;
  std::string_view Text;
};

TEST(CommandLimits, TheLastThatFitsAndTheNext) {
  constexpr std::string_view List24 = "Maximum number of commands reached for this PGC (24)";
  constexpr std::string_view Pgc128 = "Maximum number of commands reached for this PGC (128)";
  const std::vector<Limit> limits{{PlayersWithout(&Rules::CommandsToFormatLimit), ListKind::Pre, 24, List24},
                                  {Rules::Classic, ListKind::Cell, 24, List24},
                                  {Rules::Players, ListKind::Pre, 126, Pgc128}};
  for (const Limit& limit : limits) {
    EditSession session(limit.By);
    const CommandPlace list{.Key = Film, .List = limit.Kind};
    {
      Change change(session, "Post");
      PGC_P& film = *FindPgc(change.Touch({Part::OfEntry(2)}).Disc, Film);
      AddCommand(film.PostCommands, "Post", "NOP");
      AddCommand(film.PostCommands, "Post", "NOP");
      static_cast<void>(change.Commit());
    }
    for (std::size_t i = 0; i < limit.Most; ++i) {
      ASSERT_TRUE(InsertCommand(session, list).IsDone()) << i;
    }
    const std::string before = WriteScript(session.Work());
    const Outcome refused = InsertCommand(session, list);
    EXPECT_EQ(refused.Result, Outcome::Kind::Refused);
    EXPECT_EQ(refused.Words.Title, "New Command Error");
    EXPECT_EQ(refused.Words.Text, limit.Text);
    EXPECT_EQ(WriteScript(session.Work()), before);
  }
}

TEST_F(CommandListsTest, AListOfButtonCommandsHasItsOwnLimit) {
  const CommandPlace list{.Key = FilmCell, .List = ListKind::Button};
  for (const auto& [rules, most] : {std::pair{Rules::Classic, 24}, {Rules::Players, 36}}) {
    EditSession session(rules);
    session.Replace(Session.Work(), {});
    for (int i = 1; i < most; ++i) {
      EXPECT_TRUE(InsertCommand(session, list).IsDone()) << i;
    }
    EXPECT_TRUE(InsertCommand(session, list).Words.Is(message::CommandListFull)) << most;
  }
}

TEST(CommandLimits, ALongerListStaysAndTakesNoMore) {
  EditSession session(Rules::Classic);
  Project project = session.Work();
  for (int i = 0; i < 30; ++i) {
    AddCommand(project.FirstPlay.PostCommands, "FirstPGC", "NOP");
  }
  session.Replace(std::move(project), {});
  const CommandPlace list{.Key = "FirstPGC", .List = ListKind::Post, .Position = 0};
  EXPECT_TRUE(RemoveCommand(session, list).IsDone());
  EXPECT_TRUE(InsertCommand(session, list).Words.Is(message::CommandListFull));
  EXPECT_EQ(CommandsAt(session.Work(), list)->size(), 29U);
}

TEST_F(CommandListsTest, WhatIsRefused) {
  const CommandPlace first{.Key = "FirstPGC", .List = ListKind::Pre, .Position = 0};
  const CommandPlace second{.Key = "FirstPGC", .List = ListKind::Pre, .Position = 1};
  const CommandPlace nowhere{.Key = "VTS9.TITLE1.PGC1", .List = ListKind::Pre, .Position = 0};
  const CommandPlace ofCell{.Key = FilmCell, .List = ListKind::Pre};
  const struct {
    Outcome Result;
    const MessageKind& Words;
  } rows[] = {
      {InsertCommand(Session, nowhere), message::CommandListMissing},
      {InsertCommand(Session, ofCell), message::CommandListMissing},
      {InsertCommand(Session, {.Key = FilmCell, .List = ListKind::Pre, .Position = 1}),
       message::CommandMissing},
      {SetCommand(Session, nowhere, "NOP"), message::CommandListMissing},
      {SetCommand(Session, second, "NOP"), message::CommandMissing},
      {SetCommand(Session, first, "Please play"), message::CommandTextUnknown},
      {SetCommand(Session, first, "Exit\nBreak"), message::CommandTextUnknown},
      {MoveCommand(Session, first, 1), message::CommandMissing},
      {RemoveCommand(Session, second), message::CommandMissing},
      {RemoveCommand(Session, {.Key = "FirstPGC"}), message::CommandMissing},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.Result.Result, Outcome::Kind::Refused) << row.Words.Code;
    EXPECT_EQ(row.Result.Words.Code, row.Words.Code) << row.Result.Words.Text;
  }
  EXPECT_EQ(Session.UndoWords(), "Film");
}

}  // namespace
}  // namespace quorvelant
