#include "vm/command_choices.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/default_structure.h"
#include "model/keys.h"
#include "vm/resolver.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

PG_P& AddProgram(PGC_P& chain, const std::string& name, int cells) {
  PG_P& program = chain.PG.Add({});
  program.PGName = name;
  for (int i = 1; i <= cells; ++i) {
    program.Cell.Add({}).CellName = fmt::format("{}_CELL{}", name, i);
  }
  return program;
}

// Two title sets. In the first a film of three programs, of which one is removed and one has no cell; a PGC
// whose name bears a command word, and menus of two sets that share a name.
Project Sample() {
  Project project;
  MakeDefaultStructure(project);
  AddNewVTSSet(project, true, 2);
  PGC_P& film = *FindPgc(project.Disc, "VTS1.TITLE1.PGC1");
  AddProgram(film, "A", 2);
  AddProgram(film, "Gone", 1).Removed = true;
  AddProgram(film, "Empty", 0);
  AddProgram(film, "B", 1);
  Title_P& title = *FindTitle(project.Disc, "VTS1.TITLE1");
  title.PGC.Add(MakePgc("Exit page", 2, 0, 1, "VTS1.TITLE1.PGC2"));
  title.PGC.Add(MakePgc("Credits", 2, 0, 1, "VTS1.TITLE1.PGC3"));
  AddProgram(*FindPgc(project.Disc, "VTS1.TITLE1.PGC3"), "C", 1);
  for (const char* set : {"VTS1", "VTS2"}) {
    const std::string language = LanguageKey(set, 1);
    FindLanguage(project.Disc, language)->PGC.Add(MakePgc("Sound", 0, 1, 0, PgcKey(language, 2))).MenuType =
        "Audio";
  }
  return project;
}

TEST(CommandChoices, NamesReachableFromAPlace) {
  Project project = Sample();
  const std::tuple<std::string_view, TargetKind, std::vector<std::string>> rows[] = {
      {"FirstPGC", TargetKind::JumpTitle, {"VTS1_Title1", "VTS2_Title1"}},
      {"FirstPGC", TargetKind::VmgPgc, {"VMG_English_PGC1"}},
      {"FirstPGC", TargetKind::LinkPgc, {}},
      {"FirstPGC", TargetKind::JumpSetTitle, {}},
      {"VMG1.LANGUAGE1.PGC1", TargetKind::JumpTitle, {"VTS1_Title1", "VTS2_Title1"}},
      {"VMG1.LANGUAGE1.PGC1", TargetKind::TimerPgc, {}},
      {"VTS1.LANGUAGE1.PGC1", TargetKind::LinkPgc, {"VTS1_English_PGC1", "Sound"}},
      {"VTS2.LANGUAGE1.PGC1", TargetKind::LinkPgc, {"VTS2_English_PGC1"}},  // "Sound" means the first set's
      {"VTS2.LANGUAGE1.PGC1", TargetKind::JumpSetTitle, {"VTS2_Title1"}},
      {"VTS1.LANGUAGE1.PGC1", TargetKind::JumpSetPart, {"A", "B", "C"}},
      {"VTS1.LANGUAGE1.PGC1", TargetKind::JumpTitle, {}},
      {"VTS1.LANGUAGE1.PGC1", TargetKind::LinkPart, {}},
      {"VTS1.TITLE1.PGC1.PG1.CELL2", TargetKind::LinkPgc, {"VTS1_Title1_PGC1", "Credits"}},
      {"VTS1.TITLE1.PGC1", TargetKind::LinkProgram, {"A", "B"}},
      {"VTS1.TITLE1.PGC1", TargetKind::LinkPart, {"A", "B", "C"}},
      {"VTS1.TITLE1.PGC1", TargetKind::LinkCell, {"A_CELL1", "A_CELL2", "B_CELL1"}},
      {"VTS1.TITLE1.PGC3", TargetKind::ResumeCell, {"C_CELL1"}},
      {"VTS1.TITLE1.PGC3", TargetKind::TimerPgc, {"VTS1_Title1_PGC1", "Credits"}},
  };
  for (const auto& [place, kind, names] : rows) {
    const auto stand = StandOf(project, place);
    ASSERT_TRUE(stand) << place;
    EXPECT_EQ(TargetsFor(project, Rules::Players, *stand, kind), names) << place << static_cast<int>(kind);
  }
  project.Disc.Item(3)->Removed = true;
  EXPECT_FALSE(StandOf(project, "VTS2.TITLE1.PGC1"));
  EXPECT_FALSE(StandOf(project, "VTS1.TITLE1.PGC12"));
}

