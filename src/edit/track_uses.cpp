#include "edit/track_uses.h"

#include <algorithm>
#include <utility>

#include "model/walk.h"

namespace quorvelant {

namespace {

std::vector<std::size_t> TracksOf(const VTS_P& entry, std::size_t trackCount) {
  std::vector<std::size_t> tracks;
  for (const Domain domain : {Domain::Menu, Domain::Title}) {
    for (const Cell_P* cell : LiveCells(entry, domain)) {
      if (cell->SegmentUsed >= 0 && std::cmp_less(cell->SegmentUsed, trackCount)) {
        tracks.push_back(static_cast<std::size_t>(cell->SegmentUsed));
      }
    }
  }
  std::ranges::sort(tracks);
  tracks.erase(std::unique(tracks.begin(), tracks.end()), tracks.end());
  return tracks;
}

}  // namespace

void TrackUses::Update(const Project& project, std::span<const std::size_t> entries) {
  byEntry_.resize(project.Disc.Count());
  for (const std::size_t number : entries) {
    if (const VTS_P* entry = project.Disc.Item(number)) {
      byEntry_[number - 1] = TracksOf(*entry, project.Tracks.Count());
    }
  }
}

bool TrackUses::Shows(std::size_t entry, std::size_t track) const {
  return entry >= 1 && entry <= byEntry_.size() && std::ranges::binary_search(byEntry_[entry - 1], track);
}

std::vector<bool> TrackUses::InUse(std::size_t trackCount) const {
  std::vector<bool> used(trackCount);
  for (const auto& tracks : byEntry_) {
    for (const std::size_t track : tracks) {
      used[track] = true;
    }
  }
  return used;
}

}  // namespace quorvelant
