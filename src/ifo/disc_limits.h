// What a disc has room for.
#pragma once

#include <cstddef>
#include <vector>

#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

inline constexpr std::size_t MostTitleSets = 99;
inline constexpr std::size_t MostTitles = 99;
inline constexpr std::size_t MostPrograms = 99;   // of a program chain
inline constexpr std::size_t MostCells = 255;     // of a program chain
inline constexpr std::size_t MostCommands = 255;  // of a program chain

// Errors for what is beyond the limits, warnings for cells whose scene does not exist.
std::vector<Message> CheckLimits(const Project& disc);

}  // namespace quorvelant
