// Loading and saving scripts of three sizes. Loading includes resolving and encoding every command; a
// "line" is a line of the script.
#include <benchmark/benchmark.h>

#include <memory>
#include <sstream>

#include "base/silent_ui.h"
#include "large_project.h"
#include "script/script_reader.h"
#include "script/script_writer.h"

namespace quorvelant {
namespace {

void LoadLines(benchmark::State& state) {
  const std::string text = WriteScript(LargeProject(static_cast<std::size_t>(state.range(0))));
  SilentUi ui;
  std::size_t lines = 0;
  std::size_t commands = 0;
  for ([[maybe_unused]] const auto step : state) {
    state.PauseTiming();
    std::istringstream stream(text);
    auto project = std::make_unique<Project>();
    state.ResumeTiming();
    const LoadResult result =
        LoadScript(stream, text.size(), "bench.qvp", *project, {.Rules = Rules::Players}, ui);
    if (!result.MayAuthor() || result.SkippedCount > 0) {
      state.SkipWithError("the script does not load");
    }
    lines = result.LineCount;
    commands = result.Commands.CommandCount;
    state.PauseTiming();
    project.reset();
    state.ResumeTiming();
  }
  const auto perRun = static_cast<double>(lines) * static_cast<double>(state.iterations());
  state.counters["script_lines"] = static_cast<double>(lines);
  state.counters["commands"] = static_cast<double>(commands);
  state.counters["lines/s"] = benchmark::Counter(perRun, benchmark::Counter::kIsRate);
}
BENCHMARK(LoadLines)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void SaveScript(benchmark::State& state) {
  const Project project = LargeProject(static_cast<std::size_t>(state.range(0)));
  std::size_t bytes = 0;
  for ([[maybe_unused]] const auto step : state) {
    const std::string text = WriteScript(project);
    bytes = text.size();
    benchmark::DoNotOptimize(text.data());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(SaveScript)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvelant
