#pragma once

// Scene names are one of a kind in a project: cells know scenes by them.

#include <cstddef>
#include <span>

#include "model/project.h"

namespace quorvelant {

// Gives the scenes of a track that it did not have `before` (by name) names that no other scene has.
void NameNewScenes(Project& project, std::size_t track, std::span<const Scene> before);

}  // namespace quorvelant
