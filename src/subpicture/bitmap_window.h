// Which part of a subtitle's bitmap shows, and where on the picture.
#pragma once

#include <optional>

#include "picture/picture.h"

namespace quorvelant {

inline constexpr int ScreenWidth = 720;
constexpr int ScreenHeight(bool ntsc) {
  return ntsc ? 480 : 576;
}

// The display area on the 720-wide picture, edges included.
struct DisplayArea {
  int X1 = 0;
  int X2 = 0;
  int Y1 = 0;
  int Y2 = 0;
  bool operator==(const DisplayArea&) const = default;
};

// The visible columns and rows of a bitmap, edges included. Rows count from the bottom: row 0 is the
// last line of the bitmap.
struct BitmapWindow {
  int FirstCol = 0;
  int LastCol = 0;
  int FirstRow = 0;
  int LastRow = 0;

  int Width() const { return LastCol - FirstCol + 1; }
  int Rows() const { return LastRow - FirstRow + 1; }
  bool operator==(const BitmapWindow&) const = default;
};

struct ClippedBitmap {
  BitmapWindow Window;
  DisplayArea Area;  // one line shorter than the window
};

// How bitmaps are read: as painted, or by the traditional arithmetic, which differs for bitmaps that hang
// off the picture and for widths that four does not divide.
enum class BitmapReading { AsPainted, Traditional };

// Clips a bitmap of `width` x `height` pixels, placed with its top left corner at (x1, y1), to the
// picture; x1 and y1 may be negative. Nothing when no line of it would show.
std::optional<ClippedBitmap> ClipBitmap(int width, int height, int x1, int y1, bool ntsc,
                                        BitmapReading reading);

// The picture one column narrower, at the same height, by the nearest column, so that its colours stay
// exact.
Picture NarrowByOneColumn(const Picture& picture);

// The picture as it reads when its rows, which a bitmap pads to four bytes from the bottom row on, are
// taken for unpadded ones: rows shear where four does not divide the width.
Picture ShearRows(const Picture& picture);

}  // namespace quorvelant
