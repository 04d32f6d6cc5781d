// `quorvelant author` and the switch form, as a user runs them, over the example disc.
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "app/batch_services.h"
#include "app/command_form.h"
#include "app/settings.h"
#include "app/switch_form.h"
#include "author/output_folder.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/folders.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using Files = std::map<std::string, std::string>;

Files FilesOf(const fs::path& folder) {
  Files files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    files[entry.path().filename().string()] = TempFolder::Read(entry.path());
  }
  return files;
}

class AuthorCommand : public testing::Test {
 protected:
  AuthorCommand() { ui.Unattended = true; }

  int Author(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "author");
    out.str({});
    std::ostringstream err;
    return RunCommandForm(arguments, ui, out, err, Environment());
  }
  EnvironmentLookup Environment() {
    return [this](const std::string& name) {
      return name == "XDG_CONFIG_HOME"  ? temp / "config"
             : name == "XDG_STATE_HOME" ? temp / "state"
                                        : std::string();
    };
  }

  TempFolder temp;
  RecordingUi ui;
  std::ostringstream out;
  std::string demo = SourceFile("examples/demo.qvp");
  std::string disc = temp / "VIDEO_TS";
};

TEST_F(AuthorCommand, AnnouncesWritesAndSums) {
  ASSERT_EQ(Author({demo, "-o", disc, "--dry-run", "--log-file", demo + "/log"}), ExitDone);
  ASSERT_EQ(ui.Messages.size(), 1U);
  EXPECT_EQ(ui.Messages[0].Text, "The log could not be written");
  ui.Messages.clear();
  ASSERT_EQ(Author({demo, "-o", disc, "--dry-run", "--log-file", temp / "logs/run.log"}), ExitDone);
  EXPECT_THAT(TempFolder::Read(temp / "logs/run.log"), testing::StartsWith("***** MENU TRACK LIST"));
  EXPECT_FALSE(fs::exists(LogFile(Environment())) || fs::exists(disc));
  EXPECT_THAT(out.str(), HasSubstr("Would write " + disc));
  ASSERT_EQ(Author({demo, "-o", disc}), ExitDone);
  EXPECT_THAT(ui.Messages, IsEmpty());
  EXPECT_THAT(out.str(), HasSubstr("3 titles in 2 title sets, PAL\n"));
  EXPECT_THAT(out.str(), HasSubstr("the disc needs about "));
  EXPECT_THAT(out.str(), HasSubstr("Title 1.1  00:00:14:00  3 chapters  VTS1_Title1\n"));
  EXPECT_THAT(out.str(), HasSubstr("Wrote " + disc));
  EXPECT_THAT(TempFolder::Read(LogFile(Environment())),
              testing::StartsWith("***** MENU TRACK LIST FOR VTS 2 *****\r\n"));
  for (const auto& [name, content] : FilesOf(disc)) {
    EXPECT_TRUE(IsDiscFileName(name)) << name;
  }
  EXPECT_EQ(FilesOf(disc).size(), 10U);
  for (const auto& [buttons, leads] : {std::pair{std::vector{1}, "title 1 chapter 1"},
                                       {{2}, "title 2 chapter 1"},
                                       {{4}, "title 3 chapter 1"},
                                       {{3, 2}, "title 1 chapter 2"},
                                       {{3, 4, 3, 3}, "title 1 chapter 3"}}) {
    EXPECT_EQ(PressButtons(disc, 0, buttons), leads);
  }
}

TEST_F(AuthorCommand, TheCheckerFindsNothing) {
  if (!HasChecker()) {
    GTEST_SKIP() << CheckerMissing;
  }
  ASSERT_EQ(Author({demo, "-o", disc}), ExitDone);
  EXPECT_THAT(CheckerErrors(disc), IsEmpty());
}

