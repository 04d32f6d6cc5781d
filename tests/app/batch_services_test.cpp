#include "app/batch_services.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/command_form.h"
#include "author/messages.h"
#include "model/default_structure.h"
#include "script/messages.h"
#include "script/script_reader.h"
#include "script/script_writer.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

TEST(BatchServices, ACommandErrorStopsTheRunAndIsListed) {
  const TempFolder folder;
  RecordingUi ui;
  Project project;
  MakeDefaultStructure(project);
  AddCommand(project.FirstPlay.PreCommands, "FirstPGC", "JumpTT NoSuchTitle");
  Project loaded;
  const std::string script = folder.Write("bad.qvp", WriteScript(project));
  EXPECT_FALSE(MakeBatchServices(ui).LoadScriptFile(script, false, loaded));
  ASSERT_EQ(ui.Messages.size(), 2U);
  EXPECT_TRUE(ui.Messages[0].Is(message::CommandErrorsNoted));
  EXPECT_TRUE(ui.Messages[1].Text.starts_with("VTS=") &&
              ui.Messages[1].Text.find("Command=JumpTT NoSuchTitle") != std::string::npos)
      << ui.Messages[1].Text;
}

TEST(BatchServices, AForeignFileFailsTheRun) {
  const TempFolder folder;
  folder.Write("disc/notes.txt", "mine");
  for (const bool exits : {true, false}) {
    RecordingUi ui;
    std::vector<std::string> line{"-i", SourceFile("examples/demo.qvp"), "-d", folder / "disc", "-create"};
    line.resize(line.size() + (exits ? 1 : 0), "-exit");
    const auto environment = [&](const std::string&) { return folder.Path().string(); };
    EXPECT_EQ(RunSwitchForm(line, ui, environment, MakeBatchServices(ui)), ExitFailed);
    ASSERT_EQ(ui.Messages.size(), 1U);
    EXPECT_TRUE(ui.Messages[0].Is(message::ForeignFile));
    EXPECT_THAT(ui.Messages[0].Text, testing::HasSubstr("\"notes.txt\""));
    EXPECT_EQ(ui.Messages[0].Place, folder / "disc");
    EXPECT_THAT(ui.StatusWords, testing::Not(testing::Contains("DVD Completed")));
    // Nothing is entered: the first title of TT_SRPT starts at sector 0.
    EXPECT_EQ(TempFolder::Read(folder / "disc/VIDEO_TS.IFO").substr(2048 + 8 + 8, 4), std::string(4, '\0'));
  }
}

}  // namespace
}  // namespace quorvelant
