// What can be done with pictures beyond loading them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "picture/picture_loader.h"

namespace quorvelant {

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

// The box that a line of text takes, pixels.
struct TextSize {
  int Width = 0;
  int Height = 0;
  bool operator==(const TextSize&) const = default;
};

// Loads, scales, saves and draws. Every call may raise PictureError, and may come from any thread.
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
