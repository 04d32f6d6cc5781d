// Names that a volume may have.
#pragma once

#include <string>
#include <string_view>

namespace quorvelant {

inline constexpr std::size_t MostLabelLetters = 32;

// Whether both file systems take the name as it is: 1 to 32 of A to Z, digits and "_".
[[nodiscard]] bool IsVolumeName(std::string_view text);

// A name made of any text, in UTF-8 where it is not ASCII: capitals, and one "_" for each run of what is not
// allowed, none of them at the ends. "DVD_VIDEO" where nothing is left.
[[nodiscard]] std::string VolumeNameFrom(std::string_view text);

}  // namespace quorvelant
