#include "edit/button_aims.h"

#include <gtest/gtest.h>

#include <tuple>

#include "edit/project_file.h"
#include "model/keys.h"
#include "support/folders.h"
#include "support/recording_ui.h"

namespace quorvelant {
namespace {

// From a cell or PGC to an element: the command, or none where players take none.
TEST(ButtonAims, FindTheCommandThatLeadsThere) {
  EditSession session(Rules::Players);
  RecordingUi ui;
  ui.Unattended = true;
  ASSERT_TRUE(OpenProjectFile(session, SourceFile("examples/demo.qvp"), false, ui));
  const std::string manager = "VMG1.LANGUAGE1.PGC1.PG1.CELL1";
  const std::string menu = "VTS1.LANGUAGE1.PGC1.PG1.CELL1";
  const std::string title = "VTS1.TITLE1.PGC1.PG1.CELL1";
  const std::vector<std::tuple<std::string, std::string, std::string>> cases{
      {manager, "VTS1.TITLE2", "JumpTT VTS1_Title2"},
      {manager, "VTS2.TITLE1.PGC1", "JumpTT VTS2_Title1"},
      {manager, "VTS2.TITLE1.PGC1.PG1", "JumpTT VTS2_Title1"},
      {manager, "VTS2.TITLE1.PGC1.PG2", ""},  // a chapter of another set
      {manager, "VTS1.LANGUAGE1.PGC1", "JumpSS vts_1, vts_ttn_1 : RootMenu"},
      {manager, "VTS1", "JumpSS vts_1, vts_ttn_1 : RootMenu"},
      {manager, "VMG1.LANGUAGE1.PGC1", "LinkPGCN VMG_English_PGC1"},
      {manager, "FirstPGC", "JumpSS FP_DOM"},
      {menu, "VTS1.TITLE2", "JumpVTS_TT VTS1_Title2"},
      {menu, "VTS1.TITLE1.PGC1.PG2", "JumpVTS_PTT VTS1_Title1_PGC1_PG2"},
      {menu, "VTS1.TITLE1.PGC1.PG2.CELL1", "JumpVTS_PTT VTS1_Title1_PGC1_PG2"},
      {menu, "VTS2.TITLE1", ""},  // a title of another set
      {menu, "VMG1", "JumpSS TitleMenu"},
      {menu, "VTS2", ""},
      {title, "VTS1.TITLE1.PGC1.PG2", "LinkPGN VTS1_Title1_PGC1_PG2, button=0"},
      {title, "VTS1.TITLE2.PGC1.PG2", "JumpVTS_PTT VTS1_Title2_PGC1_PG2"},
      {title, "VTS1.LANGUAGE1.PGC1", "CallSS RSM=0,RootMenu"},
      {title, "VTS2.LANGUAGE1.PGC1", ""},
      {title, "VMG1.LANGUAGE1.PGC1", "CallSS RSM=0,, VMG_English_PGC1"},
      {menu, "VTS9.TITLE1", ""},
      {"FirstPGC", "VTS1.TITLE1", ""},
      {menu, "", ""}};
  for (const auto& [from, to, text] : cases) {
    EXPECT_EQ(TextLeadingTo(session.Work(), session.RulesInForce(), from, to).value_or(""), text)
        << from << " to " << to;
  }
  // Of two elements of one name a command reaches the first alone.
  Project twins = session.Work();
  FindTitle(twins.Disc, "VTS2.TITLE1")->TitleName = "VTS1_Title1";
  EXPECT_TRUE(TextLeadingTo(twins, Rules::Players, manager, "VTS1.TITLE1"));
  EXPECT_FALSE(TextLeadingTo(twins, Rules::Players, manager, "VTS2.TITLE1"));
}

}  // namespace
}  // namespace quorvelant
