// Subpicture units: from a bitmap to the bytes that a player decodes. docs/formats/subpictures.md.
#pragma once

#include <optional>

#include "base/bytes.h"
#include "base/message_error.h"
#include "base/rules.h"
#include "picture/picture_loader.h"
#include "subpicture/bitmap_window.h"
#include "subpicture/run_length.h"
#include "subpicture/spu_record.h"

namespace quorvelant {

// The largest unit that a player's subpicture buffer of 52 KiB takes, with room for its pack headers.
inline constexpr std::size_t MostUnitBytes = 53220;

// The bitmap's pixels as the two fields of a unit, and where they show.
struct EncodedBitmap {
  Bytes FieldA;  // the lines that are shown first
  Bytes FieldB;
  DisplayArea Area;
  // Shown pixels of none of the four colours, as smoothed edges have them. Where no pixel is of the
  // background's, the corner's colour is the background, or the one that all of them have.
  std::size_t OddPixels = 0;
};

// Compared exactly, in this order: pattern, emphasis 2, emphasis 1; anything else is background. By the rules
// of players such a pixel is then what the nearest of the four colours is.
PixelCode PixelToCode(Color color, const ConversionColors& conversion);

// Clips the bitmap, placed at (x1, y1), to the picture and codes its rows. Nothing when no line shows.
std::optional<EncodedBitmap> EncodeSPUBitmap(const Picture& picture, const ConversionColors& conversion,
                                             int x1, int y1, bool ntsc, const Rules& rules);

// The unit: size, both fields, the sequence that starts the display and, where the record has a stop
// delay, the one that ends it. A field beyond 16 bits wraps: see MostUnitBytes.
Bytes BuildSPU(const SPURecord& record, const EncodedBitmap& bitmap);

// A bitmap that makes no unit. The text begins with the bitmap's path.
class SubpictureError : public MessageError {
 public:
  using MessageError::MessageError;
};

// Loads the record's bitmap and codes it. Raises PictureError, and SubpictureError where no line shows.
EncodedBitmap LoadSPUBitmap(PictureLoader& pictures, const SPURecord& record, bool ntsc, const Rules& rules);

// BuildSPU, which raises SubpictureError for a unit that no player's buffer takes.
Bytes MakeUnit(const SPURecord& record, const EncodedBitmap& bitmap);

}  // namespace quorvelant
