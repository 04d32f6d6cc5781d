// What shows over the pictures of a disc: its display on 4:3 screens, palettes, and what buttons do.
#pragma once

#include "base/rules.h"
#include "check/findings.h"
#include "model/project.h"

namespace quorvelant {

// 16:9 tracks that say no display mode. `Place` is the track's key.
[[nodiscard]] Findings CheckDisplays(const Project& project, const Rules& rules);

// Chains that show subtitles or buttons and have no palette of the project. `Place` is the chain's key.
[[nodiscard]] Findings CheckPalettes(const Project& project, const Rules& rules);

// Commands of cells against the buttons that they are dealt to. `Place` is the cell's key.
[[nodiscard]] Findings CheckButtonCommands(const Project& project);

}  // namespace quorvelant
