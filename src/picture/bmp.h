// Windows bitmaps: a reader of every depth and packing, and a writer of 24 bits.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "base/bytes.h"
#include "picture/picture.h"

namespace quorvelant {

// Reads 1, 4, 8, 16, 24 and 32 bits a pixel, RLE4, RLE8 and bit fields, bottom-up and top-down, after
// headers of 12 to 124 bytes. An alpha channel is passed over; an index beyond the palette is black.
// Raises PictureError, its text beginning with `name`, for anything else and for a file that is shorter
// than its header says.
Picture ReadBmp(ByteView file, std::string_view name, const PictureLimits& limits = {});

// Whether the bytes begin as a bitmap does.
bool IsBmp(ByteView file);

// An uncompressed bitmap of 24 bits a pixel under work, black at first. The sides are above 0.
class BmpImage {
 public:
  BmpImage(int width, int height);
  // Row 0 is the top row; a pixel is three bytes in the order blue, green, red.
  std::uint8_t* Row(int row);
  // The bytes of the file.
  Bytes Take() { return std::move(file_); }

 private:
  std::size_t rowBytes_;
  int height_;
  Bytes file_;
};

Bytes WriteBmp(const Picture& picture);

// The whole file; at most `mostBytes` are taken into memory. Raises PictureError.
Bytes ReadPictureFile(const std::string& path, std::uint64_t mostBytes = std::uint64_t{256} << 20);

}  // namespace quorvelant
