// Whole runs that meet files, sources and a system that fail them: the disc before stays.
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>

#include "author/messages.h"
#include "check/messages.h"
#include "disc_maker.h"
#include "verify/messages.h"
#include "verify/named_files.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

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
  fs::remove(film);
  fs::copy_file(taken, film);
  maker.Disc.ScriptFile = maker.Temp / "disc.qvp";
  fs::create_symlink(taken, maker.Disc.ScriptFile);
  EXPECT_EQ(Author(), "source-in-destination");
  EXPECT_EQ(TempFolder::Read(taken), content);
}

TEST_F(HarmedRun, WithoutDescriptorsItEndsWithAWord) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer takes descriptors itself to look at memory";
#endif
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
  film.VideoPlays[0].File = SampleVideo({.Frames = 1});
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
  for (const char* name : {"film.m2v", "film.ac3"}) {  // where the samples are, others may not read
    const fs::path source = maker.Temp.Path() / name;
    const fs::path sample = fs::canonical(source);
    fs::remove(source);
    fs::copy_file(sample, source);
  }
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
