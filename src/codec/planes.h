// A picture as planes: luminance and two of colour difference.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/bytes.h"

namespace quorvelant {

// One byte a sample, rows from the top down without gaps.
struct Plane {
  unsigned Width = 0;
  unsigned Height = 0;
  Bytes Samples;

  Plane() = default;
  Plane(unsigned width, unsigned height, std::uint8_t fill)
      : Width(width), Height(height), Samples(std::size_t{width} * height, fill) {}

  std::uint8_t* Row(unsigned y) { return Samples.data() + std::size_t{y} * Width; }
  const std::uint8_t* Row(unsigned y) const { return Samples.data() + std::size_t{y} * Width; }
};

inline constexpr std::uint8_t BlackLuma = 16;
inline constexpr std::uint8_t NeutralChroma = 128;

// Y, Cb, Cr. The two of colour have half the width, the height or both, by the chroma format; an odd
// size is rounded up.
struct Planes {
  std::array<Plane, 3> Of;

  Plane& Y() { return Of[0]; }
  const Plane& Y() const { return Of[0]; }
};

}  // namespace quorvelant
