#include "model/default_structure.h"

#include <gtest/gtest.h>

#include "model/keys.h"

namespace quorvelant {
namespace {

TEST(DefaultStructure, PlaysTitleOneFromEveryMenu) {
  Project project;
  project.Tracks.Add({});
  MakeDefaultStructure(project, [](const Project& whole, const PGC_P& place, const std::string& text) {
    EXPECT_EQ(whole.Disc.Count(), 2U) << "names can be resolved only once the title stands";
    return place.Key + "<" + text;
  });
  EXPECT_EQ(project.Tracks.Count(), 0U);
  EXPECT_EQ(project.FirstPlay.PreCommands.at(0).Key, "FirstPGC1");
  EXPECT_EQ(project.FirstPlay.PreCommands.at(0).CommandHex, "FirstPGC<JumpTT VTS1_Title1");
  const PGC_P& manager = *FindPgc(project.Disc, "VMG1.LANGUAGE1.PGC1");
  EXPECT_EQ(manager.PGCName, "VMG_English_PGC1");
  EXPECT_EQ(manager.PreCommands.at(0).Key, "Pre1");
  EXPECT_EQ(manager.PreCommands.at(0).FullCommand, "JumpTT VTS1_Title1");
  EXPECT_EQ(project.Disc.Item(1)->Title.Count(), 0U);
  const PGC_P& root = *FindPgc(project.Disc, "VTS1.LANGUAGE1.PGC1");
  EXPECT_EQ(root.MenuType, "Root");
  EXPECT_EQ(root.PreCommands.at(0).FullCommand, "JumpVTS_TT VTS1_Title1");
  const PGC_P& title = *FindPgc(project.Disc, "VTS1.TITLE1.PGC1");
  EXPECT_EQ(title.PaletteName, "Default");
  EXPECT_EQ(title.AudioAssignments[5], 5);
  EXPECT_EQ(title.LetterAssignments[31], 31);
  EXPECT_EQ(project.Disc.Item(2)->AudioExtension[7], "Unspecified");
  EXPECT_EQ(project.Disc.Item(2)->Standard(), "");
}

TEST(DefaultStructure, LaterTitleSetsHaveNoCommand) {
  Project project;
  MakeDefaultStructure(project);
  AddNewVTSSet(project, true, 2);
  EXPECT_EQ(project.Disc.Item("VTS2")->Title.Item("VTS2.TITLE1")->TitleName, "VTS2_Title1");
  EXPECT_TRUE(FindPgc(project.Disc, "VTS2.LANGUAGE1.PGC1")->PreCommands.empty());
}

TEST(Collection, ARemovedElementKeepsItsPlace) {
  Project project;
  MakeDefaultStructure(project);
  project.Disc.Remove(2);
  AddNewVTSSet(project, true, 2);
  EXPECT_EQ(project.Disc.Item(3)->Key, "VTS2");
  EXPECT_TRUE(project.Disc.Item("VTS1")->Removed);
}

}  // namespace
}  // namespace quorvelant
