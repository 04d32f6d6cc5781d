// The example disc as `quorvelant author` makes it, and runs that meet a full disk, one that cannot be read,
// or a signal.
#include <fmt/format.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <filesystem>
#include <map>
#include <sstream>
#include <utility>

#include "analysis/picture_index.h"
#include "app/command_form.h"
#include "app/console_ui.h"
#include "app/messages.h"
#include "base/text.h"
#include "desk/messages.h"
#include "support/disc_walk.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// Parts of paths; empty while nothing fails.
std::string unwritable;
std::string unreadable;
std::atomic<std::int64_t> left;  // writes, or bytes to read, until one fails
bool recovers = false;           // a disk that fails one read alone

// How much of `wanted` the disk takes or gives, at that cost.
std::size_t Granted(int file, const std::string& failing, std::size_t wanted, std::size_t cost) {
  std::error_code unknown;
  const auto path = std::filesystem::read_symlink(fmt::format("/proc/self/fd/{}", file), unknown);
  if (!Contains(path.string(), failing)) {
    return wanted;
  }
  const std::int64_t before = left.fetch_sub(static_cast<std::int64_t>(cost));
  return std::cmp_greater_equal(before, cost) ? wanted
                                              : static_cast<std::size_t>(std::max<std::int64_t>(before, 0));
}

}  // namespace
}  // namespace quorvelant

// Take the place of the C library's.
// NOLINTBEGIN(readability-identifier-naming,misc-use-internal-linkage): their names there
extern "C" ssize_t write(int file, const void* bytes, size_t count) {
  if (!quorvelant::unwritable.empty() && quorvelant::Granted(file, quorvelant::unwritable, 1, 1) == 0) {
    errno = ENOSPC;
    return -1;
  }
  return syscall(SYS_write, file, bytes, count);
}

extern "C" ssize_t read(int file, void* bytes, size_t count) {
  if (!quorvelant::unreadable.empty() && count > 0) {
    count = quorvelant::Granted(file, quorvelant::unreadable, count, count);
    if (count == 0) {
      quorvelant::left = quorvelant::recovers ? INT_MAX : 0;
      errno = EIO;
      return -1;
    }
  }
  return syscall(SYS_read, file, bytes, count);
}
// NOLINTEND(readability-identifier-naming,misc-use-internal-linkage)

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

class Runs : public testing::Test {
 protected:
  Runs() { ui.Unattended = true; }
  ~Runs() override {
    unwritable.clear();
    unreadable.clear();
  }

  int Run(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    return RunCommandForm(arguments, ui, out, err, [this](const std::string& name) {
      return name == "SOURCE_DATE_EPOCH" ? "" : temp.Path().string();
    });
  }

  TempFolder temp;
  RecordingUi ui;
  std::string demo = SourceFile("examples/demo.qvp");
  std::string disc = temp / "VIDEO_TS";
  std::string image = temp / "disc.iso";
};

TEST_F(Runs, TheButtonsOfTheExampleLeadWhereTheySay) {
  ASSERT_EQ(Run({"author", demo, "-o", disc, "--iso", image}), ExitDone);
  EXPECT_THAT(ui.Messages, IsEmpty());
  for (const auto& [buttons, leads] : {std::pair{std::vector{1}, "title 1 chapter 1"},
                                       {{2}, "title 2 chapter 1"},
                                       {{4}, "title 3 chapter 1"},
                                       {{3, 2}, "title 1 chapter 2"},
                                       {{3, 4, 3, 3}, "title 1 chapter 3"}}) {
    EXPECT_EQ(PressButtons(disc, 0, buttons), leads);
    EXPECT_EQ(PressButtons(image, 0, buttons), leads);
  }
  const DiscWalk walk = WalkDisc(image);
  EXPECT_THAT(walk.Complaints, IsEmpty());
  EXPECT_EQ(walk.Titles.size(), 3U);
  EXPECT_TRUE(std::ranges::all_of(walk.Titles, [](const WalkedTitle& title) { return title.ReachedEnd; }));
}

