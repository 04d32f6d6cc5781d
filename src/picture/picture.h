// Pictures as values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/bytes.h"
#include "base/message_error.h"

namespace quorvelant {

// A picture of 24 bits a pixel. Row 0 is the top row; a pixel is three bytes in the order red, green,
// blue, and rows follow each other without padding.
struct Picture {
  int Width = 0;
  int Height = 0;
  Bytes Pixels;  // 3 * Width * Height

  Picture() = default;
  // Black.
  Picture(int width, int height)
      : Width(width),
        Height(height),
        Pixels(std::size_t{3} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

  std::size_t RowBytes() const { return std::size_t{3} * static_cast<std::size_t>(Width); }
  std::uint8_t* Row(int row) { return Pixels.data() + static_cast<std::size_t>(row) * RowBytes(); }
  const std::uint8_t* Row(int row) const {
    return Pixels.data() + static_cast<std::size_t>(row) * RowBytes();
  }
  // Red in the low byte, then green, then blue: the form in which a project holds colours.
  std::uint32_t At(int column, int row) const {
    const std::uint8_t* pixel = Row(row) + std::size_t{3} * static_cast<std::size_t>(column);
    return pixel[0] | std::uint32_t{pixel[1]} << 8 | std::uint32_t{pixel[2]} << 16;
  }
  void Set(int column, int row, std::uint32_t color) {
    std::uint8_t* pixel = Row(row) + std::size_t{3} * static_cast<std::size_t>(column);
    pixel[0] = static_cast<std::uint8_t>(color);
    pixel[1] = static_cast<std::uint8_t>(color >> 8);
    pixel[2] = static_cast<std::uint8_t>(color >> 16);
  }
  bool operator==(const Picture&) const = default;
};

// What a picture may measure. It is tested on the header, before memory is taken for the pixels.
struct PictureLimits {
  int MostSide = 16384;
  std::int64_t MostPixels = std::int64_t{32} << 20;  // 96 MiB of pixels
};

// A picture that cannot be read, drawn or written. The text begins with the file's path.
class PictureError : public MessageError {
 public:
  using MessageError::MessageError;
};

// Raises the error of that kind for `name`, the file's path, which is the first value of the kind's text.
template <class... Values>
[[noreturn]] void RefusePicture(const MessageKind& kind, std::string_view name, const Values&... values) {
  throw PictureError(MessageOf(kind, {}, name, values...));
}

// Refuses sides below 1 and pictures beyond the limits.
void CheckPictureSize(std::int64_t width, std::int64_t height, const PictureLimits& limits,
                      std::string_view name);

}  // namespace quorvelant
