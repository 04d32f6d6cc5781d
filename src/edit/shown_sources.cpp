#include "edit/shown_sources.h"

#include <algorithm>
#include <utility>

#include "model/walk.h"

namespace quorvelant {

ShownSource CellsShowing(const Project& project, std::size_t track, std::span<const Scene> scenes) {
  const auto shows = [&](const Cell_P* cell) {
    if (scenes.empty()) {
      return std::cmp_equal(cell->SegmentUsed, track);
    }
    // Scenes that an analysis took away have left their cells without a track.
    const bool mayShow = std::cmp_equal(cell->SegmentUsed, track) || cell->SegmentUsed < 0;
    return mayShow && std::ranges::find(scenes, cell->SceneUsed, &Scene::Name) != scenes.end();
  };
  ShownSource found;
  for (const auto& at : LivePgcs(project)) {
    for (const PG_P* program : Live(at.Chain->PG)) {
      const auto cells = Live(program->Cell);
      const auto count = std::ranges::count_if(cells, shows);
      found.CellCount += static_cast<std::size_t>(count);
      if (count > 0 && std::cmp_equal(count, cells.size())) {
        found.Keys.push_back(program->Key);
        continue;
      }
      for (const Cell_P* cell : cells) {
        if (shows(cell)) {
          found.Keys.push_back(cell->Key);
        }
      }
    }
  }
  return found;
}

}  // namespace quorvelant
