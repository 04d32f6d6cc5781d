// Navigation commands, each judged where it stands.
#pragma once

#include "check/findings.h"
#include "model/project.h"

namespace quorvelant {

// Resolved commands by their eight bytes: whether their domain may hold them (`target-forbidden`) and whether
// the disc will have what they lead to (`target-missing`). In the order of the disc, First Play first;
// `Place` is the key of the PGC or cell and the command's own ("VTS1.TITLE1.PGC1 Pre2").
[[nodiscard]] Findings CheckCommandTargets(const Project& project);

}  // namespace quorvelant
