// The size of a picture file (Windows bitmap, PNG or JPEG), from its head.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quorvelant {

inline constexpr std::int64_t MostDiscPixels = std::int64_t{1} << 22;

struct BitmapSize {
  int Width = 0;
  int Height = 0;  // of the picture, whichever row is first in the file
};

// Nothing when the file cannot be read or is no such picture.
std::optional<BitmapSize> ReadBitmapSize(const std::string& file);

// The size of a picture file whose head shows several times the pixels of anything that a disc is made of, so
// that nobody need decode it; nothing of others.
std::optional<BitmapSize> ReadOversize(const std::string& file);

// Sizes that become a still: full or quarter of either standard.
bool IsBitmapSize(int width, int height);

}  // namespace quorvelant
