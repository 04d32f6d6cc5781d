#include "model/held_cells.h"

#include "model/walk.h"

namespace quorvelant {

HeldCells::HeldCells(const Project& project, const Rules& rules) {
  if (!rules.ChainStillHolds) {
    return;
  }
  for (const auto& place : LivePgcs(project)) {
    const auto cells = LiveCells(*place.Chain);
    if (place.Chain->StillTime > 0 && !cells.empty()) {
      byChain_.insert(cells.back());
    }
  }
}

}  // namespace quorvelant
