#include "author/track_cells.h"

#include <utility>

#include "model/walk.h"

namespace quorvelant {

TrackCells::TrackCells(const Project& project, const VTS_P& entry, Domain domain, std::size_t trackIndex,
                       const Rules& rules)
    : held_(project, rules) {
  for (const Cell_P* cell : LiveCells(entry, domain)) {
    if (std::cmp_equal(cell->SegmentUsed, trackIndex) && cell->pScene >= 0) {
      cells_[static_cast<std::size_t>(cell->pScene)].push_back(cell);
    }
  }
}

SceneUse TrackCells::UseOf(std::size_t scene) const {
  SceneUse use;
  const auto found = cells_.find(scene);
  if (found != cells_.end()) {
    for (const Cell_P* cell : found->second) {
      use.Uops |= cell->Uops;
      use.Holds = use.Holds || held_.Has(*cell);
    }
  }
  return use;
}

std::vector<std::string> TrackCells::ButtonCommandsOf(std::size_t scene) const {
  std::vector<std::string> commands;
  const auto found = cells_.find(scene);
  if (found == cells_.end()) {
    return commands;
  }
  for (const Cell_P* cell : found->second) {
    for (const ButtonCommands_P& play : cell->ButtonCommands) {
      for (const VMICommand_P& command : play.Commands) {
        if (!command.Deleted) {
          commands.push_back(command.CommandHex);
        }
      }
    }
    if (!commands.empty()) {
      break;
    }
  }
  return commands;
}

}  // namespace quorvelant
