// What can be done with pictures beyond loading them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "picture/picture_loader.h"

namespace quorvelant {

// A line of text to be drawn.
struct TextStyle {
  std::string Font = "Arial";  // family name, or "sans-serif"; a similar one is taken where it is missing
  int PixelHeight = 24;        // of the font's em
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  bool StrikeOut = false;
  int Stretch = 100;        // width of letters, percent: pixels of a wide page are wide themselves
  bool Smooth = false;      // soft edges; otherwise every pixel is the colour or what was there
  std::uint32_t Color = 0;  // red in the low byte
};

// What a line of text takes, pixels from the top left corner of its box. Slanted letters, and those of some
// scripts, reach out of the box: ends of the ink may be below 0 or beyond the box, and do not belong to it.
struct TextSize {
  int Width = 0;  // of the box: where the next letter would stand
  int Height = 0;
  int InkLeft = 0;
  int InkTop = 0;
  int InkRight = 0;
  int InkBottom = 0;
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
  // What DrawText would cover.
  virtual TextSize MeasureText(std::string_view text, const TextStyle& style) = 0;
  // The letters of UTF-8 text that neither the font nor any other installed one has, each once; bytes that
  // are no letters show as U+FFFD.
  virtual std::string MissingLetters(std::string_view text, const TextStyle& style) = 0;
  // The family that is taken for a name: itself, in any case, where it is installed.
  virtual std::string FontTaken(const std::string& family) = 0;
};

}  // namespace quorvelant
