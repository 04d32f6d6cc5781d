// The buttons of a project's tracks, as navigation sees them.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "base/rules.h"
#include "model/held_cells.h"
#include "model/project.h"
#include "model/walk.h"
#include "player/nav_disc.h"

namespace quorvelant {

// Of one domain of an entry. The project must outlive it.
class NavButtons {
 public:
  NavButtons(const Project& project, const VTS_P& entry, Domain domain, const HeldCells& held);

  // Adds the pages that show while a cell plays.
  void AddPages(const Cell_P& cell, NavCell& nav);
  // Of its VOBUs: what its scene forbids, and each cell that plays the scene.
  [[nodiscard]] std::uint32_t UserOperationsOf(const Cell_P& cell) const;
  // Of the cell's scene.
  [[nodiscard]] std::uint32_t TicksOf(const Cell_P& cell) const;

 private:
  struct TimedPage {
    std::int64_t Start = 0;  // frames of the track
    std::int64_t End = 0;
    bool EndsAnyway = false;  // by its selection end, whatever the cell waits
    NavPage Page;
  };
  [[nodiscard]] const std::vector<TimedPage>& PagesOfTrack(std::size_t index);
  [[nodiscard]] std::vector<TimedPage> TimedPages(std::size_t index) const;

  const Project& project_;
  const HeldCells& held_;
  std::map<std::size_t, std::map<std::size_t, std::vector<const Cell_P*>>> cells_;  // by track and scene
  std::map<std::size_t, std::vector<TimedPage>> pages_;                             // by track
};

}  // namespace quorvelant
