// A structure that no player gets through, whatever its sources are.
#pragma once

#include "check/findings.h"
#include "model/project.h"

namespace quorvelant {

// Sets, titles and languages that hold nothing, a First Play that leads nowhere, menus that neither hold nor
// lead on. First Play first, then in the order of the disc; `Place` is the element's key. Commands must have
// been resolved.
[[nodiscard]] Findings CheckStructure(const Project& project);

}  // namespace quorvelant
