#include "picture/bitmap_size.h"

#include <cstdint>
#include <cstdlib>

#include "base/bytes.h"
#include "base/file_text.h"

namespace quorvelant {

namespace {

// A JPEG file may open with its own notes: nobody looks further than this.
constexpr std::size_t MostHeadBytes = std::size_t{1} << 18;

Bytes HeadOf(const std::string& file) {
  constexpr std::uint64_t MostKindsBytes = 26;  // all that but JPEG needs
  std::string head = ReadHead(file, MostKindsBytes).value_or("");
  if (head.starts_with("\xFF\xD8")) {
    head = ReadHead(file, MostHeadBytes).value_or("");
  }
  return {head.begin(), head.end()};
}

BitmapSize SizeOf(std::uint64_t width, std::uint64_t height) {
  return {static_cast<int>(width), static_cast<int>(height)};
}

std::optional<BitmapSize> WindowsSize(ByteView head) {
  const auto little = [&](std::size_t offset, unsigned width) {
    std::uint32_t value = 0;
    for (unsigned i = width; i-- > 0;) {
      value = (value << 8) | head[offset + i];
    }
    return value;
  };
  constexpr std::uint32_t CoreHeaderBytes = 12;  // the oldest header has 16-bit sizes
  if (little(14, 4) == CoreHeaderBytes) {
    return SizeOf(little(18, 2), little(20, 2));
  }
  const std::int64_t height = static_cast<std::int32_t>(little(22, 4));  // negative: top row first
  constexpr std::int64_t MostSide = 1 << 16;
  const std::uint32_t width = little(18, 4);
  if (width > MostSide || std::abs(height) > MostSide) {
    return std::nullopt;
  }
  return SizeOf(width, static_cast<std::uint64_t>(std::abs(height)));
}

// The frame header stands after any number of segments of two bytes of marker and two of length.
std::optional<BitmapSize> JpegSize(ByteView head) {
  for (std::size_t at = 2; at + 9 <= head.size() && head[at] == 0xFF;
       at += 2 + static_cast<std::size_t>(GetBytes(head, at + 2, 2))) {
    const unsigned marker = head[at + 1];
    const bool table = marker == 0xC4 || marker == 0xC8 || marker == 0xCC;  // in the row of frame headers
    if (marker >= 0xC0 && marker <= 0xCF && !table) {
      return SizeOf(GetBytes(head, at + 7, 2), GetBytes(head, at + 5, 2));
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<BitmapSize> ReadBitmapSize(const std::string& file) {
  const Bytes head = HeadOf(file);
  if (head.size() < 26) {
    return std::nullopt;
  }
  if (head[0] == 'B' && head[1] == 'M') {
    return WindowsSize(head);
  }
  constexpr std::uint64_t PngSignature = 0x89504E470D0A1A0A;
  constexpr std::uint64_t MostSide = 1 << 16;
  if (GetBytes(head, 0, 8) == PngSignature) {
    const std::uint64_t width = GetBytes(head, 16, 4);
    const std::uint64_t height = GetBytes(head, 20, 4);
    return width <= MostSide && height <= MostSide ? std::optional(SizeOf(width, height)) : std::nullopt;
  }
  return GetBytes(head, 0, 2) == 0xFFD8 ? JpegSize(head) : std::nullopt;
}

std::optional<BitmapSize> ReadOversize(const std::string& file) {
  const auto size = ReadBitmapSize(file);
  return size && std::int64_t{size->Width} * size->Height > MostDiscPixels ? size : std::nullopt;
}

bool IsBitmapSize(int width, int height) {
  return (width == 720 && (height == 576 || height == 480)) ||
         (width == 360 && (height == 288 || height == 240));
}

}  // namespace quorvelant
