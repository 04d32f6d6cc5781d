// The colours of a PGC: what subtitles and buttons of its cells show by.
#pragma once

#include <array>

#include "model/project.h"

namespace quorvelant {

// Whether a cell of the chain plays a track with subtitles or buttons.
[[nodiscard]] bool ShowsOverlay(const PGC_P& chain, const Tracks& tracks);

// The live palette of the project that the chain names; nullptr where there is none.
[[nodiscard]] const Palette_P* PaletteOf(const PGC_P& chain, const Project& project);

// For chains without one: black, white, then greys and primaries, as most subtitle scripts use them.
inline constexpr std::array<Color, 16> LegiblePalette{
    0x000000, 0xFFFFFF, 0x808080, 0xC0C0C0, 0x404040, 0x0000FF, 0x00FF00, 0xFF0000,
    0x00FFFF, 0xFFFF00, 0xFF00FF, 0x0000A0, 0x00A000, 0xA00000, 0x202020, 0xE0E0E0};

}  // namespace quorvelant
