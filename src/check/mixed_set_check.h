// Tracks of one domain that no player shows alike.
#pragma once

#include "check/findings.h"
#include "model/project.h"

namespace quorvelant {

// Each domain against its first track, whose attributes players are told: standard, picture size, aspect and
// the kind of each audio stream. What is not known of a track fits any. `Place` is the key of the track, or
// of its stream.
[[nodiscard]] Findings CheckMixedSets(const Project& project);

}  // namespace quorvelant
