#include "vm/resolver.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "vm/check_commands.h"
#include "vm/encoder.h"

namespace quorvelant {
namespace {

VMICommand_P Command(std::string key, std::string text, std::string target = {}) {
  VMICommand_P command;
  command.Key = std::move(key);
  command.FullCommand = std::move(text);
  command.To_Action = std::move(target);
  return command;
}

struct Chain {
  std::string Name;
  std::vector<int> Cells;  // of each program
};

// A language or a title with its PGCs; programs and cells are named after their PGC.
template <class Unit>
Unit UnitOf(std::string Unit::*nameField, const std::string& name, const std::vector<Chain>& chains) {
  Unit unit;
  unit.*nameField = name;
  for (const Chain& chain : chains) {
    PGC_P& pgc = unit.PGC.Add({});
    pgc.PGCName = chain.Name;
    for (const int count : chain.Cells) {
      PG_P& program = pgc.PG.Add({});
      program.PGName = fmt::format("{}_PG{}", chain.Name, pgc.PG.Count());
      for (int i = 1; i <= count; ++i) {
        program.Cell.Add({}).CellName = fmt::format("{}_CELL{}", program.PGName, i);
      }
    }
  }
  return unit;
}

// A manager with two languages, two title sets with a menu; the first has two titles, the second of them
// two chains.
Project Sample() {
  Project project;
  const auto language = [&](const std::string& code, const std::vector<Chain>& chains) {
    project.Disc.Item(project.Disc.Count())->Lang.Add(UnitOf(&Lang_P::Language, code, chains));
  };
  const auto title = [&](const std::string& name, const std::vector<Chain>& chains) {
    project.Disc.Item(project.Disc.Count())->Title.Add(UnitOf(&Title_P::TitleName, name, chains));
  };
  project.Disc.Add({}).VTSName = "Video Manager";
  language("en", {{"VMG_En1", {1}}, {"VMG_En2", {1}}});
  language("de", {{"VMG_De1", {1}}});
  project.Disc.Add({}).VTSName = "VTS1";
  language("en", {{"Root", {1}}, {"Audio Menu", {1, 2}}});
  language("de", {{"Wurzel", {1}}});
  title("First", {{"Film", {1, 2}}});
  title("Second", {{"Intro", {2}}, {"Start", {1, 3}}});
  project.Disc.Add({}).VTSName = "VTS2";
  language("en", {{"Other", {1}}, {"Root", {1}}});
  title("Third", {{"Tail", {1, 1}}});
  return project;
}

struct Row {
  std::string_view Text, Classic, Players;
};

TEST(Resolver, NumbersBySearchOrder) {
  constexpr Row Rows[] = {
      {"LinkPGCN Film", "2004000000000001", "2004000000000001"},
      {"LinkPGCN Start", "2004000000000002", "2004000000000003"},       // third chain of the set's table
      {"LinkPGCN audio MENU", "2004000000000002", "2004000000000002"},  // blanks and case aside
      {"LinkPGCN Wurzel", "2004000000000001", "2004000000000001"},      // a menu within its unit
      {"LinkPGCN Root", "2004000000000001", "2004000000000001"},        // the first of two wins
      {"LinkPGN Start_PG2, button=1", "2006000000000402", "2006000000000402"},
      {"LinkPTT Start_PG2, button=1", "2005000000000403", "2005000000000403"},
      {"LinkCN Start_PG2_CELL3, button=1", "2007000000000404", "2007000000000404"},
      {"JumpTT Third", "3002000000030000", "3002000000030000"},
      {"JumpVTS_TT Third", "3003000000010000", "3003000000010000"},
      {"JumpVTS_TT Second", "3003000000020000", "3003000000020000"},
      {"JumpVTS_PTT Start_PG1", "3005000200020000", "3005000200020000"},
      {"JumpSS VMG_De1", "3006000300C00000", "3006000100C00000"},
      {"CallSS RSM=Start_PG2_CELL2,, VMG_En2", "3008000202C00000", "3008000203C00000"},
      {"CallSS RSM=Film_PG2_CELL1,TitleMenu", "3008000001420000", "3008000002420000"},
      {"CallSS RSM=5,TitleMenu", "3008000005420000", "3008000005420000"},  // a number that names nothing
      {"SetNVTMR NV_TMR=9, TT_PGCN=Start", "5200000900020000", "5200000900030000"},
      {"{ mov GPRM1, 2 ; LinkPGCN Start, button=3 }", "7104000100020002", "7104000100020003"},
      {"{ mov GPRM1, 2 ; LinkCN Audio Menu_PG2_CELL2, button=3 }", "7107000100020C03", "7107000100020C03"},
  };
  const Project project = Sample();
  NameIndex classic(project, Rules::Classic);
  NameIndex players(project, Rules::Players);
  for (const Row& row : Rows) {
    const Resolution old = ResolveText(row.Text, {}, &classic);
    EXPECT_EQ(old.Hex, row.Classic) << row.Text;
    EXPECT_FALSE(old.TargetMissing) << row.Text;
    EXPECT_EQ(ResolveText(row.Text, {}, &players).Hex, row.Players) << row.Text;
  }
}

TEST(Resolver, MissingTargetsTakeNumberOne) {
  constexpr std::pair<std::string_view, std::string_view> Rows[] = {
      {"LinkPGCN Gone", "2004000000000001"},
      {"LinkPGCN 2", "2004000000000001"},  // a number is no name
      {"LinkPGN Gone, button=2", "2006000000000801"},
      {"LinkCN Root", "2007000000000001"},       // a PGC is no cell
      {"LinkPTT Root_PG1", "2005000000000001"},  // titles only
      {"JumpTT Gone", "3002000000010000"},
      {"JumpVTS_PTT ptt_0 @ vts_ttn_0", "3005000100000000"},
      {"JumpSS Root", "3006000100C00000"},  // not in the manager
      {"JumpSS pgc_2", "3006000100C00000"},
      {"CallSS RSM=Gone,TitleMenu", "3008000001420000"},
      {"SetNVTMR NV_TMR=9", "5200000900010000"},
      {"{ mov GPRM1, 2 ; LinkPGCN Gone }", "7104000100020001"},
      {"{ mov GPRM1, 2 ; Exit }", "7100000100020000"},  // no link
      {"{ mov GPRM1, 2 ; }", "7100000100020000"},
  };
  const Project project = Sample();
  NameIndex names(project, Rules::Classic);
  for (const auto& [text, hex] : Rows) {
    const Resolution result = ResolveText(text, {}, &names);
    EXPECT_EQ(result.Hex, hex) << text;
    EXPECT_TRUE(result.TargetMissing) << text;
    VMICommand_P command = Command("Pre1", std::string(text));
    command.CommandHex = "00000000000000AA";
    command.Naming = "before";
    ResolveCommand(command, names);
    EXPECT_EQ(command.CommandHex, "00000000000000AA") << text;
    EXPECT_EQ(command.Naming, "before") << text;
  }
}

TEST(Resolver, SaysWhichNamesAreMissing) {
  const Project project = Sample();
  NameIndex names(project, Rules::Players);
  EXPECT_THAT(ResolveText("{ SetNVTMR NV_TMR=1, TT_PGCN=Gone ; LinkCN Lost }", {}, &names).MissingNames,
              testing::ElementsAre("gone", "lost"));
}

TEST(Resolver, NumbersStandWhereNothingBearsThem) {
  Project project = Sample();
  project.Disc.Item(1)->Lang.Item(1)->PGC.Item(1)->PGCName = "PGC_3";
  NameIndex names(project, Rules::Classic);
  struct Case {
    std::string_view Text, ByName, ByNumber;
  };
  constexpr Case Rows[] = {
      {"JumpSS pgc_3", "3006000100C00000", "3006000300C00000"},  // the one case in which the dialects differ
      {"JumpSS pgc_2", "3006000200C00000", "3006000200C00000"},
      {"JumpSS pgc_4", "missing", "missing"},  // there are three
      {"LinkPGCN Start", "2004000000000002", "2004000000000002"},
      {"LinkCN 2", "2007000000000002", "2007000000000002"},
      {"LinkCN 0", "missing", "missing"},
      {"LinkCN pgc_2", "missing", "missing"},
      {"LinkCN 99", "missing", "missing"},
  };
  for (const auto& [text, byName, byNumber] : Rows) {
    const auto hex = [&](NumericTargets numbers) {
      const Resolution result = ResolveText(text, {}, &names, {.Numbers = numbers});
      return result.TargetMissing ? "missing" : result.Hex;
    };
    EXPECT_EQ(hex(NumericTargets::BehindNames), byName) << text;
    EXPECT_EQ(hex(NumericTargets::First), byNumber) << text;
  }
}

TEST(Resolver, TextFollowsTheStoredTarget) {
  struct Rename {
    std::string_view Text, Stored, NewText, Hex, Naming;
  };
  constexpr Rename Rows[] = {
      {"LinkPGCN Nowhere", "start", "LinkPGCN start", "2004000000000002", "Start"},
      // Both name a chain: the first in the walk gives the number, the text takes the stored name.
      {"LinkPGCN Intro", "start", "LinkPGCN start", "2004000000000001", "Intro"},
      {"LinkPGCN Start", "Audio Menu", "LinkPGCN audio menu", "2004000000000002", "Audio Menu"},
      {"If ( GPRM1 == 3 ) LinkCN Old, button=2", "film_pg1_cell1",
       "if ( gprm1 == 3 ) LinkCN film_pg1_cell1, button=2", "20A7000100030801", "Film_PG1_CELL1"},
      {"JumpSS Old", "VMG_En2", "jumpss vmg_en2", "3006000200C00000", "VMG_En2"},
      {"JumpVTS_PTT Old", "Film_PG2", "JumpVTS_PTT film_pg2", "3005000200010000", "Film_PG2"},
      {"LinkPGCN Start", "", "LinkPGCN Start", "2004000000000002", "Start"},
      {"LinkTopC", "start", "LinkTopC", "2001000000000001", ""},
  };
  const Project project = Sample();
  NameIndex names(project, Rules::Classic);
  for (const Rename& row : Rows) {
    VMICommand_P command = Command("Pre1", std::string(row.Text), std::string(row.Stored));
    ResolveCommand(command, names);
    EXPECT_EQ(command.FullCommand, row.NewText);
    EXPECT_EQ(command.CommandHex, row.Hex) << row.Text;
    EXPECT_EQ(command.Naming, row.Naming) << row.Text;
    ResolveCommand(command, names);
    EXPECT_EQ(command.FullCommand, row.NewText) << "once more changes nothing";
  }
  VMICommand_P both = Command("Post1", "{ SetSTN audio=1 ; LinkPGCN Old }", "Wurzel");
  ResolveCommand(both, names);
  EXPECT_EQ(both.FullCommand, "{ setstn audio=1 ; LinkPGCN wurzel }");
  EXPECT_EQ(both.LinkNaming, "Wurzel");
}

// What is removed does not reach the disc, where numbers count.
TEST(Resolver, RemovedElementsHaveNeitherNameNorNumber) {
  Project project = Sample();
  project.Disc.Item(1)->Lang.Item(1)->PGC.Item(1)->Removed = true;  // VMG_En1
  VTS_P& set = *project.Disc.Item(2);
  set.Lang.Item(1)->PGC.Item(1)->Removed = true;               // the first Root
  set.Title.Item(1)->Removed = true;                           // First
  set.Title.Item(2)->PGC.Item(2)->PG.Item(1)->Removed = true;  // Start_PG1
  constexpr Row Rows[] = {
      {"LinkPGCN Root", "2004000000000002", "2004000000000002"},  // the one of set 2
      {"LinkPGCN Audio Menu", "2004000000000001", "2004000000000001"},
      {"LinkPGCN Start", "2004000000000002", "2004000000000002"},
      {"LinkPGN Start_PG2, button=0", "2006000000000001", "2006000000000001"},
      {"LinkPTT Start_PG2, button=0", "2005000000000002", "2005000000000002"},
      {"LinkCN Start_PG2_CELL3, button=0", "2007000000000003", "2007000000000003"},
      {"JumpTT Third", "3002000000020000", "3002000000020000"},
      {"JumpVTS_TT Second", "3003000000010000", "3003000000010000"},
      {"JumpVTS_PTT Start_PG2", "3005000200010000", "3005000200010000"},
      {"JumpSS VMG_De1", "3006000200C00000", "3006000100C00000"},
      {"JumpTT First", "missing", "missing"},
  };
  NameIndex classic(project, Rules::Classic);
  NameIndex players(project, Rules::Players);
  for (const auto& [text, old, now] : Rows) {
    const auto hex = [&text](NameIndex& names) {
      const Resolution result = ResolveText(text, {}, &names);
      return result.TargetMissing ? "missing" : result.Hex;
    };
    EXPECT_EQ(hex(classic), old) << text;
    EXPECT_EQ(hex(players), now) << text;
  }
}

TEST(CheckCommands, RowsAndWarningsInOrder) {
  Project project = Sample();
  project.FirstPlay.Key = "FirstPGC";
  project.FirstPlay.PostCommands.push_back(Command("FirstPGC1", "JumpTT Gone", "gone"));
  VTS_P& set = *project.Disc.Item(2);
  PGC_P& film = *set.Title.Item(1)->PGC.Item(1);
  film.Key = "VTS1.TITLE1.PGC1";
  film.CellCommands.push_back(Command("Cell1", "LinkPGCN Lost"));
  film.PreCommands.push_back(Command("Pre1", "If ( GPRM1 == 2 ) JumpTT First"));
  film.PreCommands.push_back(Command("Pre2", "LinkPGCN Lost"));
  film.PreCommands.back().CommandHex = NopHex;  // was resolved once
  PGC_P& root = *set.Lang.Item(1)->PGC.Item(1);
  root.PG.Item(1)->Cell.Item(1)->ButtonCommands.push_back({{Command("Button1", "LinkCN Lost")}});
  VMICommand_P deleted = Command("Pre2", "JumpTT Gone");
  deleted.Deleted = true;
  root.PreCommands.push_back(deleted);

  const CommandCheck check = CheckCommands(project, Rules::Players);
  const std::vector<CommandError> expected{
      {"-", "-", "FirstPGC", "-", "JumpTT Gone", "gone", "Post Command"},
      {"VTS1", "en", "Root", "Root_PG1_CELL1", "LinkCN Lost", "", "Button Command"},
      {"VTS1", "First", "Film", "-", "LinkPGCN Lost", "", "Cell Command"},
  };
  EXPECT_EQ(check.Errors, expected);
  EXPECT_EQ(check.CommandCount, 5U);
  EXPECT_TRUE(project.ScriptHadCommandErrors);
  ASSERT_EQ(check.Warnings.size(), 1U);
  EXPECT_EQ(check.Warnings[0].Place, "VTS1.TITLE1.PGC1 Pre1");
}

}  // namespace
}  // namespace quorvelant
