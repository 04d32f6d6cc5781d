// What the buttons of a track would do wrong on the disc.
#pragma once

#include <cstddef>

#include "check/findings.h"
#include "model/tracks.h"

namespace quorvelant {

// The links between the buttons of each set of the track of that index; a finding's place is the list's key
// and the number of the set.
Findings CheckButtonLinks(const Track& track, std::size_t trackIndex);

// Everything else about the sets: their number of buttons, names, areas and spans. Places are as above.
Findings CheckButtons(const Track& track, std::size_t trackIndex);

}  // namespace quorvelant
