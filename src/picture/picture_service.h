// Pictures as values, and what the platform does for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/bytes.h"

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

// A picture that cannot be read, drawn or written. what() begins with the file's path.
class PictureError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Refuses sides below 1 and pictures beyond the limits; `name` is the file's path.
void CheckPictureSize(std::int64_t width, std::int64_t height, const PictureLimits& limits,
                      std::string_view name);

// Reads pictures. The multiplexer and the checks need no more than this.
class PictureLoader {
 public:
  PictureLoader() = default;
  PictureLoader(const PictureLoader&) = delete;
  PictureLoader& operator=(const PictureLoader&) = delete;
  virtual ~PictureLoader() = default;

  // The file as 24-bit pixels; `path` is a path of this system. Raises PictureError.
  virtual Picture Load(const std::string& path) = 0;
};

// A line of text to be drawn.
struct TextStyle {
  std::string Font = "Arial";  // family name; a similar one is taken where it is missing
  int PixelHeight = 24;        // of the font's em
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  bool Smooth = false;      // soft edges; otherwise every pixel is the colour or what was there
  std::uint32_t Color = 0;  // red in the low byte
};

// The platform's services for pictures. Every call may raise PictureError.
class PictureService : public PictureLoader {
 public:
  // `picture` at another size; `smooth` averages, otherwise the nearest pixel is taken.
  virtual Picture Scale(const Picture& picture, int width, int height, bool smooth) = 0;
  // Writes ".bmp" (24 bits) or ".png", as the path's extension says. The file is complete or absent.
  virtual void Save(const Picture& picture, const std::string& path) = 0;
  // Draws UTF-8 text with the top left corner of its box at (x, y).
  virtual void DrawText(Picture& picture, int x, int y, std::string_view text, const TextStyle& style) = 0;
};

}  // namespace quorvelant
