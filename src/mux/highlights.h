// HLI: the buttons of a menu, in every navigation pack of the span in which they can be pressed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/bytes.h"
#include "disc/clock.h"
#include "disc/video_standard.h"
#include "model/highlight_groups.h"
#include "model/tracks.h"
#include "mux/mux_track.h"
#include "mux/nav_pack.h"

namespace quorvelant {

// A set of buttons of a track with its times on the VOB's clock; the commands are left empty.
MuxHighlight TimeHighlight(const HighlightPlay& play, const FrameTiming& timing);

// The set that the VOBU of record `index` shows, and whether it is the one the player has already.
struct ShownHighlight {
  const MuxHighlight* Set = nullptr;
  bool Repeated = false;       // the player has it from the VOBU before
  std::uint32_t EndTicks = 0;  // EndlessHighlight where it never expires
};
inline constexpr std::uint32_t EndlessHighlight = 0xFFFFFFFF;
std::optional<ShownHighlight> FindHighlight(const NavSource& source, std::size_t index);

// The sets that no VOBU shows, in order of their times.
std::vector<std::size_t> UnshownHighlights(const NavSource& source);

// Fills the highlight fields of a navigation pack.
void PutHighlight(const ShownHighlight& shown, const std::vector<ButtonGroup>& groups, ByteSpan sector);

}  // namespace quorvelant
