// The 25 user operations that a scene, cell, PGC or the First Play PGC may prohibit.
#pragma once

#include <bitset>
#include <cstddef>

namespace quorvelant {

inline constexpr std::size_t UserOperationCount = 25;

// Entry i is bit i of the disc's masks (PGC_UOP_CTL, VOBU_UOP_CTL); 1 prohibits.
using UopMask = std::bitset<UserOperationCount>;

}  // namespace quorvelant
