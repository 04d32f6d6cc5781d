// Commands: one text to its bytes (below 2 microseconds), and all commands of a big project.
#include <benchmark/benchmark.h>

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "large_project.h"
#include "vm/check_commands.h"
#include "vm/command_aims.h"
#include "vm/decoder.h"
#include "vm/resolver.h"

namespace {

using namespace quorvelant;

constexpr std::array<std::string_view, 8> Texts{
    "JumpSS vts_1, vts_ttn_1 : RootMenu",
    "LinkTopC, button=1",
    "SetSTN audio=1, subpicture=1:ON",
    "If ( GPRM1 == 3 ) LinkPGN 2, button=1",
    "{ SetSTN audio=2 ; LinkPGCN 7 }",
    "If ( GPRM1 == GPRM2 ) { mov GPRM3, 7 ; LinkTopPG, button=0 }",
    "SetAMXMD ACH0(4:ON,3:ON,2:ON), ACH1(4:OFF,3:OFF,2:OFF)",
    "mov GPRM0, GPRM0",
};

void EncodeOneText(benchmark::State& state) {
  const std::string_view text = Texts.at(static_cast<std::size_t>(state.range(0)));
  state.SetLabel(std::string(text));
  for (auto _ : state) {
    benchmark::DoNotOptimize(ResolveText(text, {}, nullptr, {.Numbers = NumericTargets::First}));
  }
}
BENCHMARK(EncodeOneText)->DenseRange(0, Texts.size() - 1);

void DecodeOne(benchmark::State& state) {
  const CommandBytes bytes = ParseCommandHex("B123000701020005");
  for (auto _ : state) {
    benchmark::DoNotOptimize(DecodeCommand(bytes));
  }
}
BENCHMARK(DecodeOne);

VMICommand_P Named(std::string text) {
  VMICommand_P command;
  command.FullCommand = std::move(text);
  return command;
}

// One title set per 10 chains of 24 commands each, every command naming another element.
Project ProjectOf(std::size_t commands) {
  Project project;
  project.Disc.Add({});
  std::size_t made = 0;
  while (made < commands) {
    VTS_P& set = project.Disc.Add({});
    Title_P title;
    for (int p = 0; p < 10; ++p) {
      PGC_P pgc;
      pgc.PGCName = "Chain_" + std::to_string(made);
      for (int n = 0; n < 24; ++n, ++made) {
        PG_P program;
        program.PGName = pgc.PGCName + "_PG" + std::to_string(n);
        Cell_P cell;
        cell.CellName = program.PGName + "_CELL1";
        pgc.PreCommands.push_back(Named(n % 2 == 0 ? "LinkCN " + cell.CellName : "LinkPGCN " + pgc.PGCName));
        program.Cell.Add(std::move(cell));
        pgc.PG.Add(std::move(program));
      }
      title.PGC.Add(std::move(pgc));
    }
    set.Title.Add(std::move(title));
  }
  return project;
}

void CheckProject(benchmark::State& state) {
  Project project = ProjectOf(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(CheckCommands(project, Rules::Players));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(CheckProject)->Arg(2400)->Arg(24000)->Arg(240000)->Unit(benchmark::kMillisecond);

// --- 99 title sets of one title with 99 chapters: 10,098 commands ---

Project FullDisc() {
  return LargeProject(TitleSets * PgcLines);
}

// At most 50 ms.
void ReadAims(benchmark::State& state) {
  const Project project = FullDisc();
  for (auto _ : state) {
    benchmark::DoNotOptimize(CommandAims(project, Rules::Players));
  }
}
BENCHMARK(ReadAims)->Unit(benchmark::kMillisecond);

// What an operation on one title set asks of the index; at most 5 ms with all else that it does.
void FollowOneChange(benchmark::State& state) {
  const Project project = FullDisc();
  CommandAims aims(project, Rules::Players);
  const std::array<std::size_t, 1> entries{50};
  for (auto _ : state) {
    benchmark::DoNotOptimize(aims.To("VTS49.TITLE1.PGC1"));
    benchmark::DoNotOptimize(aims.Renumbered(project, entries));
    aims.Update(project, entries);
  }
}
BENCHMARK(FollowOneChange)->Unit(benchmark::kMillisecond);

// At most 50 ms.
void ResolveAllCommands(benchmark::State& state) {
  Project project = FullDisc();
  for (auto _ : state) {
    benchmark::DoNotOptimize(CheckCommands(project, Rules::Players, {.Numbers = NumericTargets::BehindNames},
                                           MissingTargets::AreErrors));
  }
}
BENCHMARK(ResolveAllCommands)->Unit(benchmark::kMillisecond);

}  // namespace
