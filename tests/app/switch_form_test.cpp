#include "app/switch_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "app/command_form.h"
#include "app/messages.h"
#include "app/version.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

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

class SwitchRun : public testing::Test {
 protected:
  SwitchRun() {
    Services.LoadScriptFile = [this](const std::string& script, bool analyse, Project& project) {
      Calls.push_back("load " + script + (analyse ? " analyse" : ""));
      if (!ScriptFolder.empty()) {
        project.DestinationFolder = ScriptFolder;
      }
      return LoadResult;
    };
    Services.Author = [this](const Project& project, const AuthorOrder& order) {
      Calls.push_back("author " + order.Folder);
      EXPECT_TRUE(order.InPlace && !order.Rules.GoesBySettings && !order.ReadBack && !order.RemoveSeqEnd);
      EXPECT_EQ(order.Regions, AllowedRegions{});
      EXPECT_EQ(project.Tracks.Count(), 0U);
      Log(order.LogFile).WriteText("a line");
      AuthorResult result;
      result.Outcome = Outcome;
      return result;
    };
  }
  int Run(const std::vector<std::string>& arguments) {
    const auto environment = [this](const std::string& name) {
      return name == "HOME" ? Folder.Path().string() : std::string();
    };
    return RunSwitchForm(arguments, Ui, environment, Services);
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const Message& message : Ui.Messages) {
      EXPECT_EQ(message.Title, "");
      texts.push_back(message.Text);
    }
    return texts;
  }
  std::string SettingsPath() const { return Folder / ".config/quorvelant/Quorvelant.ini"; }

  TempFolder Folder;
  RecordingUi Ui;
  BatchServices Services;
  std::vector<std::string> Calls;
  std::string ScriptFolder;
  bool LoadResult = true;
  AuthorOutcome Outcome = AuthorOutcome::Done;
};

TEST_F(SwitchRun, EveryRefusalEndsTheProgramAndTouchesNothing) {
  struct Case {
    std::vector<std::string> Arguments;
    std::vector<std::string> Texts;
  };
  for (const Case& c : {
           Case{{"-create"}, {"No script file specified"}},
           Case{{" "}, {"No script file specified"}},
           Case{{"-d", "out"}, {"No script file specified"}},
           Case{{"-i", "x.qvp", "-create", "-exit"}, {"No Destination folder specified"}},
           Case{{"-i", "/no/such.qvp", "-d", "out"}, {"Unable to find script file: /no/such.qvp"}},
           Case{{"-i", Folder.Path().string(), "-d", "out"},
                {"Unable to find script file: " + Folder.Path().string()}},
           Case{{"-i x.qvp", "-d", "out"}, {}},
       }) {
    Ui.Messages.clear();
    EXPECT_EQ(Run(c.Arguments), ExitFailed);
    EXPECT_EQ(Texts(), c.Texts);
  }
  EXPECT_TRUE(Calls.empty());
  EXPECT_FALSE(std::filesystem::exists(SettingsPath()));
}

TEST_F(SwitchRun, ACleanBatchRunSaysNothingAndLeavesItsSettings) {
  const std::string script = Folder.Write("a disc.qvp", "");
  Folder.Write(".local/state/quorvelant/Quorvelant.LOG", "the run before");
  Folder.Write(".config/quorvelant/Quorvelant.ini", "Subrip=1\r\n");
  EXPECT_EQ(Run({"-i", script, "-d", "/out/", "-create", "-exit", "-analyse"}), ExitDone);
  EXPECT_THAT(Calls, ElementsAre("load " + script + " analyse", "author /out/"));
  EXPECT_TRUE(Ui.Messages.empty());
  EXPECT_THAT(Ui.StatusWords, ElementsAre("Quorvelant Compiling...."));
  EXPECT_EQ(TempFolder::Read(Folder / ".local/state/quorvelant/Quorvelant.LOG"), "a line\r\n");
  Settings zeros;
  zeros.DestinationFolder = "/out/";
  EXPECT_EQ(TempFolder::Read(SettingsPath()), SettingsText(zeros));
}

TEST_F(SwitchRun, WhatTheScriptAndTheSwitchesSayOfTheRun) {
  struct Case {
    std::vector<std::string> Switches;
    const char* ScriptFolder;
    bool Loads;
    AuthorOutcome Outcome;
    int Status;
    std::string LastCall, LastWords;
    bool TellsSuccess;
  };
  const std::string script = Folder.Write("a.qvp", "");
  const std::string loaded = "load " + script;
  constexpr AuthorOutcome Done = AuthorOutcome::Done;
  for (const Case& c : {
           // The script's folder wins; without -exit the window's caption comes back.
           Case{{"-create"}, "C:\\disc", true, Done, ExitDone, "author C:/disc", VersionCaption(), true},
           Case{{"-create"},
                "",
                true,
                AuthorOutcome::Failed,
                ExitFailed,
                "author /out",
                VersionCaption(),
                false},
           Case{
               {"-create", "-exit"}, "", false, Done, ExitFailed, loaded, "Ready", false},  // a faulty script
           Case{{"-exit"}, "", true, Done, ExitDone, loaded, "Ready", false},               // loaded alone
       }) {
    ScriptFolder = c.ScriptFolder;
    LoadResult = c.Loads;
    Outcome = c.Outcome;
    Ui.Messages.clear();
    std::vector<std::string> arguments{"-i", script, "-d", "/out"};
    arguments.insert(arguments.end(), c.Switches.begin(), c.Switches.end());
    EXPECT_EQ(Run(arguments), c.Status) << c.LastCall;
    EXPECT_EQ(Calls.back(), c.LastCall);
    EXPECT_EQ(Ui.StatusWords.back(), c.LastWords);
    EXPECT_EQ(!Ui.Messages.empty() && Ui.Messages[0].Is(message::DiscComplete), c.TellsSuccess);
    EXPECT_FALSE(std::filesystem::exists(SettingsPath()));
  }
}

TEST_F(SwitchRun, AFaultInARoomIsTold) {
  Services.Author = [](const Project&, const AuthorOrder&) -> AuthorResult {
    throw std::runtime_error("the disk is gone");
  };
  EXPECT_EQ(Run({"-i", Folder.Write("a.qvp", ""), "-d", "out", "-create", "-exit"}), ExitFailed);
  EXPECT_EQ(Ui.Messages.at(0).Text, "the disk is gone");
}

}  // namespace
}  // namespace quorvelant
