#include "vm/references.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/default_structure.h"
#include "model/keys.h"
#include "vm/check_commands.h"
#include "vm/command_aims.h"
#include "vm/messages.h"
#include "vm/name_rules.h"
#include "vm/pgc_links.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The pieces of a text that are references; "-" for one by a word alone.
std::vector<std::string> PiecesOf(std::string_view text) {
  std::vector<std::string> pieces;
  for (const TextReference& reference : TextReferencesOf(text)) {
    pieces.emplace_back(reference.Length == 0 ? "-" : text.substr(reference.Offset, reference.Length));
  }
  return pieces;
}

TEST(References, StandWhereTheTextNamesATarget) {
  using Pieces = std::vector<std::string>;
  const std::pair<std::string_view, Pieces> rows[] = {
      {"LinkPGCN VTS1_Title10", {"VTS1_Title10"}},
      {"  If ( GPRM1 == 3 ) LinkCN Old  Cell, button=2", {"Old  Cell"}},
      {"{ SetSTN audio=1 ; LinkPGN A_PG1, button=1 }", {"A_PG1"}},
      {"{ SetNVTMR NV_TMR=1, TT_PGCN=Audio ; LinkPGCN Au }", {"Audio", "Au"}},
      {"If ( GPRM1 == 1 ) { mov GPRM3, 7 ; LinkPGCN Menu }", {"Menu"}},
      {"LinkPGN Me, Myself, button=1", {"Me, Myself"}},
      {"LinkPGCN linkpgcn_PG", {"linkpgcn_PG"}},
      {"CallSS RSM=Menu_PG1_CELL1,, Menu", {"Menu", "Menu_PG1_CELL1"}},
      {"CallSS RSM=4,RootMenu", {"-", "4"}},
      {"CallSS RSM=0,TitleMenu", {"-"}},
      {"JumpSS pgc_3", {"pgc_3"}},
      {"JumpSS FP_DOM", {"-"}},
      {"JumpSS vts_2, vts_ttn_13 : RootMenu", {"2", "13", "-"}},
      {"JumpSS vts_2, vts_ttn_0 : RootMenu", {"2", "-"}},
      {"JumpVTS_PTT ptt_2 @ vts_ttn_1", {"ptt_2 @ vts_ttn_1"}},
      {"LinkPTT 5, button=1", {"5"}},
      {"LinkPGCN Exit_Menu", {}},  // is Exit
      {"GoTo 3", {}},
      {"LinkNextPGC, button=1", {}},
      {"LinkPGCN ", {}},
      {"", {}},
  };
  for (const auto& [text, pieces] : rows) {
    EXPECT_EQ(PiecesOf(text), pieces) << text;
  }
}

TEST(References, AreReplacedOneByOne) {
  struct Row {
    std::string_view Text;
    std::size_t Index;
    std::string_view NewName, Renamed;  // empty where the text cannot carry it
  };
  constexpr Row Rows[] = {
      {"LinkPGCN Menu", 0, "My Menu", "LinkPGCN My Menu"},
      {"CallSS RSM=Menu_PG1_CELL1,, Menu", 0, "Start", "CallSS RSM=Menu_PG1_CELL1,, Start"},
      {"CallSS RSM=Menu_PG1_CELL1,, Menu", 1, "Start", "CallSS RSM=Start,, Menu"},
      {"CallSS RSM=0,, Menu", 0, "RootMenu", ""},
      {"JumpSS Menu", 0, "TitleMenu", ""},
      {"LinkPGN Old, button=1", 0, "Me, Myself", ""},
      {"{ SetNVTMR NV_TMR=1, TT_PGCN=A ; LinkPGCN A }", 1, "B",
       "{ SetNVTMR NV_TMR=1, TT_PGCN=A ; LinkPGCN B }"},
  };
  for (const Row& row : Rows) {
    const auto reference = TextReferencesOf(row.Text).at(row.Index);
    EXPECT_EQ(RenamedText(row.Text, reference, row.NewName).value_or(""), row.Renamed) << row.Text;
  }
}

VMICommand_P& Put(CommandList& list, std::string text) {
  return AddCommand(list, "Pre", std::move(text));
}

