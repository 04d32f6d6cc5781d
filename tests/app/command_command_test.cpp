#include "command_run.h"
#include "support/folders.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

CommandRun RunCommand(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "command");
  return CommandRun(arguments);
}

TEST(CommandCommand, DigitsAndBack) {
  const std::vector<std::string> texts{"JumpSS TitleMenu", "JumpSS vts_1, vts_ttn_1 : RootMenu",
                                       "LinkTopC, button=1", "SetHL_BTNN HL_BTTN=1",
                                       "SetSTN audio=1, subpicture=1:ON"};
  const CommandRun digits = RunCommand(texts);
  EXPECT_EQ(digits.Status, ExitDone);
  EXPECT_EQ(digits.Out,
            "3006000000420000\n3006000101830000\n2001000000000401\n5600000004000000\n51000080C0000000\n");
  std::istringstream lines(digits.Out);
  std::vector<std::string> back{"--decode"};
  for (std::string line; std::getline(lines, line);) {
    back.push_back(line);
  }
  std::string expected;
  for (const std::string& text : texts) {
    expected += text + "\n";
  }
  EXPECT_EQ(RunCommand(back).Out, expected);
}

TEST(CommandCommand, SaysWhatItCannotDo) {
  struct Case {
    std::vector<std::string> Arguments;
    int Status;
    std::string Out;
    std::string Message;
  };
  for (const Case& c : {
           Case{{"play"}, ExitFailed, "0000000000000000\n", "\"play\" is no command; it stands as NOP"},
           Case{{"LinkPGCN A"},
                ExitDone,
                "2004000000000001\n",
                "\"LinkPGCN A\": the number of \"a\" is not known without a project (--project); 1 stands "
                "for it"},
           Case{{"--decode", "2001"},
                ExitFailed,
                "unknown command\n",
                "\"2001\" is not 16 hexadecimal digits"},
       }) {
    const CommandRun outcome = RunCommand(c.Arguments);
    EXPECT_EQ(outcome.Status, c.Status);
    EXPECT_EQ(outcome.Out, c.Out);
    ASSERT_EQ(outcome.Messages.size(), 1U);
    EXPECT_EQ(outcome.Messages[0].Text, c.Message);
  }
  EXPECT_EQ(RunCommand({"--decode", "2001000000000004"}).Out, "unknown command\n");
  EXPECT_EQ(RunCommand({}).Status, ExitUsage);
  EXPECT_EQ(RunCommand({"--rules", "old", "NOP"}).Status, ExitUsage);
}

TEST(CommandCommand, NamesAreLookedUpInAProject) {
  const std::string script = SourceFile("examples/demo.qvp");
  const std::vector<std::string> texts{"LinkPGCN VTS1_Title2_PGC1", "JumpVTS_PTT VTS1_Title1_PGC1_PG3"};
  const auto with = [&](const std::string& rules) {
    std::vector<std::string> arguments{"--project", script, "--rules", rules};
    arguments.insert(arguments.end(), texts.begin(), texts.end());
    return RunCommand(arguments);
  };
  // The second title's chain is the second of the set's table, and the first of its title.
  EXPECT_EQ(with("players").Out, "2004000000000002\n3005000300010000\n");
  EXPECT_EQ(with("classic").Out, "2004000000000001\n3005000300010000\n");
  const CommandRun missing = RunCommand({"--project", script, "LinkPGCN 9"});
  EXPECT_EQ(missing.Status, ExitFailed);
  ASSERT_EQ(missing.Messages.size(), 1U);
  EXPECT_EQ(missing.Messages[0].Text, "\"LinkPGCN 9\": nothing in the project is named \"9\"");
  EXPECT_EQ(RunCommand({"--project", script + ".gone", "NOP"}).Status, ExitFailed);
}

TEST(CommandCommand, JsonHoldsTextDigitsAndMessages) {
  const CommandRun outcome = RunCommand({"--json", "If ( GPRM1 == 2 ) Exit", "\xFF"});
  EXPECT_EQ(outcome.Status, ExitFailed);
  EXPECT_THAT(outcome.Out, HasSubstr("\"text\": \"If ( GPRM1 == 2 ) Exit\""));
  EXPECT_THAT(outcome.Out, HasSubstr("\"hex\": \"30A1000000000102\""));
  EXPECT_THAT(outcome.Out, HasSubstr("players will not compare with the number"));
  EXPECT_TRUE(outcome.Messages.empty());
}

}  // namespace
}  // namespace quorvelant
