// What may stand beside a destination, what a killed run leaves, and two runs at once: nothing of the user's
// is lost, and no disc is of two runs.
#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>

#include "author/folder_lock.h"
#include "author/messages.h"
#include "author/output_folder.h"
#include "disc_maker.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "verify/messages.h"
#include "verify/named_files.h"

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

class Harm : public testing::Test {
 protected:
  ~Harm() override { exchangeError = 0; }

  // A run that writes one file and completes.
  bool Run(const std::string& content = "new") {
    ui.Messages.clear();
    auto folder = OutputFolder::Prepare(disc, true, ui);
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
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(temp.Path())) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }
  std::string Ifo() const { return TempFolder::Read(disc + "/VIDEO_TS.IFO"); }

  TempFolder temp;
  RecordingUi ui;
  std::string disc = temp / "disc";
};

TEST_F(Harm, LinksBesideTheDestinationAreNotFollowed) {
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

TEST_F(Harm, ASecondRunIsRefusedWhileTheFirstWorks) {
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

TEST_F(Harm, WhatAKilledRunLeftIsToldAndRemoved) {
  KilledRun();
  EXPECT_EQ(Names().size(), 2U);
  EXPECT_TRUE(Run("old"));
  EXPECT_THAT(Codes(), ElementsAre("leftover-removed"));
  EXPECT_THAT(Names(), ElementsAre("disc"));

  KilledRun([](const fs::path& aside) { std::ofstream(aside / "mine.txt") << "mine"; });
  EXPECT_TRUE(Run("old"));
  EXPECT_THAT(Codes(), ElementsAre("leftover-stays"));
  fs::remove_all(temp / Names().front());

  // Killed between the two renames of a system that cannot exchange folders.
  KilledRun([this](const fs::path& aside) { fs::rename(disc, FolderLock::FormerOf(aside)); });
  EXPECT_FALSE(fs::exists(disc));
  ui.Messages.clear();
  EXPECT_TRUE(FolderLock::Take(disc, ui));
  EXPECT_THAT(Codes(), ElementsAre("former-restored", "leftover-removed"));
  EXPECT_EQ(Ifo(), "old");
  EXPECT_THAT(Names(), ElementsAre("disc"));
}

TEST_F(Harm, ADiscThatCannotBePlacedStaysAsDoesTheOneBefore) {
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
  const std::string made = Names().front();
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

// A whole run over a small disc, which stands in the destination already.
class HarmedRun : public testing::Test {
 protected:
  HarmedRun() {
    maker.LoadSmall(2);
    EXPECT_EQ(Author(), "done");
    before = maker.Files();
  }
  // What the run told last, or "done".
  std::string Author(bool force = true) {
    maker.Ui.Messages.clear();
    BmpLoader bitmaps;
    const AuthorOrder order{.Folder = maker.Folder, .Pictures = &bitmaps, .Force = force};
    const AuthorResult result = quorvelant::Author(maker.Disc, order, maker.Ui);
    return result.Outcome == AuthorOutcome::Done ? "done" : std::string(maker.Ui.Messages.at(0).Code);
  }
  // Does the harm once, when the run is at the stage of these words.
  void At(std::string_view words, const std::function<void()>& harm) {
    maker.Ui.StatusWords.clear();
    maker.Ui.StopWhen = [this, words, harm, done = false]() mutable {
      if (!done && !maker.Ui.StatusWords.empty() && maker.Ui.StatusWords.back().starts_with(words)) {
        done = true;
        harm();
      }
      return false;
    };
  }
  std::string Aside() const {
    for (const auto& entry : fs::directory_iterator(maker.Temp.Path())) {
      if (entry.path().filename().string().starts_with(".VIDEO_TS.making")) {
        return entry.path().string();
      }
    }
    return {};
  }

  DiscMaker maker{{.Width = 352, .Height = 288, .Frames = 60, .Closed = true, .KbitPerSecond = 500}};
  std::map<std::string, std::string> before;
};

TEST_F(HarmedRun, EveryFileThatTheTablesNameIsLookedForBeforeItIsSummed) {
  EXPECT_THAT(NamedFileFaults(maker.Folder, maker.Ui), IsEmpty());
  for (const auto& [name, content] : before) {
    const std::string file = maker.Folder + "/" + name;
    for (const bool missing : {true, false}) {
      fs::remove(file);
      if (!missing) {
        std::ofstream(file) << content << std::string(SectorBytes, '\0');
      }
      const auto faults = NamedFileFaults(maker.Folder, maker.Ui);
      ASSERT_EQ(faults.size(), 1U) << name;
      EXPECT_TRUE(faults[0].Is(missing ? message::FileMissing : message::FileSizeWrong)) << name;
      EXPECT_EQ(fs::path(faults[0].Place).stem(), fs::path(name).stem());
    }
    std::ofstream(file) << content;
  }
  maker.Ui.StopWhen = [this] {
    if (fs::exists(Aside() + "/VTS_01_1.VOB")) {
      fs::remove(Aside() + "/VTS_01_0.VOB");  // the menu's, which is complete by then
    }
    return false;
  };
  EXPECT_EQ(Author(), "read-back-missing");
  EXPECT_TRUE(maker.Files() == before);
}

TEST_F(HarmedRun, ASourceThatChangesMidwayEndsTheRun) {
  const std::string film = maker.Temp / "film.m2v";
  const std::string copy = maker.Temp / "copy.m2v";
  fs::copy_file(film, copy);
  fs::remove(film);
  fs::copy_file(copy, film);
  const std::function<void()> harms[] = {
      [&] { std::ofstream(film, std::ios::app) << '\0'; },
      [&] { fs::last_write_time(film, fs::file_time_type::clock::now() + std::chrono::hours(1)); },
      [&] { fs::rename(copy, film); }};
  for (const auto& harm : harms) {
    At("Writing VOBID", harm);
    EXPECT_EQ(Author(), "source-changed");
    EXPECT_TRUE(maker.Files() == before);
    EXPECT_EQ(Aside(), "");
  }
  EXPECT_EQ(Author(), "done");
}

TEST_F(HarmedRun, ASourceThatTheDiscWouldReplaceIsRefused) {
  const std::string film = maker.Temp / "film.m2v";
  const std::string taken = maker.Folder + "/VTS_01_1.VOB";
  fs::copy_file(film, taken, fs::copy_options::overwrite_existing);
  fs::remove(film);
  fs::create_symlink(taken, film);
  const std::string content = TempFolder::Read(taken);
  EXPECT_EQ(Author(), "source-in-destination");
  EXPECT_EQ(maker.Author().Outcome, AuthorOutcome::Failed);  // into the folder at once
  EXPECT_EQ(TempFolder::Read(taken), content);
}

TEST_F(HarmedRun, WithoutDescriptorsItEndsWithAWord) {
  rlimit former{};
  getrlimit(RLIMIT_NOFILE, &former);
  const int next = dup(0);
  close(next);
  std::string outcome;
  for (rlim_t free = 0; outcome != "done" && free < 32; ++free) {
    const rlimit few{static_cast<rlim_t>(next) + free, former.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    maker.Ui.Unattended = true;
    outcome = Author();
    setrlimit(RLIMIT_NOFILE, &former);
    EXPECT_TRUE(maker.Files() == before) << free << outcome;
  }
  EXPECT_EQ(outcome, "done");
}

TEST_F(HarmedRun, AHoldOfAHundredHoursIsRefusedBeforeAnythingIsWritten) {
  Track& film = maker.Disc.Tracks[0];
  film.TrackType = "SlideShow";
  std::uint64_t needed = 0;
  for (const auto& [time, code] : {std::pair{"00:00:10:00", ""},
                                   {"13:15:00:00", ""},
                                   {"13:16:00:00", "track-too-long"},
                                   {"99:59:59:00", "track-too-long"}}) {
    film.VideoPlays[0].SlideDuration = time;
    const DiscPlan plan = PlanDisc(maker.Disc, Rules::Players, maker.Ui);
    const bool found =
        std::ranges::any_of(plan.Findings, [](const Message& one) { return one.Is(message::TrackTooLong); });
    EXPECT_EQ(found, *code != '\0') << time;
    EXPECT_GT(plan.NeededBytes(), needed);
    needed = plan.NeededBytes();
  }
  EXPECT_GT(needed, std::uint64_t{1} << 30);
  EXPECT_EQ(Author(), "track-too-long");
  EXPECT_TRUE(maker.Files() == before);
}

// In a process without rights, since the limit does not hold for the system's own user.
TEST_F(HarmedRun, WithoutThreadsItEndsWithAWord) {
  fs::permissions(maker.Temp.Path(), fs::perms::all);
  fs::permissions(maker.Folder, fs::perms::all);
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t Nobody = 65534;
    constexpr unsigned MostSeconds = 60;
    alarm(MostSeconds);
    const rlimit none{0, 0};
    const bool limited =
        (geteuid() != 0 || setresuid(Nobody, Nobody, Nobody) == 0) && setrlimit(RLIMIT_NPROC, &none) == 0;
    const std::string outcome = Author();
    const bool told = outcome != "done" && maker.Ui.Messages.at(0).Text.find("thread") != std::string::npos;
    _exit(limited && told ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(maker.Files() == before);
  EXPECT_EQ(Aside(), "");
}

}  // namespace
}  // namespace quorvelant
