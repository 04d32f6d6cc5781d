// What a project itself says wrong. No source file is looked at.
#pragma once

#include "base/rules.h"
#include "check/findings.h"
#include "model/project.h"

namespace quorvelant {

// Everything of this page: names, streams and mixed sets, the structure and its commands. `Place` is a
// project key, of commands with the command's own after it. By rules that make a disc of it all the same,
// what does not play is a warning.
[[nodiscard]] Findings CheckProject(const Project& project, const Rules& rules = Rules::Players);

// Of these the names, still times and streams, in the order of the disc and the tracks.
[[nodiscard]] Findings CheckNamesAndStreams(const Project& project, const Rules& rules);

}  // namespace quorvelant
