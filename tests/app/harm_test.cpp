// Runs that meet a disk that cannot be read on, and what they write then: nothing.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <sstream>

#include "analysis/picture_index.h"
#include "app/command_form.h"
#include "app/console_ui.h"
#include "app/settings.h"
#include "base/text.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

std::string unreadablePath;  // empty while nothing fails
std::size_t readableBytes = 0;

bool ReadFails(int file, std::size_t& count) {
  std::error_code unknown;
  const auto path = std::filesystem::read_symlink(fmt::format("/proc/self/fd/{}", file), unknown);
  if (!path.string().ends_with(unreadablePath)) {
    return false;
  }
  const bool fails = readableBytes == 0;
  count = std::min(count, readableBytes);
  readableBytes -= count;
  return fails;
}

}  // namespace
}  // namespace quorvelant

// Takes the place of the C library's: the file whose path ends in `unreadablePath` has `readableBytes` that
// can be read. NOLINTNEXTLINE(readability-identifier-naming,misc-use-internal-linkage): its name there
extern "C" ssize_t read(int file, void* bytes, size_t count) {
  if (!quorvelant::unreadablePath.empty() && quorvelant::ReadFails(file, count)) {
    errno = EIO;
    return -1;
  }
  return syscall(SYS_read, file, bytes, count);
}

namespace quorvelant {
namespace {

class Harm : public testing::Test {
 protected:
  Harm() { ui.Unattended = true; }
  ~Harm() override { unreadablePath.clear(); }

  int Run(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    return RunCommandForm(arguments, ui, out, err,
                          [this](const std::string&) { return temp.Path().string(); });
  }

  TempFolder temp;
  RecordingUi ui;
  std::string demo = SourceFile("examples/demo.qvp");
};

TEST_F(Harm, NothingIsWrittenOfWhatCannotBeReadWhole) {
  const std::string target = temp.Write("target.qvp", "mine");
  const struct {
    const char* Path;
    std::size_t Bytes;
  } cases[] = {{"demo.qvp", 0}, {"demo.qvp", 2000}, {"first.m2v", 0}, {"first.m2v", 10}};
  for (const auto& test : cases) {
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"convert", demo, target, "--force"},
          {"subtitles", demo, demo, "--track", "1", "-o", target}}) {
      unreadablePath = test.Path;
      readableBytes = test.Bytes;
      EXPECT_EQ(Run(command), ExitFailed) << test.Path << test.Bytes << command[0];
      unreadablePath.clear();
      EXPECT_FALSE(ui.Messages.empty());
      EXPECT_EQ(TempFolder::Read(target), "mine");
    }
  }
}

TEST_F(Harm, ADryRunAndAReadLeaveNoFile) {
  std::filesystem::copy(SourceFile("examples"), temp / "own", std::filesystem::copy_options::recursive);
  EXPECT_EQ(Run({"author", temp / "own/demo.qvp", "-o", temp / "disc", "--dry-run", "--analyse"}), ExitDone);
  for (const auto& entry : std::filesystem::recursive_directory_iterator(temp / "own")) {
    EXPECT_NE(entry.path().extension(), ".qvi");
  }
  EXPECT_FALSE(std::filesystem::exists(temp / "disc"));
}

TEST_F(Harm, AnIndexThatCannotStandBesideItsFileGoesIntoTheCache) {
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
  EXPECT_THAT(ui.Messages, testing::IsEmpty());
}

TEST_F(Harm, SignalsAskForAnOrderlyEnd) {
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

TEST_F(Harm, TheSettingsOfABatchRunChangeNothing) {
  EXPECT_EQ(ReadUserSettings(temp.Write("a", SettingsText({}))), DefaultSettings());
  Settings own = DefaultSettings();
  own.NtscSlideDuration = 0;
  own.RemoveSeqEnd = false;
  EXPECT_FALSE(ReadUserSettings(temp.Write("b", SettingsText(own))).RemoveSeqEnd);
}

}  // namespace
}  // namespace quorvelant
