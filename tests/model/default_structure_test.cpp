#include "model/default_structure.h"

#include <gtest/gtest.h>

#include "model/keys.h"

namespace quorvelant {
namespace {

TEST(DefaultStructure, PlaysTitleOneFromEveryMenu) {
  Project project;
  project.Tracks.Add({});
  std::string resolved;
  MakeDefaultStructure(project, [&](const Project& whole, const PGC_P& place, const std::string& text) {
    EXPECT_EQ(whole.Disc.Count(), 2U) << "names can be resolved only once the title stands";
    return resolved = place.Key + "<" + text;
  });
  EXPECT_EQ(project.Tracks.Count(), 0U);
  EXPECT_EQ(project.FirstPlay.PreCommands.at(0).CommandHex, "FirstPGC<JumpTT VTS1_Title1");
  EXPECT_EQ(FindPgc(project.Disc, "VMG1.LANGUAGE1.PGC1")->PreCommands.at(0).FullCommand,
            "JumpTT VTS1_Title1");
  EXPECT_EQ(resolved, "VTS1.LANGUAGE1.PGC1<JumpVTS_TT VTS1_Title1");
  EXPECT_EQ(FindTitle(project.Disc, "VTS1.TITLE1")->TitleName, "VTS1_Title1");
  EXPECT_EQ(FindPgc(project.Disc, "VTS1.TITLE1.PGC1")->LetterAssignments[31], 31);
}

TEST(DefaultStructure, LaterTitleSetsHaveNoCommandAndRemovedOnesKeepTheirPlace) {
  Project project;
  MakeDefaultStructure(project);
  project.Disc.Remove(2);
  AddNewVTSSet(project, true, 2);
  EXPECT_TRUE(project.Disc.Item("VTS1")->Removed);
  EXPECT_EQ(project.Disc.Item(3)->Key, "VTS2");
  EXPECT_EQ(project.Disc.Item("VTS2")->Title.Item("VTS2.TITLE1")->TitleName, "VTS2_Title1");
  EXPECT_TRUE(FindPgc(project.Disc, "VTS2.LANGUAGE1.PGC1")->PreCommands.empty());
}

}  // namespace
}  // namespace quorvelant
