// Where a disc is made, what may stand beside its destination, what a killed run leaves, and two runs at
// once: nothing of the user's is lost, and no disc is of two runs.
#include "author/output_folder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <set>

#include "author/folder_lock.h"
#include "disc/disc_files.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace {
int exchangeError = 0;  // what the system says to an exchange; 0 for what it says by itself
}

// Takes the place of the C library's.
// NOLINTNEXTLINE(readability-identifier-naming,misc-use-internal-linkage): its name there
extern "C" int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
  if (exchangeError != 0) {
    errno = exchangeError;
    return -1;
  }
  return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class Destination : public testing::Test {
 protected:
  ~Destination() override { exchangeError = 0; }

  // A run that writes one file and completes.
  bool Run(const std::string& content = "new", bool force = true) {
    ui.Messages.clear();
    auto folder = OutputFolder::Prepare(disc, force, ui);
    if (!folder) {
      return false;
    }
    std::ofstream(folder->Path() + "/VIDEO_TS.IFO") << content;
    return folder->Place(ui, true);
  }
  // A run in a process of its own that is killed when it has done `work` in its folder.
  void KilledRun(const std::function<void(const fs::path& aside)>& work = [](const fs::path&) {}) {
    const pid_t child = fork();
    if (child == 0) {
      const auto folder = OutputFolder::Prepare(disc, true, ui);
      std::ofstream(folder->Path() + "/VTS_01_1.VOB") << "half";
      work(folder->Path());
      _exit(0);
    }
    waitpid(child, nullptr, 0);
  }
  std::vector<std::string> Codes() const {
    std::vector<std::string> codes;
    for (const Message& told : ui.Messages) {
      codes.emplace_back(told.Code);
    }
    return codes;
  }
  std::set<std::string> Names(const std::string& folder = "") const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(temp.Path() / folder)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
  std::string Ifo() const { return TempFolder::Read(disc + "/VIDEO_TS.IFO"); }

  TempFolder temp;
  RecordingUi ui;
  std::string disc = temp / "disc";
};

TEST(DiscFileNames, AreTheFormatsOwn) {
  EXPECT_TRUE(IsDiscFileName("video_ts.vob"));
  for (const char* name :
       {"", ".IFO", "VIDEO_TS", "VIDEO_TS.TXT", "VTS_1_0.IFO", "VTS_01_0.IFO.part", "VTS_AB_0.VOB"}) {
    EXPECT_FALSE(IsDiscFileName(name)) << name;
  }
}

TEST_F(Destination, IsMadeWithItsParentsWhateverItsName) {
  for (const char* name : {"disc", "a/b/VIDEO_TS/", "with blank/it's \"quoted\"",
                           "Zw\xC3\xB6lf/\xE6\x98\xA0\xE7\x94\xBB", "not utf\xFF"}) {
    disc = temp / name;
    EXPECT_TRUE(Run("new", false)) << name;
    EXPECT_EQ(Ifo(), "new");
    EXPECT_THAT(Codes(), IsEmpty());
  }
  EXPECT_GT(FreeBytes(temp / "not/there/yet").value_or(0), 0U);
}

TEST_F(Destination, IsReplacedByForceAlone) {
  ASSERT_TRUE(Run("old", false));
  std::ofstream(disc + "/VTS_07_1.VOB") << "of the old disc";
  EXPECT_FALSE(Run("new", false));
  EXPECT_THAT(Codes(), ElementsAre("destination-holds-disc"));
  fs::create_directory_symlink("disc", temp.Path() / "link");
  disc = temp / "link";
  EXPECT_TRUE(Run());
  EXPECT_TRUE(fs::is_symlink(disc));
  EXPECT_THAT(Names("disc"), ElementsAre("VIDEO_TS.IFO"));
  EXPECT_EQ(TempFolder::Read(temp / "disc/VIDEO_TS.IFO"), "new");
  EXPECT_THAT(Names(), ElementsAre("disc", "link"));
}

TEST_F(Destination, WithForeignFilesOrThatIsNoneIsRefused) {
  temp.Write("disc/notes.txt", "mine");
  temp.Write("disc/VIDEO_TS.IFO", "old");
  for (const bool force : {false, true}) {
    EXPECT_FALSE(Run("new", force));
    EXPECT_EQ(ui.Messages.back().Text, "The destination holds \"notes.txt\", which is not part of a disc");
  }
  EXPECT_THAT(Names("disc"), ElementsAre("VIDEO_TS.IFO", "notes.txt"));
  disc += "/notes.txt";
  EXPECT_FALSE(Run());
  EXPECT_THAT(Codes(), ElementsAre("destination-no-folder"));
  disc += "/disc";
  EXPECT_FALSE(Run());
  EXPECT_THAT(Codes(), ElementsAre("folder-not-made"));
}

