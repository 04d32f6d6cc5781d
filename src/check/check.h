// What a project itself says wrong: names, still times and streams. No source file is looked at.
#pragma once

#include "check/findings.h"
#include "model/project.h"

namespace quorvelant {

// In the order of the disc and the tracks. `Place` is a project key.
[[nodiscard]] Findings CheckProject(const Project& project);

}  // namespace quorvelant
