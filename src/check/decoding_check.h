// What PGCs say about the streams that a viewer chooses.
#pragma once

#include "check/findings.h"
#include "model/project.h"

namespace quorvelant {

// Streams that a chain plays as one that a track of its cells does not have. A track that lacks the stream
// itself is passed over: players are silent there in any case.
[[nodiscard]] Findings CheckDecoding(const Project& project);

}  // namespace quorvelant
