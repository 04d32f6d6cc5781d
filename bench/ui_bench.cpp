// A window's document and trees over 99 titles with 99 chapters each and 18,000 subtitles: opened within 2 s,
// an edit shown within 50 ms, a screen of rows within 16 ms.
#include <benchmark/benchmark.h>

#include <memory>
#include <stdexcept>

#include "edit/removal.h"
#include "edit/segments.h"
#include "edit/structure.h"
#include "large_project.h"
#include "model/keys.h"
#include "ui/disc_model.h"
#include "ui/media_model.h"

namespace {

using namespace quorvelant;

constexpr std::size_t Subtitles = 18'000;
constexpr int RowsOfScreen = 60;

class NoAnswers : public Answerer {
 public:
  bool Ask(std::string_view, std::string_view, std::string_view, std::string_view) override { return true; }
  std::optional<std::string> AskText(std::string_view, std::string_view, std::string_view) override {
    return {};
  }
  std::optional<std::size_t> Choose(std::string_view, std::string_view,
                                    const std::vector<std::string>&) override {
    return {};
  }
  std::vector<std::string> FilesToOpen(std::string_view, const std::vector<FileFilter>&, bool) override {
    return {};
  }
  std::optional<std::string> FileToSave(std::string_view, std::string_view,
                                        const std::vector<FileFilter>&) override {
    return {};
  }
  std::optional<std::string> FolderToUse(std::string_view, std::string_view) override { return {}; }
};

Project SubtitledDisc() {
  Project project = LargeProject(TitleSets * PgcLines);
  for (VTS_P& entry : project.Disc) {
    for (Title_P& title : entry.Title) {
      for (PG_P& program : title.PGC.Item(title.PGC.Count())->PG) {
        Cell_P& cell = *program.Cell.Item(1);
        cell.SegmentUsed = TitleSetEntry(entry.Key) - 2;
        cell.pScene = ProgramNumber(program.Key) - 1;
      }
    }
  }
  for (Track& track : project.Tracks) {
    SubtitleStream& stream = track.SubStreams.emplace_back();
    track.VideoFrames = 60'000;
    for (std::size_t i = 0; i < Subtitles / TitleSets; ++i) {
      SubPicturePlay& play = stream.SubPlays.emplace_back();
      play.Start = fmt::format("00:{:02}:{:02}:00", i / 20, i % 20 * 3);
      play.File = fmt::format("subs/{}.png", i);
    }
  }
  return project;
}

struct Trees {
  NoAnswers Answers;
  Voice Speaks{Answers};
  Document Doc{{}, {}, Speaks};
  MediaModel Media{Doc};
  DiscModel Disc{Doc};
};

Trees& Opened() {
  static const auto trees = [] {
    auto made = std::make_unique<Trees>();
    made->Doc.Session().Replace(SubtitledDisc(), {});
    return made;
  }();
  return *trees;
}

void MustBeDone(const Outcome& outcome) {
  if (!outcome.IsDone()) {
    throw std::runtime_error(outcome.Words.Text);
  }
}

void OpenProject(benchmark::State& state) {
  const Project project = SubtitledDisc();
  Trees trees;
  for (auto _ : state) {
    state.PauseTiming();
    Project copy = project;
    state.ResumeTiming();
    trees.Doc.Session().Replace(std::move(copy), {});
  }
}
BENCHMARK(OpenProject)->Unit(benchmark::kMillisecond);

// With what the models tell their views; the way back is not timed.
template <class Operation>
void TimeEdit(benchmark::State& state, Operation operation) {
  Trees& trees = Opened();
  for (auto _ : state) {
    MustBeDone(trees.Doc.Try(operation));
    state.PauseTiming();
    trees.Doc.Undo();
    state.ResumeTiming();
  }
}

void ShowNewPgc(benchmark::State& state) {
  TimeEdit(state, [](EditSession& session) { return NewPgc(session, "VTS50.TITLE1", "New One"); });
}
BENCHMARK(ShowNewPgc)->Unit(benchmark::kMillisecond);

void ShowRenamedTrack(benchmark::State& state) {
  TimeEdit(state, [](EditSession& session) { return RenameTrack(session, "Track.49", "Renamed"); });
}
BENCHMARK(ShowRenamedTrack)->Unit(benchmark::kMillisecond);

void ShowRemovedProgram(benchmark::State& state) {
  TimeEdit(state,
           [](EditSession& session) { return Remove(session, "VTS50.TITLE1.PGC2.PG20", Consent::Given); });
}
BENCHMARK(ShowRemovedProgram)->Unit(benchmark::kMillisecond);

void ShowRemovedSet(benchmark::State& state) {
  TimeEdit(state, [](EditSession& session) { return Remove(session, "VTS2", Consent::Given); });
}
BENCHMARK(ShowRemovedSet)->Unit(benchmark::kMillisecond);

void ShowUndoneSet(benchmark::State& state) {
  Trees& trees = Opened();
  for (auto _ : state) {
    state.PauseTiming();
    MustBeDone(trees.Doc.Try([](EditSession& session) { return Remove(session, "VTS2", Consent::Given); }));
    state.ResumeTiming();
    trees.Doc.Undo();
  }
}
BENCHMARK(ShowUndoneSet)->Unit(benchmark::kMillisecond);

// Every role that a view, its delegate and a screen reader ask of each cell.
void ScrollScreen(benchmark::State& state) {
  const Trees& trees = Opened();
  const QModelIndex chain = trees.Disc.IndexOf("VTS50.TITLE1.PGC2");
  for (auto _ : state) {
    for (int row = 0; row < RowsOfScreen; ++row) {
      for (int column = 0; column < trees.Disc.columnCount(); ++column) {
        const QModelIndex index = trees.Disc.index(row, column, chain);
        for (const int role : {static_cast<int>(Qt::DisplayRole), static_cast<int>(Qt::AccessibleTextRole),
                               static_cast<int>(Qt::ToolTipRole)}) {
          benchmark::DoNotOptimize(index.data(role));
        }
      }
    }
  }
}
BENCHMARK(ScrollScreen)->Unit(benchmark::kMillisecond);

}  // namespace
