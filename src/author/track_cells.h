// The cells of one domain that play the scenes of one track.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/rules.h"
#include "model/held_cells.h"
#include "model/my_dvd.h"
#include "model/stream_maps.h"

namespace quorvelant {

// What the cells of a scene say together.
struct SceneUse {
  UopMask Uops;        // prohibited by any of them
  bool Holds = false;  // one of them has a still time
};

class TrackCells {
 public:
  TrackCells(const Project& project, const VTS_P& entry, Domain domain, std::size_t trackIndex,
             const Rules& rules);

  // Whether any cell plays the scene.
  [[nodiscard]] bool Plays(std::size_t scene) const { return cells_.contains(scene); }

  SceneUse UseOf(std::size_t scene) const;
  // The live commands of all "Menu Play" entries of the first cell of the scene that has any, in a row,
  // as 16 hexadecimal digits each.
  std::vector<std::string> ButtonCommandsOf(std::size_t scene) const;

 private:
  HeldCells held_;
  std::unordered_map<std::size_t, std::vector<const Cell_P*>> cells_;  // by scene
};

}  // namespace quorvelant
