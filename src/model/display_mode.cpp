#include "model/display_mode.h"

#include <string>

#include "base/text.h"

namespace quorvelant {

void FollowDisplayMode(Track& track, const Rules& rules) {
  const std::string mode = Lower(track.DisplayMode);
  track.Pan = Contains(mode, "panscan");
  track.Letter = Contains(mode, "letterbox") ||
                 (rules.WideTakesLetterbox && track.Aspect == "16:9" && !track.Pan && !track.HasHighlights);
}

}  // namespace quorvelant