TEST(CommandAims, LeadToElementsAndNeverToPartsOfTheirNames) {
  Project project;
  MakeDefaultStructure(project);
  VTS_P& set = *project.Disc.Item(2);
  PGC_P& film = *FindPgc(project.Disc, "VTS1.TITLE1.PGC1");
  PGC_P& root = *FindPgc(project.Disc, "VTS1.LANGUAGE1.PGC1");
  film.PreCommands.clear();
  root.PreCommands.clear();
  project.FirstPlay.PreCommands.clear();
  FindPgc(project.Disc, "VMG1.LANGUAGE1.PGC1")->PreCommands.clear();
  film.PGCName = "VTS1_Title1";
  set.Title.Item(1)->PGC.Add({}).PGCName = "VTS1_Title10";
  root.PGCName = "My Menu";
  PG_P& empty = film.PG.Add({});
  film.PG.Add({}).Cell.Add({}).CellName = "Shown";
  empty.PGName = "Later";

  Put(film.PreCommands, "LinkPGCN VTS1_Title10");
  Put(film.PreCommands, "CallSS RSM=0,RootMenu");
  Put(film.PreCommands, "LinkPGN 1, button=0");  // the first that has a cell
  Put(root.PreCommands, "LinkPGCN MyMenu");
  Put(root.PreCommands, "JumpVTS_PTT ptt_1 @ vts_ttn_1");
  Put(project.FirstPlay.PreCommands, "JumpSS vts_1, vts_ttn_1 : RootMenu");
  Put(project.FirstPlay.PreCommands, "JumpTT 2");  // there is one

  const CommandAims aims(project, Rules::Players);
  const auto to = [&](std::string_view key) {
    std::vector<std::string> words;
    for (const CommandPlace& place : aims.To(key)) {
      words.push_back(WordsOf(project, place));
    }
    return words;
  };
  const std::string film1 = "VTS1.TITLE1.PGC1 ";
  const std::string root1 = "VTS1.LANGUAGE1.PGC1 ";
  EXPECT_THAT(to("VTS1.TITLE1.PGC1"), ElementsAre(root1 + "Pre2"));
  EXPECT_THAT(to("VTS1.TITLE1.PGC2"), ElementsAre(film1 + "Pre1"));
  EXPECT_THAT(to("VTS1.TITLE1.PGC1.PG2"), ElementsAre(root1 + "Pre2", film1 + "Pre3"));
  EXPECT_THAT(to("VTS1.LANGUAGE1.PGC1"), ElementsAre("FirstPGC Pre1", film1 + "Pre2"));
  EXPECT_THAT(to("VTS1.TITLE1"), ElementsAre("FirstPGC Pre1", root1 + "Pre2"));
  EXPECT_THAT(to("VTS1"), ElementsAre("FirstPGC Pre1"));
  EXPECT_THAT(to("VTS2"), IsEmpty());
  EXPECT_EQ(aims.Of("LinkPGCN mymenu", "VTS1.LANGUAGE1.PGC1").at(0).Key, "VTS1.LANGUAGE1.PGC1");

  const auto edits = aims.Renamed(project, "VTS1.LANGUAGE1.PGC1", "Main");
  ASSERT_TRUE(edits && edits->size() == 1);
  EXPECT_EQ(edits->front().Text, "LinkPGCN Main");
  EXPECT_EQ(WordsOf(project, edits->front().Place), root1 + "Pre1");

  // The later of two first, so that the earlier stays where it was.
  Put(film.PreCommands, "{ SetNVTMR NV_TMR=1, TT_PGCN=My Menu ; LinkPGCN mymenu }");
  const CommandAims again(project, Rules::Players);
  EXPECT_EQ(again.Renamed(project, "VTS1.LANGUAGE1.PGC1", "Main Menu of All").value().at(1).Text,
            "{ SetNVTMR NV_TMR=1, TT_PGCN=Main Menu of All ; LinkPGCN Main Menu of All }");

  ResetToNop(film.PreCommands[0]);
  EXPECT_EQ(film.PreCommands[0].FullCommand + film.PreCommands[0].CommandHex, "NOP0000000000000000");
}

