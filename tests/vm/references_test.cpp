#include "vm/references.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/default_structure.h"
#include "model/keys.h"
#include "model/walk.h"
#include "vm/check_commands.h"
#include "vm/command_aims.h"
#include "vm/messages.h"
#include "vm/name_rules.h"
#include "vm/pgc_links.h"

namespace quorvelant {
namespace {

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

// The default structure, with the commands told alone.
Project WithCommands(const std::vector<std::pair<std::string_view, std::string>>& commands = {}) {
  Project project;
  MakeDefaultStructure(project);
  project.FirstPlay.PreCommands.clear();
  for (const auto& at : LivePgcs(project)) {
    at.Chain->PreCommands.clear();
  }
  for (const auto& [key, text] : commands) {
    PGC_P& pgc = key == FirstPgcKey ? project.FirstPlay : *FindPgc(project.Disc, key);
    AddCommand(pgc.PreCommands, "Pre", text);
  }
  return project;
}
constexpr const char* Film = "VTS1.TITLE1.PGC1";
constexpr const char* Root = "VTS1.LANGUAGE1.PGC1";

TEST(CommandAims, LeadToElementsAndNeverToPartsOfTheirNames) {
  Project project = WithCommands({{Film, "LinkPGCN VTS1_Title10"},
                                  {Film, "CallSS RSM=0,RootMenu"},
                                  {Film, "LinkPGN 1, button=0"},  // the first that has a cell
                                  {Root, "LinkPGCN MyMenu"},
                                  {Root, "JumpVTS_PTT ptt_1 @ vts_ttn_1"},
                                  {FirstPgcKey, "JumpSS vts_1, vts_ttn_1 : RootMenu"},
                                  {FirstPgcKey, "JumpTT 2"}});  // there is one
  PGC_P& film = *FindPgc(project.Disc, Film);
  film.PGCName = "VTS1_Title1";
  FindTitle(project.Disc, "VTS1.TITLE1")->PGC.Add({}).PGCName = "VTS1_Title10";
  FindPgc(project.Disc, Root)->PGCName = "My Menu";
  film.PG.Add({}).PGName = "Later";
  film.PG.Add({}).Cell.Add({}).CellName = "Shown";

  const CommandAims aims(project, Rules::Players);
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {Film, {"VTS1.LANGUAGE1.PGC1 Pre2"}},
      {"VTS1.TITLE1.PGC2", {"VTS1.TITLE1.PGC1 Pre1"}},
      {"VTS1.TITLE1.PGC1.PG2", {"VTS1.LANGUAGE1.PGC1 Pre2", "VTS1.TITLE1.PGC1 Pre3"}},
      {Root, {"FirstPGC Pre1", "VTS1.TITLE1.PGC1 Pre2"}},
      {"VTS1.TITLE1", {"FirstPGC Pre1", "VTS1.LANGUAGE1.PGC1 Pre2"}},
      {"VTS1", {"FirstPGC Pre1"}},
      {"VTS2", {}},
  };
  for (const auto& [key, commands] : rows) {
    std::vector<std::string> words;
    for (const CommandPlace& place : aims.To(key)) {
      words.push_back(WordsOf(project, place));
    }
    EXPECT_EQ(words, commands) << key;
  }
  EXPECT_EQ(aims.Of("LinkPGCN mymenu", Root).at(0).Key, Root);

  const auto edits = aims.Renamed(project, Root, "Main");
  ASSERT_TRUE(edits && edits->size() == 1);
  EXPECT_EQ(edits->front().Text, "LinkPGCN Main");
  EXPECT_EQ(WordsOf(project, edits->front().Place), "VTS1.LANGUAGE1.PGC1 Pre1");

  // The later of two first, so that the earlier stays where it was.
  AddCommand(film.PreCommands, "Pre", "{ SetNVTMR NV_TMR=1, TT_PGCN=My Menu ; LinkPGCN mymenu }");
  const CommandAims again(project, Rules::Players);
  EXPECT_EQ(again.Renamed(project, Root, "Main Menu of All").value().at(1).Text,
            "{ SetNVTMR NV_TMR=1, TT_PGCN=Main Menu of All ; LinkPGCN Main Menu of All }");

  ResetToNop(film.PreCommands[0]);
  EXPECT_EQ(film.PreCommands[0].FullCommand + film.PreCommands[0].CommandHex, "NOP0000000000000000");
}

TEST(PgcLinks, LeadWithinTheirDomain) {
  Project project = WithCommands();
  AddNewVTSSet(project, true, 2);
  PGC_P& film = *FindPgc(project.Disc, Film);
  PGC_P& root = *FindPgc(project.Disc, Root);
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
  Project project = WithCommands();
  PGC_P& removed = FindTitle(project.Disc, "VTS1.TITLE1")->PGC.Add({});
  removed.PGCName = "Gone";
  removed.Removed = true;
  constexpr std::tuple<ElementKind, std::string_view, std::string_view> Rows[] = {
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
  Project project = WithCommands({{Film, "LinkPGCN Lost"}});
  FindPgc(project.Disc, Film)->PreCommands[0].CommandHex = "2004000000000001";
  EXPECT_THAT(CheckCommands(project, Rules::Players).Errors, IsEmpty());
  EXPECT_EQ(CheckCommands(project, Rules::Players, {}, MissingTargets::AreErrors).Errors.size(), 1U);
  EXPECT_EQ(FindPgc(project.Disc, Film)->PreCommands[0].CommandHex, "") << "as after a load of what is saved";
}

}  // namespace
}  // namespace quorvelant
