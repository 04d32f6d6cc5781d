#include "subpicture/bitmap_window.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quorvelant {

namespace {

// Columns: `X2` is worked out from the width, and the part beyond column 719 is cut.
void ClipColumns(int width, int x1, BitmapReading reading, ClippedBitmap& clip) {
  clip.Window.FirstCol = std::max(-x1, 0);
  clip.Area.X1 = std::max(x1, 0);
  clip.Area.X2 = x1 + width - 1;
  clip.Window.LastCol = width - 1;
  if (clip.Area.X2 < ScreenWidth) {
    return;
  }
  clip.Area.X2 = ScreenWidth - 1;
  const bool mirrored = x1 < 0 && reading == BitmapReading::Traditional;
  clip.Window.LastCol = ScreenWidth - 1 - (mirrored ? -x1 : x1);
}

// Rows of a bitmap that hangs over the top edge by `over` lines.
void ClipRowsAbove(int height, int over, int screenHeight, BitmapReading reading, ClippedBitmap& clip) {
  clip.Area.Y1 = 0;
  clip.Window.FirstRow = 0;
  clip.Window.LastRow = height - 1 - over;
  if (clip.Window.LastRow <= screenHeight) {
    clip.Area.Y2 = clip.Window.LastRow - 1;
    return;
  }
  clip.Area.Y2 = screenHeight - 1;
  if (reading == BitmapReading::AsPainted) {
    clip.Window.FirstRow = clip.Window.LastRow - (screenHeight - 1);
  } else {
    clip.Window.LastRow = screenHeight - over;
    clip.Window.FirstRow = height - 1 - clip.Window.LastRow;
  }
}

void ClipRows(int height, int y1, int screenHeight, ClippedBitmap& clip) {
  clip.Area.Y1 = y1;
  clip.Window.FirstRow = 0;
  clip.Window.LastRow = height - 1;
  if (y1 + height - 1 <= screenHeight) {
    clip.Area.Y2 = y1 + height - 2;
    return;
  }
  clip.Area.Y2 = screenHeight - 1;
  clip.Window.FirstRow = y1 - screenHeight + height - 1;
}

// The tallest display area, less one line: players lose the last lines of the picture.
constexpr int MostAreaHeight(bool ntsc) {
  return ntsc ? 477 : 572;
}

int Within16Bits(int value) {
  return std::clamp<int>(value, std::numeric_limits<std::int16_t>::min(),
                         std::numeric_limits<std::int16_t>::max());
}

}  // namespace

std::optional<ClippedBitmap> ClipBitmap(int width, int height, int x1, int y1, bool ntsc,
                                        BitmapReading reading) {
  ClippedBitmap clip;
  ClipColumns(width, Within16Bits(x1), reading, clip);
  const int top = Within16Bits(y1);
  if (top < 0) {
    ClipRowsAbove(height, -top, ScreenHeight(ntsc), reading, clip);
  } else {
    ClipRows(height, top, ScreenHeight(ntsc), clip);
  }
  clip.Area.Y2 = std::min(clip.Area.Y2, clip.Area.Y1 + MostAreaHeight(ntsc));
  const bool shows = clip.Window.Width() > 0 && clip.Window.Rows() > 0 && clip.Area.X2 >= clip.Area.X1 &&
                     clip.Area.Y2 >= clip.Area.Y1;
  return shows ? std::optional(clip) : std::nullopt;
}

Picture NarrowByOneColumn(const Picture& picture) {
  Picture narrow(picture.Width - 1, picture.Height);
  for (int row = 0; row < picture.Height; ++row) {
    // The nearest column at or left of c * width / (width - 1) is c itself: the last column goes.
    std::copy_n(picture.Row(row), narrow.RowBytes(), narrow.Row(row));
  }
  return narrow;
}

Picture ShearRows(const Picture& picture) {
  const std::size_t rowBytes = picture.RowBytes();
  const std::size_t padded = (rowBytes + 3) / 4 * 4;
  // The block as a bitmap holds it: bottom row first, blue in front.
  Bytes block(padded * static_cast<std::size_t>(picture.Height));
  for (int row = 0; row < picture.Height; ++row) {
    const std::uint8_t* source = picture.Row(picture.Height - 1 - row);
    std::uint8_t* target = block.data() + padded * static_cast<std::size_t>(row);
    for (int x = 0; x < picture.Width; ++x, source += 3, target += 3) {
      std::reverse_copy(source, source + 3, target);
    }
  }
  Picture sheared(picture.Width, picture.Height);
  for (int row = 0; row < picture.Height; ++row) {
    const std::uint8_t* source = block.data() + rowBytes * static_cast<std::size_t>(row);
    std::uint8_t* target = sheared.Row(picture.Height - 1 - row);
    for (int x = 0; x < picture.Width; ++x, source += 3, target += 3) {
      std::reverse_copy(source, source + 3, target);
    }
  }
  return sheared;
}

}  // namespace quorvelant