TEST(PgcLinks, LeadWithinTheirDomain) {
  Project project;
  MakeDefaultStructure(project);
  AddNewVTSSet(project, true, 2);
  PGC_P& film = *FindPgc(project.Disc, "VTS1.TITLE1.PGC1");
  PGC_P& root = *FindPgc(project.Disc, "VTS1.LANGUAGE1.PGC1");
  FindTitle(project.Disc, "VTS1.TITLE1")->PGC.Add({}).PGCName = "Credits";
  FindPgc(project.Disc, "VTS2.TITLE1.PGC1")->NextPGC = "Credits";  // of another set
  film.NextPGC = "CREDITS";
  film.PrevPGC = film.PGCName;
  root.GoUpPGC = "resume";
  root.NextPGC = root.PGCName;
  using Links = std::vector<PgcLink>;
  EXPECT_EQ(LinksTo(project, "VTS1.TITLE1.PGC2", true),
            (Links{{"VTS1.TITLE1.PGC1", PgcLinkKind::Next, "VTS1.TITLE1.PGC2"}}));
  EXPECT_EQ(LinksTo(project, "VTS1.LANGUAGE1", true), Links());
  EXPECT_EQ(LinksTo(project, "VTS1.LANGUAGE1", false).size(), 1U);
  LinkOf(film, PgcLinkKind::Previous) = "none";
  EXPECT_EQ(LinksTo(project, "VTS1.TITLE1.PGC1", false), Links());
}

TEST(Names, AreRefusedWhereCommandsWouldMissThem) {
  Project project;
  MakeDefaultStructure(project);
  PGC_P& removed = FindTitle(project.Disc, "VTS1.TITLE1")->PGC.Add({});
  removed.PGCName = "Gone";
  removed.Removed = true;
  struct Row {
    ElementKind Kind;
    std::string_view Name, Code;
  };
  constexpr Row Rows[] = {
      {ElementKind::Pgc, "Main Menu", ""},
      {ElementKind::Pgc, "RootMenu", ""},
      {ElementKind::Pgc, "Gone", ""},
      {ElementKind::Pgc, "", "name-empty"},
      {ElementKind::Pgc, "  ", "name-empty"},
      {ElementKind::Pgc, "vts1_title1_PGC 1", "name-in-use"},
      {ElementKind::Title, "VTS1_Title1_PGC1", ""},  // of a PGC
      {ElementKind::Title, "vts1_title1", "name-in-use"},
      {ElementKind::Cell, "None", "name-reserved"},
      {ElementKind::Cell, "a;b", "name-breaks-line"},
      {ElementKind::Cell, "a\tb", "name-breaks-line"},
      {ElementKind::Title, "12", "name-is-number"},
      {ElementKind::Pgc, "PGC_3", "name-is-number"},
      {ElementKind::Program, "ptt_1 @ vts_ttn_2", "name-is-number"},
      {ElementKind::Program, "Chapter 12", ""},
      {ElementKind::Pgc, "Exit_Menu", "name-not-carried"},
      {ElementKind::Title, "Snopes", "name-not-carried"},
      {ElementKind::Program, "LinkPTT x", "name-not-carried"},
      {ElementKind::Cell, "Me, Myself", "name-not-carried"},
      {ElementKind::Pgc, "a}b", "name-not-carried"},
      {ElementKind::Program, "button=2", "name-not-carried"},
  };
  for (const auto& [kind, name, code] : Rows) {
    const auto refusal = RefuseName(project, kind, name);
    EXPECT_EQ(refusal ? refusal->Code : "", code) << name;
  }
  EXPECT_FALSE(RefuseName(project, ElementKind::Title, "VTS1 Title1", "VTS1.TITLE1")) << "its own";
}

TEST(CheckCommands, InASessionAMissingTargetIsAnErrorWhateverDigitsItKept) {
  Project project;
  MakeDefaultStructure(project);
  CommandList& list = FindPgc(project.Disc, "VTS1.TITLE1.PGC1")->PreCommands;
  Put(list, "LinkPGCN Lost").CommandHex = "2004000000000001";
  EXPECT_THAT(CheckCommands(project, Rules::Players).Errors, IsEmpty());
  EXPECT_EQ(CheckCommands(project, Rules::Players, {}, MissingTargets::AreErrors).Errors.size(), 1U);
}

}  // namespace
}  // namespace quorvelant
