// The information files of a full disc: 99 title sets of 99 chapters each, two hours a set.
#include <benchmark/benchmark.h>

#include <deque>

#include "ifo/vmg_ifo.h"
#include "ifo/vts_ifo.h"

namespace quorvelant {
namespace {

constexpr int Sets = 99;
constexpr int Chapters = 99;
constexpr int VobusOfChapter = 145;  // of half a second

DomainRecords FilmRecords() {
  DomainRecords records;
  VobRecord vob{.VobId = 1, .TrackIndex = 0, .FirstSector = 0, .LastSector = 0, .Cells = {}, .TimeMap = {}};
  std::uint32_t sector = 0;
  for (int chapter = 0; chapter < Chapters; ++chapter) {
    CellRecord cell{
        .CellId = static_cast<std::uint8_t>(chapter + 1), .Scene = chapter, .StartSector = sector};
    for (int i = 0; i < VobusOfChapter; ++i) {
      cell.LastVobuStartSector = sector;
      vob.TimeMap.push_back({sector, cell.CellId, 12 * 3600});
      records.Vobs.VobuAddressList.push_back(sector);
      sector += 200;
    }
    cell.EndSector = sector - 1;
    cell.Frames = 12 * VobusOfChapter;
    vob.Cells.push_back(cell);
  }
  records.Vobs.Vobs.push_back(vob);
  records.Vobs.TotalSectors = sector;
  records.AddVob(0, {});
  return records;
}

VTS_P FilmSet() {
  PGC_P chain;
  chain.PGCName = "Film";
  for (int chapter = 0; chapter < Chapters; ++chapter) {
    Cell_P cell;
    cell.SegmentUsed = 0;
    cell.pScene = chapter;
    PG_P program;
    program.Cell.Add(cell);
    chain.PG.Add(program);
  }
  Title_P title;
  title.PGC.Add(chain);
  VTS_P set;
  set.Title.Add(title);
  return set;
}

void FullDisc(benchmark::State& state) {
  Project disc;
  disc.Disc.Add({});
  for (int i = 0; i < Sets; ++i) {
    disc.Disc.Add(FilmSet());
  }
  const DomainRecords film = FilmRecords();
  const DomainRecords none;
  Log log;
  for (auto unused : state) {
    std::vector<WrittenSet> sets;
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < Sets; ++i) {
      const VTS_P& entry = *disc.Disc.Item(i + 2);
      bytes += BuildTitleSetIfo({disc, entry, none, film, Rules::Players, false}, log).size();
      sets.push_back({&entry, &none, &film});
    }
    bytes += BuildVideoManagerIfo({disc, *disc.Disc.Item(1), none, none, Rules::Players, false}, sets, 0x40)
                 .size();
    benchmark::DoNotOptimize(bytes);
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
  }
}
BENCHMARK(FullDisc)->Unit(benchmark::kMillisecond);  // limit: 100 ms

}  // namespace
}  // namespace quorvelant
