#include "app/switch_form.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "app/command_form.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

TEST(SwitchForm, TheFirstArgumentDecides) {
  for (const char* first :
       {"-i", "-d", "-create", "-exit", "-analyse", "-i \"a.qvp\" -d \"out\"", " -i", " "}) {
    EXPECT_TRUE(IsSwitchForm(std::vector<std::string>{first})) << first;
  }
  for (const char* first : {"author", "--help", "-h", "-input", ""}) {
    EXPECT_FALSE(IsSwitchForm(std::vector<std::string>{first})) << first;
  }
  EXPECT_FALSE(IsSwitchForm({}));
}

TEST(SwitchForm, TheRawLineIsPutTogetherAgain) {
  struct Case {
    std::vector<std::string> Arguments;
    const char* Line;
  };
  for (const Case& c : {
           Case{{"-i", "my disc.qvp", "-d", "out", "-create"}, "-i \"my disc.qvp\" -d \"out\" -create"},
           Case{{"-i", "\"quoted\"", "-exit"}, "-i \"quoted\" -exit"},
           Case{{"-i \"a\" -d \"b\"", "-create"}, "-i \"a\" -d \"b\" -create"},
           Case{{"-create", "stray", "-i"}, "-create stray -i"},
           Case{{"-i", "", "-d", "x"}, "-i \"\" -d \"x\""},
       }) {
    EXPECT_EQ(RawCommandLine(c.Arguments), c.Line);
  }
}

TEST(SwitchForm, SwitchesAreFoundAnywhereInTheLine) {
  struct Case {
    const char* Line;
    std::optional<Switches> Found;
  };
  for (const Case& c : {
           Case{R"(-i "C:\a.qvp" -d "C:\out\" -create -exit -analyse)",
                Switches{"C:\\a.qvp", "C:\\out", true, true, true}},
           Case{R"(-d "C:\")", Switches{"", "C:", false, false, false}},
           Case{R"(-i " padded " -d "a\\")", Switches{"padded", "a\\", false, false, false}},
           Case{R"(-i "my-exit.qvp" -d "re-create")",
                Switches{"my-exit.qvp", "re-create", true, true, false}},
           Case{R"(-I "a" -D "b")", Switches{}},
           Case{" ", Switches{}},
           Case{"-i", Switches{}},
           Case{"-i a.qvp -d \"b\"", std::nullopt},
           Case{"-i \"a\" -d b", std::nullopt},
           Case{"-i \"unclosed", Switches{"unclosed", "", false, false, false}},
       }) {
    EXPECT_EQ(ParseSwitches(c.Line), c.Found) << c.Line;
  }
}

TEST(SwitchForm, TheOrderIsTraditionalAndAFaultIsTold) {
  const TempFolder folder;
  RecordingUi ui;
  BatchServices services;
  services.LoadScriptFile = [](const std::string&, bool, const Project&) { return true; };
  services.Author = [](const Project&, const AuthorOrder& order) -> AuthorResult {
    EXPECT_TRUE(order.InPlace && !order.Rules.GoesBySettings && !order.ReadBack && !order.RemoveSeqEnd);
    EXPECT_EQ(order.Regions, AllowedRegions{});
    throw std::runtime_error("the disk is gone");
  };
  const auto environment = [&](const std::string&) { return folder.Path().string(); };
  EXPECT_EQ(RunSwitchForm(std::vector<std::string>{"-i", folder.Write("a.qvp", ""), "-d", "out", "-create"},
                          ui, environment, services),
            ExitFailed);
  EXPECT_EQ(ui.Messages.at(0).Text, "the disk is gone");
}

}  // namespace
}  // namespace quorvelant
