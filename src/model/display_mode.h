#pragma once

// How the picture of a track shows on a 4:3 screen, by its display mode.

#include <array>
#include <string_view>

#include "base/rules.h"
#include "model/tracks.h"

namespace quorvelant {

namespace display_mode {
inline constexpr std::string_view NotSpecified = "Not Specified";
inline constexpr std::string_view OnlyPanScan = "Only PanScan";
inline constexpr std::string_view OnlyLetterBox = "Only LetterBox";
inline constexpr std::string_view Both = "Both PanScan and LetterBox";
inline constexpr std::array<std::string_view, 4> All{NotSpecified, OnlyPanScan, OnlyLetterBox, Both};
}  // namespace display_mode

// Sets `Pan` and `Letter` by the words of the mode. A 16:9 track without a mode is letterboxed where the
// rules say so, unless it has buttons, which would need areas of their own.
void FollowDisplayMode(Track& track, const Rules& rules);

}  // namespace quorvelant
