#include "author/track_cells.h"

#include "ifo/domain_records.h"

namespace quorvelant {
namespace {

std::vector<const PGC_P*> ChainsOf(const VTS_P& entry, Domain domain) {
  std::vector<const PGC_P*> chains;
  const auto add = [&](const auto& owners) {
    for (const auto* owner : Live(owners)) {
      const auto live = Live(owner->PGC);
      chains.insert(chains.end(), live.begin(), live.end());
    }
  };
  if (domain == Domain::Menu) {
    add(entry.Lang);
  } else {
    add(entry.Title);
  }
  return chains;
}

}  // namespace

TrackCells::TrackCells(const VTS_P& entry, Domain domain, std::size_t trackIndex) {
  for (const PGC_P* chain : ChainsOf(entry, domain)) {
    for (const PG_P* program : Live(chain->PG)) {
      for (const Cell_P* cell : Live(program->Cell)) {
        if (cell->SegmentUsed >= 0 && static_cast<std::size_t>(cell->SegmentUsed) == trackIndex &&
            cell->pScene >= 0) {
          cells_[static_cast<std::size_t>(cell->pScene)].push_back(cell);
        }
      }
    }
  }
}

SceneUse TrackCells::UseOf(std::size_t scene) const {
  SceneUse use;
  const auto found = cells_.find(scene);
  if (found != cells_.end()) {
    for (const Cell_P* cell : found->second) {
      use.Uops |= cell->Uops;
      use.Holds = use.Holds || cell->StillTime != 0;
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
