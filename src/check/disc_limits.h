// Whether a project has room on a disc.
#pragma once

#include "check/findings.h"
#include "model/project.h"

namespace quorvelant {

// Errors for what is beyond the limits (the classic rules warn where they make a disc of it), warnings for
// cells whose scene does not exist.
[[nodiscard]] Findings CheckLimits(const Project& project, const Rules& rules = Rules::Players);

}  // namespace quorvelant
