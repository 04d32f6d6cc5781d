// Looks once more at a finished folder, as a player would: nothing of what the run holds in memory is used.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/random.h"
#include "base/user_interface.h"

namespace quorvelant {

inline constexpr std::string_view ReadBackTitle = "Read Back";
inline constexpr std::string_view ReadBackMissing = "The file is missing";
inline constexpr std::string_view ReadBackPartSector = "The size is not a multiple of 2048 bytes";
inline constexpr std::string_view ReadBackDiffers = "The backup differs from the IFO";
inline constexpr std::string_view ReadBackNoIfo = "The file does not begin as an IFO does";
inline constexpr std::string_view ReadBackPointer = "The pointer at 0x{:X} leads out of the file";
inline constexpr std::string_view ReadBackTable = "The table at sector {} ends out of the file";
inline constexpr std::string_view ReadBackSectors = "The set has {} sectors, and its IFO says {}";
inline constexpr std::string_view ReadBackStart = "Title {} begins at sector {}, and its set at {}";
inline constexpr std::string_view ReadBackNav =
    "There is no navigation pack at sector {}, where the VOBU map has one";
inline constexpr std::string_view ReadBackLbn = "The navigation pack at sector {} says it is at {}";

// Sizes, BUP against IFO, pointers and tables within their bounds, start sectors, and the navigation pack
// of every address in the VOBU maps. Faults as errors whose place is the file.
std::vector<Message> ReadBack(const std::string& folder, UserInterface& ui);

}  // namespace quorvelant
