// Subpicture units as a player reads them. docs/formats/subpictures.md.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/bytes.h"
#include "model/tracks.h"
#include "subpicture/bitmap_window.h"
#include "subpicture/run_length.h"

namespace quorvelant {

// What a unit shows from its start on.
struct ShownUnit {
  DisplayArea Area;
  std::vector<PixelCode> Pixels;  // of the area, row by row
  ColorQuad ColorIndexes{};       // E2, E1, P, Bg: palette indexes
  ColorQuad Contrasts{};          // E2, E1, P, Bg: 0 to 15
  bool Forced = false;
  std::uint32_t StopDelay = 0;  // steps of 1024/90000 s; 0 where it has no end of its own

  [[nodiscard]] int Width() const { return Area.X2 - Area.X1 + 1; }
  [[nodiscard]] int Height() const { return Area.Y2 - Area.Y1 + 1; }
  // Background outside of the area. Columns and lines of the disc's picture.
  [[nodiscard]] PixelCode At(int column, int line) const;
};
// The place of a code's values in a quad.
constexpr std::size_t QuadPlace(PixelCode code) {
  return 3 - static_cast<std::size_t>(code);
}

// Nothing where the bytes are no whole unit. Pixels that a damaged one lacks are background.
[[nodiscard]] std::optional<ShownUnit> ReadUnit(ByteView bytes);

}  // namespace quorvelant
