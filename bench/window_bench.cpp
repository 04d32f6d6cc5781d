// Discs made in the window against the same by the command line, and whether the window answers meanwhile.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "author/author_order.h"
#include "desk/author_options.h"
#include "edit/film_files.h"
#include "edit/new_titles.h"
#include "edit/project_file.h"
#include "ui/author_work.h"
#include "window/main_window.h"

namespace {

namespace fs = std::filesystem;
using namespace quorvelant;

constexpr std::uintmax_t Gigabyte = 1'000'000'000;

// Knows how long the longest event has taken.
class TimedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    QElapsedTimer timer;
    timer.start();
    ++depth_;
    const bool done = QApplication::notify(receiver, event);
    if (--depth_ == 0) {
      Longest = std::max(Longest, timer.nsecsElapsed());
    }
    return done;
  }

  qint64 Longest = 0;  // nanoseconds

 private:
  int depth_ = 0;
};

void Repeat(const fs::path& from, const fs::path& to, std::uintmax_t times) {
  std::ifstream in(from, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::ofstream out(to, std::ios::binary);
  for (std::uintmax_t i = 0; i < times; ++i) {
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
}

class Films {
 public:
  Films() : Folder(fs::temp_directory_path() / fmt::format("quorvelant_bench_{}", getpid())) {
    fs::create_directories(Folder);
    const fs::path media = fs::path(QUORVELANT_SOURCE) / "examples/media";
    const std::uintmax_t times = Gigabyte / fs::file_size(media / "first.m2v");
    Repeat(media / "first.m2v", Folder / "film.m2v", times);
    Repeat(media / "first_en.ac3", Folder / "film.en.ac3", times);
  }
  Films(const Films&) = delete;
  Films& operator=(const Films&) = delete;
  ~Films() { fs::remove_all(Folder); }

  fs::path Folder;
};

double Seconds(const std::chrono::steady_clock::time_point& start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double ByCommand(const fs::path& script, const fs::path& folder) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    execl(QUORVELANT_PROGRAM, "quorvelant", "author", script.c_str(), "-o", folder.c_str(), "--force",
          nullptr);
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return status == 0 ? Seconds(start) : -1;
}

double InWindow(MainWindow& window, const fs::path& folder) {
  WindowParts& parts = window.Parts();
  AuthorOrder order = OrderOf(parts.Options, Rules::Players);
  order.Folder = folder;
  order.Force = true;
  QEventLoop loop;
  const auto start = std::chrono::steady_clock::now();
  Job* const job = parts.Work.Start(
      "Author",
      AuthorWork(std::make_shared<const Project>(parts.Doc.Work()), parts.Doc.Session().Commands(), order),
      [&loop](const Job&) { loop.quit(); });
  loop.exec();
  return job->Now() == Job::State::Done ? Seconds(start) : -1;
}

// A disc of a gigabyte: the ratio to the command (limit 1.1) and the longest event (limit 100 ms).
void AuthorInWindow(benchmark::State& state) {
  const Films films;
  MainWindow window({});
  window.show();
  const std::string script = films.Folder / "film.qvp";
  Document& document = window.Parts().Doc;
  FilmFiles film{
      .Video = films.Folder / "film.m2v", .Name = "film", .Audio = {}, .Subtitles = {}, .Chapters = {}};
  film.Audio.push_back({.File = films.Folder / "film.en.ac3", .Language = "English"});
  document.Do([&](EditSession& session, Consent) {
    return AddTitles(session, std::vector<FilmFiles>{film}, document.Speaks());
  });
  if (!SaveProjectAs(document.Session(), script, document.Speaks())) {
    state.SkipWithError("the project was not saved");
    return;
  }
  auto& application = static_cast<TimedApplication&>(*QCoreApplication::instance());
  double command = 0;
  double inside = 0;
  for (auto _ : state) {
    const double one = ByCommand(script, films.Folder / "command");
    application.Longest = 0;
    const double other = InWindow(window, films.Folder / "window");
    if (one < 0 || other < 0) {
      state.SkipWithError("a disc was not made");
      return;
    }
    command += one;
    inside += other;
    state.SetIterationTime(other);
  }
  state.counters["ratio"] = inside / command;
  state.counters["longest_event_ms"] = static_cast<double>(application.Longest) / 1e6;
}
BENCHMARK(AuthorInWindow)->UseManualTime()->Iterations(3)->Unit(benchmark::kSecond);

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);  // NOLINT(concurrency-mt-unsafe)
  TimedApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
