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

inline constexpr std::uint64_t SingleLayerBytes = 4'700'372'992;  // 4.38 GiB
inline constexpr std::uint64_t DualLayerBytes = 8'543'666'176;    // 7.95 GiB

inline constexpr std::array<DiscMedium, 3> DiscMedia{
    DiscMedium{"DVD-5", SingleLayerBytes}, {"DVD-9", DualLayerBytes}, {"8 cm", 1'459'978'240}};

// The smaller one of DVD-5 and DVD-9 that takes so much; DVD-9 where neither does.
constexpr const DiscMedium& MediumFor(std::uint64_t bytes) {
  return bytes <= SingleLayerBytes ? DiscMedia[0] : DiscMedia[1];
}

}  // namespace quorvelant
