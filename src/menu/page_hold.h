// How long a page of a menu shows, and what keys of the remote do there.
#pragma once

#include <cstdint>

#include "base/rules.h"
#include "edit/auto_route.h"

namespace quorvelant {

struct PageHold {
  std::int64_t Frames = 0;       // on the track, from one page to the next
  bool WaitsAlone = false;       // a still without a length of its own
  std::int32_t CellSeconds = 0;  // 255 for ever; 0 as the track's type has it
};

// A page that waits needs no more than one VOBU, which a player then holds; otherwise it lasts ten seconds.
[[nodiscard]] PageHold PageHoldOf(bool isStill, bool isNtsc, const Rules& rules);

struct RemoteReach {
  Route Links = Route::Ring;
  bool NumbersAreItems = false;  // through all pages, without the buttons that turn them
  bool ReturnsToRoot = false;
};
[[nodiscard]] RemoteReach RemoteReachOf(const Rules& rules);

}  // namespace quorvelant
