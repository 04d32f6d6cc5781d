// `quorvelant author` and the switch form, as a user runs them, over the example disc.
#include <fmt/format.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
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
#include "author/messages.h"
#include "base/text.h"
#include "disc/disc_files.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/folders.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

std::string failingPath;  // empty while nothing fails
std::atomic<int> writesLeft;

bool WriteFails(int file) {
  std::error_code unknown;
  const auto path = std::filesystem::read_symlink(fmt::format("/proc/self/fd/{}", file), unknown);
  return Contains(path.string(), failingPath) && --writesLeft < 0;
}

}  // namespace
}  // namespace quorvelant

// Takes the place of the C library's: files whose path holds `failingPath` are on a disk that has room for
// `writesLeft` writes more.
// NOLINTNEXTLINE(readability-identifier-naming,misc-use-internal-linkage): its name there
extern "C" ssize_t write(int file, const void* bytes, size_t count) {
  if (!quorvelant::failingPath.empty() && quorvelant::WriteFails(file)) {
    errno = ENOSPC;
    return -1;
  }
  return syscall(SYS_write, file, bytes, count);
}

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
  ~AuthorCommand() override { failingPath.clear(); }

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
  EXPECT_TRUE(ui.Messages.back().Is(message::WarningsForbidDisc));
  EXPECT_EQ(Author({file, "-o", disc, "--strict", "--json"}), ExitFailed);
  EXPECT_THAT(out.str(), testing::EndsWith("\"place\":\"\"}\n"));  // no disc was begun, none is summed up
  EXPECT_THAT(out.str(), HasSubstr(R"({"event":"error","code":"warnings-forbid-disc","title":"Strict",)"));
  EXPECT_EQ(Author({file, "-o", disc}), ExitDone);
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

// One write of the run after the other is the first for which there is no room: all of the first and of the
// last ones (the tables, and the sums entered into them), every eighth in between.
TEST_F(AuthorCommand, AFullDiskIsToldOnceAndLeavesTheDestinationAsItWas) {
  failingPath = ".VIDEO_TS.making/";
  writesLeft = INT_MAX;
  ASSERT_EQ(Author({demo, "-o", disc}), ExitDone);
  const int writes = INT_MAX - writesLeft;
  ASSERT_EQ(Author({demo, "-o", disc, "--force", "--rules", "classic"}), ExitDone);
  const Files before = FilesOf(disc);
  for (int allowed = 0; allowed < writes; allowed += allowed < 8 || allowed + 16 >= writes ? 1 : 8) {
    ui.Messages.clear();
    writesLeft = allowed;
    EXPECT_EQ(Author({demo, "-o", disc, "--force"}), ExitFailed) << allowed;
    ASSERT_EQ(ui.Messages.size(), 1U) << allowed;
    EXPECT_THAT(ui.Messages[0].Text, testing::ContainsRegex("making/V.*: No space left on device"));
    EXPECT_FALSE(fs::exists(temp / ".VIDEO_TS.making"));
    ASSERT_TRUE(FilesOf(disc) == before) << allowed;
  }
}

// The program is asked to stop between the two titles of a set: it waits at its warning of the first one's
// sound, since the pipe of what it says is full.
constexpr std::string_view TerminatedRun = R"(cd '{0}' && mkfifo pipe && exec 3<>pipe && touch events
timeout 0.2 cat /dev/zero >&3
XDG_CONFIG_HOME='{0}' XDG_STATE_HOME='{0}' {1} author p.qvp -o VIDEO_TS --force --json >events 2>&3 3>&- &
program=$!
while kill -0 $program && ! grep -q '"event":"warning"' events; do sleep 0.01; done
kill -TERM $program
tr -d '\0' <pipe >said 3>&- &
wait $program
echo $?
exec 3>&-
wait
)";

TEST_F(AuthorCommand, ATerminatedRunLeavesTheDestinationAsItWas) {
  ASSERT_EQ(Author({demo, "-o", disc}), ExitDone);
  const Files before = FilesOf(disc);
  fs::copy(SourceFile("examples/media"), temp.Path() / "media");
  temp.Write("media/first_de.ac3", TempFolder::Read(SampleAc3({.Seconds = 5})));
  temp.Write("p.qvp", TempFolder::Read(demo));
  temp.Write("run", fmt::format(TerminatedRun, temp.Path().string(), BuildFile("quorvelant")));
  EXPECT_THAT(LinesOf("bash " + temp / "run"), testing::ElementsAre("1\n"));
  const std::string events = TempFolder::Read(temp / "events");
  EXPECT_THAT(events, HasSubstr("Writing VOBID: 1 of 2"));
  EXPECT_THAT(events, testing::Not(HasSubstr("Writing VOBID: 2 of 2")));
  EXPECT_THAT(events, HasSubstr(R"("outcome":"stopped")"));
  EXPECT_THAT(TempFolder::Read(temp / "said"),
              testing::EndsWith("Stopped: The run was stopped; the destination is as it was\n"));
  EXPECT_FALSE(fs::exists(temp / ".VIDEO_TS.making"));
  EXPECT_TRUE(FilesOf(disc) == before);
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
  // What can be multiplexed is taken by tradition, and told once: no disc has the size, and the other film's
  // is not the same.
  temp.Write("media/second.m2v", TempFolder::Read(SampleVideo({.Width = 480, .Frames = 200})));
  ui.Messages.clear();
  EXPECT_EQ(Author({project, "-o", disc, "--rules", "classic"}), ExitDone);
  EXPECT_EQ(ui.Messages.size(), 2U);
}

}  // namespace
}  // namespace quorvelant
