// What a disc has room for.
#pragma once

#include <cstddef>

namespace quorvelant {

inline constexpr std::size_t AudioStreamCount = 8;  // of a domain
inline constexpr std::size_t SubStreamCount = 32;   // subpicture streams of a domain

inline constexpr std::size_t MostTitleSets = 99;
inline constexpr std::size_t MostTitles = 99;
inline constexpr std::size_t MostPrograms = 99;   // of a program chain
inline constexpr std::size_t MostCells = 255;     // of a program chain
inline constexpr std::size_t MostCommands = 128;  // of a program chain, in all its lists
inline constexpr std::size_t MostPgcs = 999;      // of a title set's titles, and of a language unit
inline constexpr std::size_t MostLanguages = 99;  // of the menus of a title set, or of the Video Manager
inline constexpr std::size_t MostParts = 999;     // of a title

}  // namespace quorvelant
