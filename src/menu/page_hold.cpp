#include "menu/page_hold.h"

#include "model/update_my_dvd.h"

namespace quorvelant {

PageHold PageHoldOf(bool isStill, bool isNtsc, const Rules& rules) {
  if (!rules.MenusHold) {
    return {.Frames = isNtsc ? 300 : 250};
  }
  return {.Frames = isNtsc ? 15 : 12, .WaitsAlone = isStill, .CellSeconds = InfiniteStill};
}

RemoteReach RemoteReachOf(const Rules& rules) {
  if (!rules.RemoteKeysLead) {
    return {};
  }
  return {.Links = Route::Geometry, .NumbersAreItems = true, .ReturnsToRoot = true};
}

}  // namespace quorvelant