TEST_F(Runs, AProofThatIsStoppedSaysThatAlone) {
  ASSERT_EQ(Run({"author", demo, "-o", disc}), ExitDone);
  int asked = 0;
  ui.StopWhen = [&asked] { return ++asked > 3; };  // within the first title set
  for (const char* command : {"verify", "walk"}) {
    ui.Messages.clear();
    asked = 0;
    EXPECT_EQ(Run({command, disc}), ExitFailed) << command;
    ASSERT_EQ(ui.Messages.size(), 1U) << command;
    EXPECT_TRUE(ui.Messages.front().Is(message::CheckStopped)) << command;
  }
}

// One write of the run after the other is the first for which there is no room: all of the first and of the
// last ones (the tables, and the sums entered into them), every eighth in between.
TEST_F(Runs, AFullDiskIsToldOnceAndLeavesTheDestinationAsItWas) {
  unwritable = ".VIDEO_TS.making.";
  left = INT_MAX;
  ASSERT_EQ(Run({"author", demo, "-o", disc}), ExitDone);
  const std::int64_t writes = INT_MAX - left;
  ASSERT_EQ(Run({"author", demo, "-o", disc, "--force", "--rules", "classic"}), ExitDone);
  const Files before = FilesOf(disc);
  for (std::int64_t allowed = 0; allowed < writes; allowed += allowed < 8 || allowed + 16 >= writes ? 1 : 8) {
    ui.Messages.clear();
    left = allowed;
    EXPECT_EQ(Run({"author", demo, "-o", disc, "--force"}), ExitFailed) << allowed;
    ASSERT_EQ(ui.Messages.size(), 1U) << allowed;
    EXPECT_THAT(ui.Messages[0].Text,
                testing::ContainsRegex("making[.][0-9a-f]*/V.*: No space left on device"));
    EXPECT_EQ(std::distance(fs::directory_iterator(temp.Path()), {}), 2);  // and the log
    ASSERT_TRUE(FilesOf(disc) == before) << allowed;
  }
}

// The folder is whole by then and does not take its place either.
TEST_F(Runs, AFullDiskLeavesNoImageNorItsFolder) {
  unwritable = ".disc.iso.making";
  left = INT_MAX;
  ASSERT_EQ(Run({"author", demo, "--iso", image}), ExitDone);
  const std::int64_t writes = INT_MAX - left;
  EXPECT_GT(writes, 10);
  fs::remove(image);
  for (std::int64_t allowed = 0; allowed < writes; allowed += 3) {
    ui.Messages.clear();
    left = allowed;
    EXPECT_EQ(Run({"author", demo, "-o", disc, "--iso", image}), ExitFailed) << allowed;
    ASSERT_EQ(ui.Messages.size(), 1U) << allowed;
    EXPECT_THAT(ui.Messages[0].Text, testing::ContainsRegex("disc.iso.making.*: No space left on device"));
    for (const auto& entry : fs::directory_iterator(temp.Path())) {
      EXPECT_EQ(entry.path().filename(), "quorvelant") << allowed;  // with the log
    }
  }
}

TEST_F(Runs, NothingIsWrittenOfWhatCannotBeReadWhole) {
  const std::string target = temp.Write("target.qvp", "mine");
  const std::vector<std::vector<std::string>> authors = {{"author", demo, "-o", disc},
                                                         {"author", demo, "-o", disc, "--rules", "classic"}};
  std::vector<std::vector<std::string>> readers = authors;
  readers.push_back({"check", demo});
  readers.push_back({"convert", demo, target, "--force"});
  readers.push_back({"subtitles", demo, demo, "--track", "1", "-o", target, "--force"});
  const struct {
    const char* Path;
    std::int64_t Bytes;
    bool Once;
    const std::vector<std::vector<std::string>>& Commands;
  } cases[] = {{"demo.qvp", 0, false, readers},          {"demo.qvp", 2000, false, readers},
               {"first.m2v", 0, false, readers},         {"first.m2v", 10, false, readers},
               {"second.m2v", 100, true, readers},       {"first_de.ac3", 10, true, readers},
               {"first_de.ac3", 150000, false, authors}, {"first.m2v", 900000, true, authors},
               {"en2.png", 100, false, authors}};
  for (const auto& test : cases) {
    for (const std::vector<std::string>& command : test.Commands) {
      ui.Messages.clear();
      unreadable = test.Path;
      left = test.Bytes;
      recovers = test.Once;
      EXPECT_EQ(Run(command), ExitFailed) << test.Path << test.Bytes << command[0];
      unreadable.clear();
      EXPECT_TRUE(std::ranges::any_of(ui.Messages, [](const Message& told) {
        return told.Level == Severity::Error && Contains(told.Place + told.Text, "read");
      })) << test.Path;
      EXPECT_TRUE(TempFolder::Read(target) == "mine");
      EXPECT_FALSE(fs::exists(disc));
    }
  }
}