TEST_F(Destination, LinksBesideTheDestinationAreNotFollowed) {
  const TempFolder other;
  const std::string film = other.Write("VTS_01_1.VOB", "film");
  for (const char* name : {".disc.making", ".disc.former", ".disc.making.01234567", ".disc.part"}) {
    fs::create_directory_symlink(other.Path(), temp / name);
  }
  EXPECT_TRUE(Run("old") && Run());
  EXPECT_THAT(Codes(), IsEmpty());
  EXPECT_EQ(Ifo(), "new");
  EXPECT_EQ(Names().size(), 5U);

  const std::function<void(const std::string&)> locks[] = {
      [&](const std::string& lock) { fs::create_symlink(film, lock); },
      [&](const std::string& lock) { fs::create_symlink("nowhere", lock); },
      [&](const std::string& lock) { fs::create_hard_link(film, lock); },
      [&](const std::string& lock) { mkfifo(lock.c_str(), 0600); },
      [&](const std::string& lock) { fs::create_directory(lock); },
      [&](const std::string& lock) { std::ofstream(lock) << "mine"; }};
  for (const auto& make : locks) {
    make(temp / ".disc.lock");
    EXPECT_FALSE(Run());
    EXPECT_THAT(Codes(), ElementsAre("lock-foreign"));
    EXPECT_TRUE(fs::remove(temp / ".disc.lock"));
  }
  // A lock that a download carries names a folder that no run made, or one behind a link.
  for (const char* name : {"../x", "disc", ".disc.making.01234567", ".disc.making.0123456g"}) {
    temp.Write(".disc.lock", fmt::format("quorvelant 1\n{}\n", name));
    EXPECT_TRUE(Run());
    EXPECT_THAT(Codes(), IsEmpty()) << name;
  }
  EXPECT_EQ(TempFolder::Read(film), "film");
}

TEST_F(Destination, ASecondRunIsRefusedWhileTheFirstWorks) {
  ASSERT_TRUE(Run("old"));
  {
    const auto first = OutputFolder::Prepare(disc, true, ui);
    ASSERT_TRUE(first);
    EXPECT_FALSE(Run());
    EXPECT_THAT(Codes(), ElementsAre("destination-busy"));
    EXPECT_THAT(ui.Messages[0].Text, testing::HasSubstr(fmt::format("(process {})", getpid())));
    EXPECT_FALSE(FolderLock::Take(disc, ui));  // as a run that writes into the folder at once
  }
  EXPECT_EQ(Ifo(), "old");
  EXPECT_TRUE(Run());
  EXPECT_THAT(Names(), ElementsAre("disc"));
}

TEST_F(Destination, WhatAKilledRunLeftIsToldAndRemoved) {
  KilledRun();
  EXPECT_EQ(Names().size(), 2U);
  EXPECT_TRUE(Run("old"));
  EXPECT_THAT(Codes(), ElementsAre("leftover-removed"));
  EXPECT_THAT(Names(), ElementsAre("disc"));

  KilledRun([](const fs::path& aside) { std::ofstream(aside / "mine.txt") << "mine"; });
  EXPECT_TRUE(Run("old"));
  EXPECT_THAT(Codes(), ElementsAre("leftover-stays"));
  fs::remove_all(temp / *Names().begin());

  // Killed between the two renames of a system that cannot exchange folders.
  KilledRun([this](const fs::path& aside) { fs::rename(disc, FolderLock::FormerOf(aside)); });
  EXPECT_FALSE(fs::exists(disc));
  ui.Messages.clear();
  EXPECT_TRUE(FolderLock::Take(disc, ui));
  EXPECT_THAT(Codes(), ElementsAre("former-restored", "leftover-removed"));
  EXPECT_EQ(Ifo(), "old");
  EXPECT_THAT(Names(), ElementsAre("disc"));
}

TEST_F(Destination, ADiscThatCannotBePlacedStaysAsDoesTheOneBefore) {
  ASSERT_TRUE(Run("old"));
  for (const int error : {ENOSYS, EINVAL}) {
    exchangeError = error;
    EXPECT_TRUE(Run("old"));
    EXPECT_THAT(Names(), ElementsAre("disc"));
  }
  exchangeError = EIO;
  EXPECT_FALSE(Run());
  EXPECT_THAT(Codes(), ElementsAre("folder-not-placed"));
  EXPECT_EQ(Ifo(), "old");
  const std::string made = *Names().begin();
  exchangeError = 0;
  EXPECT_TRUE(Run("newer"));  // and takes nothing that was told to stay
  EXPECT_THAT(Names(), ElementsAre(made, "disc"));
  EXPECT_EQ(TempFolder::Read(temp.Path() / made / "VIDEO_TS.IFO"), "new");

  // What came into the destination meanwhile is not taken away with it.
  auto folder = OutputFolder::Prepare(disc, true, ui);
  temp.Write("disc/mine.txt", "mine");
  EXPECT_FALSE(folder->Place(ui));
  EXPECT_EQ(TempFolder::Read(disc + "/mine.txt") + Ifo(), "minenewer");
}

}  // namespace
}  // namespace quorvelant
