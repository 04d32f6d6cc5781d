#include "ifo/domain_records.h"

#include <algorithm>

namespace quorvelant {

void DomainRecords::AddVob(std::size_t vobOrdinal, CarriedStreams carried) {
  vobOfTrack_.emplace(Vobs.Vobs.at(vobOrdinal).TrackIndex, vobOrdinal);
  carried_.resize(std::max(carried_.size(), vobOrdinal + 1));
  carried_[vobOrdinal] = carried;
}

std::optional<WrittenCell> DomainRecords::Find(const Cell_P& cell) const {
  const auto found = vobOfTrack_.find(cell.SegmentUsed);
  if (found == vobOfTrack_.end()) {
    return std::nullopt;
  }
  const VobRecord& vob = Vobs.Vobs[found->second];
  const auto record = std::ranges::find(vob.Cells, cell.pScene, &CellRecord::Scene);
  if (record == vob.Cells.end()) {
    return std::nullopt;
  }
  return WrittenCell{&vob, &*record};
}

CarriedStreams DomainRecords::StreamsOf(const Cell_P& cell) const {
  const auto found = vobOfTrack_.find(cell.SegmentUsed);
  return found == vobOfTrack_.end() ? CarriedStreams{} : carried_[found->second];
}

int FramesOf(const CellRecord& cell, bool ntsc, const Rules& rules) {
  constexpr int StillFramesPal = 10;
  constexpr int StillFramesNtsc = 15;
  const bool counts = cell.Frames >= 2 || rules.ShortSlidesEndTheirVobu;
  return counts ? cell.Frames : ntsc ? StillFramesNtsc : StillFramesPal;
}

std::int64_t FramesOf(const Title_P& title, const EntryRecords& records) {
  std::int64_t frames = 0;
  for (const PGC_P* chain : Live(title.PGC)) {
    for (const Cell_P* cell : LiveCells(*chain)) {
      const auto written = records.Title.Find(*cell);
      frames += written ? FramesOf(*written->Cell, records.Ntsc, records.Rules) : 0;
    }
  }
  return frames;
}

bool IsSequential(const Title_P& title) {
  const auto pgcs = Live(title.PGC);
  return pgcs.size() == 1 && pgcs.front()->PlayBackMode == PlayBack::Sequential;
}

}  // namespace quorvelant
