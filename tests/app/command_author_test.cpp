// The example disc as `quorvelant author` makes it, also where the disk is full.
#include <fmt/format.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <map>
#include <sstream>

#include "app/command_form.h"
#include "base/text.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/folders.h"
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
    std::ostringstream out;
    std::ostringstream err;
    return RunCommandForm(arguments, ui, out, err,
                          [this](const std::string&) { return temp.Path().string(); });
  }

  TempFolder temp;
  RecordingUi ui;
  std::string demo = SourceFile("examples/demo.qvp");
  std::string disc = temp / "VIDEO_TS";
};

TEST_F(AuthorCommand, TheButtonsOfTheExampleLeadWhereTheySay) {
  ASSERT_EQ(Author({demo, "-o", disc}), ExitDone);
  EXPECT_THAT(ui.Messages, IsEmpty());
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

// One write of the run after the other is the first for which there is no room: all of the first and of the
// last ones (the tables, and the sums entered into them), every eighth in between.
TEST_F(AuthorCommand, AFullDiskIsToldOnceAndLeavesTheDestinationAsItWas) {
  failingPath = ".VIDEO_TS.making.";
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
    EXPECT_THAT(ui.Messages[0].Text,
                testing::ContainsRegex("making[.][0-9a-f]*/V.*: No space left on device"));
    EXPECT_EQ(std::distance(fs::directory_iterator(temp.Path()), {}), 2);  // and the log
    ASSERT_TRUE(FilesOf(disc) == before) << allowed;
  }
}

}  // namespace
}  // namespace quorvelant
