#include "analysis/bitmap_size.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace quorvelant {

std::optional<BitmapSize> ReadBitmapSize(const std::string& file) {
  constexpr std::size_t HeadBytes =
      26;  // file header of 14 bytes, then the size, width and height of the picture's
  std::error_code missing;
  std::array<char, HeadBytes> head{};
  std::ifstream stream;
  if (std::filesystem::is_regular_file(file, missing)) {
    stream.open(file, std::ios::binary);
  }
  if (!stream.read(head.data(), head.size()) || head[0] != 'B' || head[1] != 'M') {
    return std::nullopt;
  }
  const auto little = [&](std::size_t offset, unsigned width) {
    std::uint32_t value = 0;
    for (unsigned i = width; i-- > 0;) {
      value = (value << 8) | static_cast<std::uint8_t>(head[offset + i]);
    }
    return value;
  };
  constexpr std::uint32_t CoreHeaderBytes = 12;  // the oldest header has 16-bit sizes
  if (little(14, 4) == CoreHeaderBytes) {
    return BitmapSize{static_cast<int>(little(18, 2)), static_cast<int>(little(20, 2))};
  }
  const std::int64_t height = static_cast<std::int32_t>(little(22, 4));  // negative: top row first
  constexpr std::int64_t MostSide = 1 << 16;
  const std::uint32_t width = little(18, 4);
  if (width > MostSide || std::abs(height) > MostSide) {
    return std::nullopt;
  }
  return BitmapSize{static_cast<int>(width), static_cast<int>(std::abs(height))};
}

bool IsBitmapSize(int width, int height) {
  return (width == 720 && (height == 576 || height == 480)) ||
         (width == 360 && (height == 288 || height == 240));
}

}  // namespace quorvelant
