#include "app/command_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "app/version.h"
#include "support/recording_ui.h"

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
    RecordingUi ui;
    std::ostringstream out;
    std::ostringstream err;
    const auto environment = [](const std::string&) { return std::string(); };
    EXPECT_EQ(RunCommandForm(c.Arguments, ui, out, err, environment), c.Status);
    EXPECT_THAT(out.str(), HasSubstr(c.Out));
    EXPECT_THAT(err.str(), HasSubstr(c.Err));
    EXPECT_EQ(c.Out.empty(), out.str().empty());
    EXPECT_EQ(c.Err.empty(), err.str().empty());
  }
}

TEST(Version, TheCaptionHasFourNumbers) {
  EXPECT_THAT(VersionCaption(),
              testing::MatchesRegex("Quorvelant Ondra Version [0-9]+\\.[0-9]+\\.0\\.[0-9]+"));
}

}  // namespace
}  // namespace quorvelant