std::vector<std::string> Texts(const Project& project, std::string_view place) {
  std::vector<std::string> texts;
  for (const CommandFields& fields : SystemSpaceChoices(project, Rules::Players, *StandOf(project, place))) {
    texts.push_back(CommandText(fields));
  }
  return texts;
}

// A removed set takes its number from those after it, as on the disc.
TEST(CommandChoices, MenusReachableFromAPlace) {
  Project project = Sample();
  EXPECT_THAT(Texts(project, "FirstPGC"),
              ElementsAre("JumpSS FP_DOM", "JumpSS TitleMenu", "JumpSS vts_1, vts_ttn_1 : RootMenu",
                          "JumpSS vts_2, vts_ttn_1 : RootMenu", "JumpSS vts_1, vts_ttn_1 : AudioMenu",
                          "JumpSS vts_2, vts_ttn_1 : AudioMenu", "JumpSS VMG_English_PGC1"));
  EXPECT_THAT(Texts(project, "VTS1.LANGUAGE1.PGC1"),
              ElementsAre("JumpSS FP_DOM", "JumpSS TitleMenu", "JumpSS VMG_English_PGC1"));
  FindPgc(project.Disc, "VMG1.LANGUAGE1.PGC1")->MenuType = "None";
  EXPECT_THAT(Texts(project, "VTS1.TITLE1.PGC1"),
              ElementsAre("CallSS RSM=0,FP_DOM", "CallSS RSM=0,RootMenu", "CallSS RSM=0,AudioMenu",
                          "CallSS RSM=0,, VMG_English_PGC1"));
  project.Disc.Item(2)->Removed = true;
  EXPECT_THAT(Texts(project, "FirstPGC"), testing::Contains("JumpSS vts_1, vts_ttn_1 : RootMenu"));
  EXPECT_THAT(Texts(project, "FirstPGC"),
              testing::Not(testing::Contains("JumpSS vts_2, vts_ttn_1 : RootMenu")));
}

TEST(CommandChoices, NewCommandsTakeTheFirstTargetOfTheirPlace) {
  const Project project = Sample();
  const auto form = [&project](CommandType type, std::string_view place) {
    const auto fields = DefaultFields(project, Rules::Players, *StandOf(project, place), type);
    return fields ? CommandText(*fields) : std::string();
  };
  EXPECT_EQ(form(CommandType::JumpTitle, "FirstPGC"), "JumpTT VTS1_Title1");
  EXPECT_EQ(form(CommandType::JumpTitle, "VTS2.LANGUAGE1.PGC1"), "JumpVTS_TT VTS2_Title1");
  EXPECT_EQ(form(CommandType::LinkCell, "FirstPGC"), "");
  EXPECT_EQ(form(CommandType::LinkPart, "VTS2.TITLE1.PGC1"), "");  // it has no programs
  // In a title every type has a form of its own type, which is found and without a fault.
  NameIndex names(project, Rules::Players);
  for (const CommandTypeRow& row : CommandTypes) {
    const std::string text = form(row.Type, "VTS1.TITLE1.PGC1");
    const Resolution result = ResolveText(text, {}, &names);
    EXPECT_TRUE(result.Faults == TextFault::None && !result.TargetMissing) << row.Title << ": " << text;
    EXPECT_EQ(TypeOf(FieldsOf(text)->Command), row.Type) << text;
  }
}

}  // namespace
}  // namespace quorvelant
