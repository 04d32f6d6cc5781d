// Whether a project has room on a disc.
#pragma once

#include <string_view>
#include <vector>

#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

inline constexpr std::string_view LimitTitle = "Disc Limit";
inline constexpr std::string_view TooManySets = "The disc has {} title sets; there can be {}";
inline constexpr std::string_view TooManyTitles = "The disc has {} titles; there can be {}";
inline constexpr std::string_view TooManyPrograms = R"(PGC "{}" has {} programs; there can be {})";
inline constexpr std::string_view TooManyCells = R"(PGC "{}" has {} cells; there can be {})";
inline constexpr std::string_view TooManyCommands = R"(PGC "{}" has {} commands; there can be {})";
inline constexpr std::string_view CellWithoutScene =
    R"(A cell of PGC "{}" names the scene "{}", which no track has: it is left out)";

// Errors for what is beyond the limits, warnings for cells whose scene does not exist.
std::vector<Message> CheckLimits(const Project& disc);

}  // namespace quorvelant
