#include "ifo/time_maps.h"

#include <algorithm>
#include <span>

#include "base/timecode.h"
#include "disc/table_layout.h"
#include "disc/video_standard.h"
#include "ifo/pgc_writer.h"

namespace quorvelant {
namespace {

constexpr int MostStepSeconds = 255;

// The cells of a chain that lie in one VOB and follow one another.
struct VobRun {
  std::vector<std::span<const TimeMapRecord>> Cells;
};

std::vector<VobRun> RunsOf(const PGC_P& chain, const DomainRecords& records) {
  std::vector<VobRun> runs;
  const VobRecord* former = nullptr;
  for (const PG_P* program : Live(chain.PG)) {
    for (const auto& [cell, written] : WrittenCells(*program, records)) {
      if (written.Vob != former) {
        runs.emplace_back();
        former = written.Vob;
      }
      const auto& map = written.Vob->TimeMap;
      const std::uint8_t id = written.Cell->CellId;
      runs.back().Cells.emplace_back(std::ranges::lower_bound(map, id, {}, &TimeMapRecord::CellId),
                                     std::ranges::upper_bound(map, id, {}, &TimeMapRecord::CellId));
    }
  }
  return runs;
}

// The entries at a step of `stepFrames`. The clock counts the frames after the first; a VOBU makes at
// most one entry. Where VOBUs of NTSC begin between two frames, the rounding of these sums decides.
std::vector<std::uint32_t> EntriesOf(const std::vector<VobRun>& runs, int stepFrames,
                                     const FrameTiming& timing) {
  std::vector<std::uint32_t> entries;
  double clock = -1.0;
  double threshold = stepFrames;
  for (const VobRun& run : runs) {
    const std::size_t before = entries.size();
    for (const auto& cell : run.Cells) {
      for (const TimeMapRecord& vobu : cell) {
        clock += static_cast<double>(vobu.LengthTicks) / static_cast<double>(timing.FramePeriod);
        if (clock >= threshold) {
          entries.push_back(vobu.Sector);
          threshold += stepFrames;
        }
      }
    }
    if (entries.size() > before) {
      entries.back() |= time_map::LastOfVob;
    }
  }
  return entries;
}

void AppendMap(const PGC_P& chain, const EntryRecords& records, Bytes& bytes) {
  const auto runs = RunsOf(chain, records.Title);
  const FrameTiming& timing = TimingOf(records.Ntsc);
  int step = 1;
  auto entries = EntriesOf(runs, timing.FramesPerSecond, timing);
  while (entries.size() > MostTimeMapEntries) {
    if (++step > MostStepSeconds) {
      throw TimeMapError("a program chain is too long for a time map");
    }
    entries = EntriesOf(runs, step * timing.FramesPerSecond, timing);
  }
  const std::size_t start = bytes.size();
  bytes.resize(start + time_map::Size + 4 * entries.size());
  const ByteSpan map = ByteSpan(bytes).subspan(start);
  if (entries.empty()) {
    return;  // four zero bytes
  }
  Put(map, time_map::UnitSeconds, disc::Number{static_cast<std::uint64_t>(step)});
  Put(map, time_map::Entries, disc::Number{entries.size()});
  for (std::size_t i = 0; i < entries.size(); ++i) {
    PutBytes(map, time_map::Size + 4 * i, 4, entries[i]);
  }
}

}  // namespace

Bytes BuildTimeMaps(const EntryRecords& records) {
  const auto titles = Live(records.Entry.Title);
  if (std::ranges::none_of(titles, [](const Title_P* title) { return IsSequential(*title); })) {
    return {};
  }
  std::vector<const PGC_P*> chains;  // nullptr: an empty map
  for (const Title_P* title : titles) {
    for (const PGC_P* chain : Live(title->PGC)) {
      chains.push_back(IsSequential(*title) ? chain : nullptr);
    }
  }
  Bytes bytes(table_head::Size + 4 * chains.size());
  Put(bytes, table_head::Count, disc::Number{chains.size()});
  for (std::size_t i = 0; i < chains.size(); ++i) {
    PutBytes(bytes, table_head::Size + 4 * i, 4, bytes.size());
    if (chains[i] == nullptr) {
      bytes.resize(bytes.size() + time_map::Size);
    } else {
      AppendMap(*chains[i], records, bytes);
    }
  }
  Put(bytes, table_head::Last, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size() - 1)});
  return bytes;
}

}  // namespace quorvelant
