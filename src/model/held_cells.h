// Cells whose end waits with what shows there.
#pragma once

#include <unordered_set>

#include "base/rules.h"
#include "model/my_dvd.h"
#include "model/project.h"

namespace quorvelant {

// The cells that hold by a still time: their own, or that of the PGC whose last cell they are.
class HeldCells {
 public:
  HeldCells(const Project& project, const Rules& rules);

  [[nodiscard]] bool Has(const Cell_P& cell) const { return cell.StillTime > 0 || byChain_.contains(&cell); }

 private:
  std::unordered_set<const Cell_P*> byChain_;
};

}  // namespace quorvelant