TEST_F(AuthorCommand, JsonIsOneEventALine) {
  ASSERT_EQ(Author({demo, "-o", disc, "--json"}), ExitDone);
  std::istringstream lines(out.str());
  std::set<std::string> events;
  nlohmann::json last;
  double needed = 0;
  for (std::string line; std::getline(lines, line);) {
    last = nlohmann::json::parse(line);
    needed = last.value("neededBytes", needed);
    events.insert(last["event"].get<std::string>());
  }
  EXPECT_TRUE(events.contains("phase") && events.contains("plan"));
  EXPECT_EQ(last["event"], "done");
  EXPECT_EQ(last["outcome"], "done");
  EXPECT_EQ(last["titles"][1]["chapters"], 2);
  std::uint64_t bytes = 0;
  for (const auto& [name, content] : FilesOf(disc)) {
    bytes += content.size();
  }
  EXPECT_EQ(last["bytes"], bytes);
  EXPECT_NEAR(needed, static_cast<double>(bytes), static_cast<double>(bytes) / 4);
}

TEST_F(AuthorCommand, TheSwitchFormMakesTheClassicDisc) {
  ASSERT_EQ(Author({demo, "-o", temp / "classic", "--rules", "classic"}), ExitDone);
  const std::vector<std::string> switches{"-i", demo, "-d", "switched", "-create", "-exit"};
  const fs::path before = fs::current_path();
  fs::current_path(temp.Path());  // a relative folder counts from here, not from the script
  const int status = RunSwitchForm(switches, ui, Environment(), MakeBatchServices(ui));
  fs::current_path(before);
  ASSERT_EQ(status, ExitDone);
  EXPECT_THAT(ui.Messages, IsEmpty());
  const Files switched = FilesOf(temp / "switched");
  EXPECT_EQ(switched == FilesOf(temp / "classic"), true);  // too long to be shown
  EXPECT_EQ(switched.at("VIDEO_TS.IFO")[0x23], '\xFF');    // no settings are read: no region is allowed
}

TEST_F(AuthorCommand, StrictMakesWarningsFail) {
  std::string script = TempFolder::Read(demo);
  script = "Nmae=x\r\n" + script;
  fs::copy(SourceFile("examples/media"), temp.Path() / "media");
  const std::string file = temp.Write("p.qvp", script);
  EXPECT_EQ(Author({file, "-o", disc, "--strict"}), ExitFailed);
  EXPECT_FALSE(fs::exists(disc));
  EXPECT_EQ(ui.Messages.back().Title, "Strict");
  EXPECT_EQ(Author({file, "-o", disc}), ExitDone);
}

TEST_F(AuthorCommand, AStoppedRunLeavesTheDestinationAsItWas) {
  for (const int allowed : {0, 1, 7, 500}) {
    int asked = 0;
    ui.StopWhen = [&] { return ++asked > allowed; };
    EXPECT_EQ(Author({demo, "-o", disc}), ExitFailed) << allowed;
    EXPECT_FALSE(fs::exists(disc) || fs::exists(temp / ".VIDEO_TS.making"));
  }
}

TEST_F(AuthorCommand, PathsWithBlanksQuotesAndOtherLetters) {
  const fs::path folder = temp.Path() / "a b'c \"d\" \xC3\xA4\xE6\x98\xA0";
  fs::create_directories(folder);
  fs::copy(SourceFile("examples/media"), folder / "media");
  fs::copy(demo, folder / "d\xC3\xA9mo.qvp");
  EXPECT_EQ(Author({(folder / "d\xC3\xA9mo.qvp").string(), "-o", (folder / "out").string(), "--json"}),
            ExitDone);
  EXPECT_TRUE(fs::exists(folder / "out" / "VIDEO_TS.IFO"));
  EXPECT_THAT(ui.Messages, IsEmpty());
}

// A file size limit stands in for a disk that is full midway.
TEST_F(AuthorCommand, ADiskFullMidwayLeavesNothing) {
  struct sigaction ignore = {};
  struct sigaction former = {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGXFSZ, &ignore, &former);
  rlimit unlimited{};
  getrlimit(RLIMIT_FSIZE, &unlimited);
  for (const rlim_t bytes : {1000U, 10000U, 100000U, 1000000U}) {
    const rlimit limit{bytes, unlimited.rlim_max};
    ui.Messages.clear();
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(Author({demo, "-o", disc}), ExitFailed) << bytes;
    setrlimit(RLIMIT_FSIZE, &unlimited);
    ASSERT_EQ(ui.Messages.size(), 1U) << bytes;
    EXPECT_THAT(ui.Messages[0].Text, HasSubstr(".VIDEO_TS.making/V")) << bytes;
    EXPECT_THAT(ui.Messages[0].Text, HasSubstr("File too large"));
    EXPECT_FALSE(fs::exists(disc));
    EXPECT_FALSE(fs::exists(temp / ".VIDEO_TS.making"));
  }
  sigaction(SIGXFSZ, &former, nullptr);
}

