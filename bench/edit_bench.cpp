// Operations on a disc of 99 titles with 99 chapters each, one title a set: an operation at most 5 ms, an
// undo 1 ms, all commands resolved 50 ms, a step at most 1 MiB.
#include <benchmark/benchmark.h>

#include <stdexcept>

#include "edit/drop.h"
#include "edit/removal.h"
#include "edit/segments.h"
#include "edit/session.h"
#include "edit/structure.h"
#include "large_project.h"
#include "model/keys.h"

namespace {

using namespace quorvelant;

Project FullDisc() {
  Project project = LargeProject(TitleSets * PgcLines);
  for (VTS_P& entry : project.Disc) {
    for (Title_P& title : entry.Title) {
      for (PG_P& program : title.PGC.Item(title.PGC.Count())->PG) {
        Cell_P& cell = *program.Cell.Item(1);
        cell.SegmentUsed = TitleSetEntry(entry.Key) - 2;
      }
    }
  }
  return project;
}

EditSession& Session() {
  static EditSession session(Rules::Players);
  static const bool filled = (session.Replace(FullDisc(), {}), true);
  benchmark::DoNotOptimize(filled);
  return session;
}

void MustBeDone(const Outcome& outcome) {
  if (!outcome.IsDone()) {
    throw std::runtime_error(outcome.Words.Text);
  }
}

// The operation is timed, its undo not.
template <class Operation>
void TimeOperation(benchmark::State& state, Operation operation) {
  EditSession& session = Session();
  for (auto _ : state) {
    MustBeDone(operation(session));
    state.PauseTiming();
    state.counters["step_bytes"] = static_cast<double>(session.LastStepBytes());
    session.Undo();
    state.ResumeTiming();
  }
}

void AddPgc(benchmark::State& state) {
  TimeOperation(state, [](EditSession& session) { return NewPgc(session, "VTS50.TITLE1", "New One"); });
}
BENCHMARK(AddPgc);

void DropTrack(benchmark::State& state) {
  EditSession& session = Session();
  MustBeDone(NewPgc(session, "VTS50.TITLE1", "Empty"));
  TimeOperation(
      state, [](EditSession& work) { return Drop(work, {.Track = 49, .Scene = {}}, "VTS50.TITLE1.PGC3"); });
  session.Undo();
}
BENCHMARK(DropTrack);

void RemoveProgram(benchmark::State& state) {
  TimeOperation(
      state, [](EditSession& session) { return Remove(session, "VTS50.TITLE1.PGC2.PG20", Consent::Given); });
}
BENCHMARK(RemoveProgram);

void RemoveSet(benchmark::State& state) {
  TimeOperation(state, [](EditSession& session) { return Remove(session, "VTS2", Consent::Given); });
}
BENCHMARK(RemoveSet);

void RenamePgc(benchmark::State& state) {
  TimeOperation(state, [](EditSession& session) { return Rename(session, "VTS50.TITLE1.PGC2", "Renamed"); });
}
BENCHMARK(RenamePgc);

void RenameOneTrack(benchmark::State& state) {
  TimeOperation(state, [](EditSession& session) { return RenameTrack(session, "Track.49", "Renamed"); });
}
BENCHMARK(RenameOneTrack);

void UndoAndRedo(benchmark::State& state) {
  EditSession& session = Session();
  MustBeDone(Remove(session, "VTS50.TITLE1.PGC2.PG20", Consent::Given));
  for (auto _ : state) {
    session.Undo();
    session.Redo();
  }
  session.Undo();
}
BENCHMARK(UndoAndRedo);

void ResolveAll(benchmark::State& state) {
  EditSession& session = Session();
  for (auto _ : state) {
    state.PauseTiming();
    MustBeDone(NewPgc(session, "VTS50.TITLE1", "New One"));
    session.Undo();
    state.ResumeTiming();
    benchmark::DoNotOptimize(session.Commands().CommandCount);
  }
}
BENCHMARK(ResolveAll);

}  // namespace
