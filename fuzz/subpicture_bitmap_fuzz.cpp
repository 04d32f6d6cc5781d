// The road of a subtitle's bitmap: the first four bytes place it, the rest is the file.
#include <cstdint>

#include "picture/bmp.h"
#include "subpicture/spu_encoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;
  if (byteCount < 4) {
    return 0;
  }
  const int x1 = static_cast<std::int16_t>(data[0] << 8 | data[1]);
  const int y1 = static_cast<std::int16_t>(data[2] << 8 | data[3]);
  try {
    const Picture picture =
        ReadBmp({data + 4, byteCount - 4}, "fuzz.bmp", {.MostSide = 2048, .MostPixels = 1 << 18});
    const ConversionColors conversion{.Pattern = picture.At(0, 0), .Emphasis1 = 0xFFFFFF, .Emphasis2 = 0xFF};
    for (const Rules& rules : {Rules::Classic, Rules::Players}) {
      if (const auto bitmap = EncodeSPUBitmap(picture, conversion, x1, y1, false, rules)) {
        BuildSPU({}, *bitmap);
      }
    }
  } catch (const PictureError&) {
  }
  return 0;
}
