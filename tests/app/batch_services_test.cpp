#include "app/batch_services.h"

#include <gtest/gtest.h>

#include <algorithm>

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

TEST(BatchServices, SuccessIsToldUnlessTheRunEndsWithIt) {
  const TempFolder folder;
  RecordingUi ui;
  const BatchServices services = MakeBatchServices(ui);
  for (const bool exitOnFinish : {true, false}) {
    Project project;
    ASSERT_TRUE(services.LoadScriptFile(SourceFile("examples/demo.qvp"), false, project));
    project.DestinationFolder = folder / "disc";
    Log log;
    EXPECT_TRUE(services.Author(project, {}, exitOnFinish, log));
    const auto told = std::count_if(ui.Messages.begin(), ui.Messages.end(), [](const Message& message) {
      return message.Title == "Author Success" && message.Text == "DVD Authoring Complete";
    });
    EXPECT_EQ(told, exitOnFinish ? 0 : 1);
  }
}

}  // namespace
}  // namespace quorvelant
