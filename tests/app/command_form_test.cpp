#include "app/version.h"
#include "command_run.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

TEST(CommandForm, HelpVersionAndWrongUsage) {
  struct Case {
    std::vector<std::string> Arguments;
    int Status;
    std::string Out;  // what each stream begins with or holds
    std::string Err;
  };
  for (const Case& c : {
           Case{{}, ExitDone, "Usage: quorvelant", ""},
           Case{{"--help"}, ExitDone, "Usage: quorvelant", ""},
           Case{{"--version"}, ExitDone, "quorvelant " + std::string(ProgramVersion()), ""},
           Case{{"paint"}, ExitUsage, "", "There is no command \"paint\""},
           Case{{"--paint"}, ExitUsage, "", "--help"},
           Case{{""}, ExitUsage, "", "There is no command"},
       }) {
    const CommandRun run(c.Arguments);
    EXPECT_EQ(run.Status, c.Status);
    EXPECT_THAT(run.Out, HasSubstr(c.Out));
    EXPECT_THAT(run.Err, HasSubstr(c.Err));
    EXPECT_EQ(c.Out.empty(), run.Out.empty());
    EXPECT_EQ(c.Err.empty(), run.Err.empty());
  }
}

TEST(Version, TheCaptionHasFourNumbers) {
  EXPECT_THAT(VersionCaption(),
              testing::MatchesRegex("Quorvelant Ondra Version [0-9]+\\.[0-9]+\\.0\\.[0-9]+"));
}

}  // namespace
}  // namespace quorvelant