// The second read of a script is for its comments; an index is built anew.
TEST_F(Runs, WhatAReadLosesIsNotLostInSilence) {
  fs::copy(SourceFile("examples"), temp / "own", fs::copy_options::recursive);
  const std::string own = temp / "own/demo.qvp";
  const auto analysed = [&] {
    EXPECT_EQ(Run({"author", own, "-o", disc, "--force", "--analyse"}), ExitDone);
    return FilesOf(disc);
  };
  const Files before = analysed();
  recovers = true;
  unreadable = "first.m2v.qvi";
  left = 10;
  EXPECT_TRUE(analysed() == before);
  const std::string script = "# mine\n" + TempFolder::Read(own);
  temp.Write("own/demo.qvp", script);
  unreadable = "demo.qvp";
  left = static_cast<std::int64_t>(script.size());
  EXPECT_EQ(Run({"convert", own, own}), ExitFailed);
  EXPECT_TRUE(TempFolder::Read(own) == script);
  temp.Write("quorvelant/Quorvelant.ini", "Region1=0");
  ui.Messages.clear();
  unreadable = "Quorvelant.ini";
  left = 0;
  EXPECT_EQ(Run({"command", "NOP"}), ExitDone);
  EXPECT_TRUE(ui.Messages.at(0).Is(message::SettingsNotRead));
}

TEST_F(Runs, ADryRunAndAReadLeaveNoFile) {
  fs::copy(SourceFile("examples"), temp / "own", fs::copy_options::recursive);
  EXPECT_EQ(Run({"author", temp / "own/demo.qvp", "-o", temp / "disc", "--dry-run", "--analyse"}), ExitDone);
  for (const auto& entry : fs::recursive_directory_iterator(temp / "own")) {
    EXPECT_NE(entry.path().extension(), ".qvi");
  }
  EXPECT_FALSE(fs::exists(temp / "disc"));
}

TEST_F(Runs, AnIndexThatCannotStandBesideItsFileGoesIntoTheCache) {
  const std::string film = temp / "film.m2v";
  std::filesystem::copy_file(SourceFile("examples/media/first.m2v"), film);
  std::filesystem::create_directory(film + ".qvi");
  EXPECT_EQ(Run({"index", film}), ExitDone);
  const IndexStore cache(false, temp / "quorvelant/indexes");
  const auto index = FindPictureIndex(film, cache);
  ASSERT_TRUE(index);
  EXPECT_GT(index->TotalFrames, 0);
  std::filesystem::last_write_time(film,
                                   std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  EXPECT_FALSE(FindPictureIndex(film, cache));
}

TEST_F(Runs, SignalsAskForAnOrderlyEnd) {
  std::signal(SIGHUP, SIG_IGN);
  {
    const StopSignal stop;
    raise(SIGHUP);  // ignored from the start
    raise(SIGXFSZ);
    EXPECT_FALSE(StopSignal::Raised());
    raise(SIGPIPE);
    raise(SIGPIPE);
    EXPECT_TRUE(StopSignal::Raised());
  }
  std::signal(SIGHUP, SIG_DFL);
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    const StopSignal stop;
    EXPECT_FALSE(StopSignal::Raised());
    raise(number);
    EXPECT_TRUE(StopSignal::Raised());
  }
}

}  // namespace
}  // namespace quorvelant
