#pragma once

// What of the disc shows a source.

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "model/project.h"

namespace quorvelant {

struct ShownSource {
  std::size_t CellCount = 0;
  std::vector<std::string> Keys;  // of cells, or of the programs that hold no others
};

// The live cells that show one of these scenes of a track, known by their names; without scenes, the track.
[[nodiscard]] ShownSource CellsShowing(const Project& project, std::size_t track,
                                       std::span<const Scene> scenes);

}  // namespace quorvelant
