// Checks every figure of the navigation packs against the places found by walking the finished VOBs.
#pragma once

#include <cstdint>
#include <vector>

#include "support/vob_walk.h"

namespace quorvelant {

struct NavTiming {
  std::int64_t FrameTicks = 3600;
  int FramesPerSecond = 25;
  bool SyncLeavesVobu = true;  // the players' rule for A_SYNCA
};

// Adds a failure for each figure that does not hold.
void CheckNavFigures(const std::vector<WalkedVobu>& vobus, const NavTiming& timing);

}  // namespace quorvelant