TEST_F(AuthorCommand, IndexesAreReusedUnlessTheyAreToBeBuiltAnew) {
  fs::copy(SourceFile("examples/media"), temp.Path() / "media");
  const std::string project = temp.Write("p.qvp", TempFolder::Read(demo));
  const std::string stale = "Frame=0;Offset=0;Size=10\r\nTotalFrames=60\r\n";
  temp.Write("media/first.m2v.qvi", stale);
  // By the stale index the track ends before its second scene.
  EXPECT_EQ(Author({project, "-o", disc, "--analyse", "--strict"}), ExitFailed);
  EXPECT_EQ(TempFolder::Read(temp / "media/first.m2v.qvi"), stale);
  ui.Messages.clear();
  EXPECT_EQ(Author({project, "-o", disc, "--analyse", "--reindex"}), ExitDone);
  EXPECT_THAT(TempFolder::Read(temp / "media/first.m2v.qvi"), HasSubstr("TotalFrames=350"));
  EXPECT_THAT(out.str(), HasSubstr("3 chapters"));
  EXPECT_THAT(ui.Messages, IsEmpty());
}

TEST_F(AuthorCommand, FailuresAreOneClearErrorAndNoFolder) {
  fs::copy(SourceFile("examples/media"), temp.Path() / "media");
  const std::string project = temp.Write("p.qvp", TempFolder::Read(demo));
  struct Case {
    const char* File;   // of the media, to be spoilt
    std::string Bytes;  // what it holds then; empty: it is removed
    const char* Text;
  };
  for (const Case& c :
       {Case{"first.m2v", "", "there is no such file"},
        Case{"first_en.ac3", "no sound", "it is no AC3 stream"},
        Case{"second.m2v", std::string(5000, 'x'), "it holds no MPEG video"},
        Case{"second.m2v", TempFolder::Read(SampleVideo({.Mpeg1 = true})), "it is MPEG1 video"},
        Case{"second.m2v", TempFolder::Read(SampleVideo({.Width = 480})), "PAL has no frame size 480x576"},
        Case{"menu.ac3", TempFolder::Read(SampleAc3({.Rate = 44100})), "its sample rate is not 48 kHz"}}) {
    const std::string former = TempFolder::Read(temp / (std::string("media/") + c.File));
    fs::remove(temp / (std::string("media/") + c.File));
    if (!c.Bytes.empty()) {
      temp.Write(std::string("media/") + c.File, c.Bytes);
    }
    ui.Messages.clear();
    EXPECT_EQ(Author({project, "-o", disc}), ExitFailed) << c.File;
    ASSERT_FALSE(ui.Messages.empty());
    const Message& told = ui.Messages.back();
    EXPECT_THAT(told.Text, testing::AllOf(HasSubstr(c.File), HasSubstr(c.Text)));
    EXPECT_THAT(told.Place, testing::StartsWith("Track."));
    EXPECT_FALSE(fs::exists(disc));
    EXPECT_FALSE(fs::exists(temp / ".VIDEO_TS.making"));
    temp.Write(std::string("media/") + c.File, former);
  }
  // What can be multiplexed is taken by tradition, and told once.
  temp.Write("media/second.m2v", TempFolder::Read(SampleVideo({.Width = 480, .Frames = 200})));
  ui.Messages.clear();
  EXPECT_EQ(Author({project, "-o", disc, "--rules", "classic"}), ExitDone);
  EXPECT_EQ(ui.Messages.size(), 1U);
}

}  // namespace
}  // namespace quorvelant
