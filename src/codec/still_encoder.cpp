#include "codec/still_encoder.h"

#include <algorithm>
#include <cstdint>

#include "codec/colors.h"
#include "codec/intra_encoder.h"
#include "codec/tables.h"

namespace quorvelant {
namespace {

constexpr int FullWidth = 720;
constexpr int PalHeight = 576;
constexpr int NtscHeight = 480;

constexpr std::size_t TrailingZeros = 1;
constexpr std::size_t EndCodeBytes = 4;

bool IsHalfSize(int width, int height) {
  return width == FullWidth / 2 && (height == PalHeight / 2 || height == NtscHeight / 2);
}

// Each pixel becomes a square of four. Colour of half resolution then loses nothing.
Picture Doubled(const Picture& half) {
  Picture full(half.Width * 2, half.Height * 2);
  for (int y = 0; y < half.Height; ++y) {
    const std::uint8_t* source = half.Row(y);
    std::uint8_t* target = full.Row(2 * y);
    for (int x = 0; x < half.Width; ++x, source += 3, target += 6) {
      std::copy_n(source, 3, target);
      std::copy_n(source, 3, target + 3);
    }
    std::copy_n(full.Row(2 * y), full.RowBytes(), full.Row(2 * y + 1));
  }
  return full;
}

// aspect_ratio_information 2 (4:3) or 3 (16:9) and frame_rate_code 3 (25 fps) or 4 (29.97 fps).
unsigned AspectAndRate(int height, bool wide) {
  return (wide ? 0x30U : 0x20U) | (height == NtscHeight ? 4U : 3U);
}

void PutHeader(ByteWriter& stream, int height, bool wide) {
  stream.U32(0x000001B3);                                    // sequence header
  stream.Put(3, 0x2D0000U | static_cast<unsigned>(height));  // 12 bits each: width 720, height
  stream.U8(AspectAndRate(height, wide));
  stream.U32(0x13882381);  // 8 Mbit/s, marker, VBV size 112, no intra matrix, a non-intra matrix
  for (std::size_t i = 0; i < 64; ++i) {
    stream.U8(DefaultNonIntraWeight);
  }
  stream.U32(0x000001B5);         // sequence extension:
  stream.Put(6, 0x148A00010000);  // main profile at main level, progressive, 4:2:0
  stream.U32(0x000001B8);         // group of pictures:
  stream.U32(0x00080040);         // time code 0, closed
  stream.U32(0x00000100);         // picture:
  stream.U32(0x000FFFF8);         // temporal reference 0, intra, vbv_delay FFFF
  stream.U32(0x000001B5);         // picture coding extension
  stream.Raw(StillCodingExtension);
}

}  // namespace

bool IsStillSize(int width, int height) {
  return IsHalfSize(width, height) || (width == FullWidth && (height == PalHeight || height == NtscHeight));
}

Bytes EncodeBitmap(const Picture& bitmap, StillFlags flags, const Rules& rules) {
  if (!IsStillSize(bitmap.Width, bitmap.Height)) {
    return {};
  }
  if (IsHalfSize(bitmap.Width, bitmap.Height)) {
    return EncodeBitmap(Doubled(bitmap), flags, rules);
  }
  ByteWriter stream;
  PutHeader(stream, bitmap.Height, flags.Wide);
  stream.Raw(EncodeIntraSlices(PlanesFromPicture(bitmap, rules),
                               LargestStillBytes - StillHeaderBytes - TrailingZeros - EndCodeBytes));
  stream.Zeros(TrailingZeros);
  return stream.Take();
}

}  // namespace quorvelant
