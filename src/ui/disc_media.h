// The media that a disc goes onto.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvelant {

// What every brand of a kind holds: of the two families, the smaller one's sectors.
struct DiscMedium {
  std::string_view Name;
  std::uint64_t Bytes;
};

inline constexpr std::array<DiscMedium, 3> DiscMedia{
    DiscMedium{"DVD-5", 4'700'372'992}, {"DVD-9", 8'543'666'176}, {"8 cm", 1'459'978'240}};

}  // namespace quorvelant
