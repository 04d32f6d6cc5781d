#include "subpicture/spu_encoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "picture/bitmap_size.h"
#include "picture/messages.h"
#include "subpicture/messages.h"

namespace quorvelant {

namespace {

// Commands of a display control sequence (DVD-Video, SP_DCSQ).
constexpr std::uint8_t ForcedStart = 0x00;
constexpr std::uint8_t Start = 0x01;
constexpr std::uint8_t Stop = 0x02;
constexpr std::uint8_t SetColor = 0x03;
constexpr std::uint8_t SetContrast = 0x04;
constexpr std::uint8_t SetDisplayArea = 0x05;
constexpr std::uint8_t SetFieldAddresses = 0x06;
constexpr std::uint8_t CommandEnd = 0xFF;

constexpr std::size_t FieldsAt = 4;             // after the unit's size and the sequences' address
constexpr std::size_t FirstSequenceBytes = 24;  // of the sequence that starts the display
constexpr std::uint32_t NoStop = 65535;

// The pixel's colour, red in the low byte.
Color ColorAt(const std::uint8_t* pixel) {
  return pixel[0] | Color{pixel[1]} << 8U | Color{pixel[2]} << 16U;
}

// How many pixels from `at` on, up to `end`, have the colour of the three bytes at `at`.
int EqualPixels(const std::uint8_t* at, const std::uint8_t* end) {
  // Equal to the pixel before, byte by byte, is equal to the first: whole words are compared so.
  const std::uint8_t* next = at + 3;
  while (next + sizeof(std::uint64_t) <= end) {
    std::uint64_t here = 0;
    std::uint64_t before = 0;
    std::memcpy(&here, next, sizeof here);
    std::memcpy(&before, next - 3, sizeof before);
    if (const std::uint64_t differs = here ^ before; differs != 0) {
      const int equal =
          std::endian::native == std::endian::little ? std::countr_zero(differs) : std::countl_zero(differs);
      return static_cast<int>((next - at + equal / 8) / 3);
    }
    next += sizeof here;
  }
  while (next < end && *next == *(next - 3)) {
    ++next;
  }
  return static_cast<int>((next - at) / 3);
}

// Shown pixels of none of the four colours.
struct OddColors {
  Color Corner = 0;  // of the first pixel that shows
  std::size_t CornerPixels = 0;
  std::size_t Pixels = 0;  // those of the corner's colour among them
  std::optional<Color> First;
  bool Several = false;
  bool BackgroundShows = false;

  void Add(Color color, int pixels, Color background) {
    if (color == background) {
      BackgroundShows = true;
      return;
    }
    First = First.value_or(color);
    Several = Several || *First != color;
    Pixels += static_cast<std::size_t>(pixels);
    CornerPixels += color == Corner ? static_cast<std::size_t>(pixels) : 0;
  }
  // Without one pixel of the background's colour, what the corner has is the background, or all of them are
  // where they are of one colour.
  bool CornerIsBackground() const { return !BackgroundShows && CornerPixels > 0; }
  std::size_t Count() const { return BackgroundShows ? Pixels : Several ? Pixels - CornerPixels : 0; }
};

int SquaredDistance(Color a, Color b) {
  int sum = 0;
  for (const unsigned shift : {0U, 8U, 16U}) {
    const int difference = static_cast<int>(a >> shift & 0xFFU) - static_cast<int>(b >> shift & 0xFFU);
    sum += difference * difference;
  }
  return sum;
}

// Of colours at one distance the one that counts first, as PixelToCode has it.
PixelCode NearestCode(Color color, const ConversionColors& conversion) {
  const std::array<std::pair<PixelCode, Color>, 3> painted{{{PixelCode::Pattern, conversion.Pattern},
                                                            {PixelCode::Emphasis2, conversion.Emphasis2},
                                                            {PixelCode::Emphasis1, conversion.Emphasis1}}};
  PixelCode nearest = PixelCode::Background;
  int least = conversion.BackgroundIsPainted || color == conversion.Background
                  ? SquaredDistance(color, conversion.Background) + 1
                  : std::numeric_limits<int>::max();
  for (const auto& [code, own] : painted) {
    if (const int distance = SquaredDistance(color, own); distance < least) {
      nearest = code;
      least = distance;
    }
  }
  return nearest;
}

// `codeOf` gives the code of a colour; `odd` counts what is coded as background.
void EncodeRow(const std::uint8_t* pixels, int width, const ConversionColors& conversion, const auto& codeOf,
               RunWriter& field, OddColors& odd) {
  const std::uint8_t* const end = pixels + std::size_t{3} * static_cast<std::size_t>(width);
  PixelCode open = codeOf(ColorAt(pixels), conversion);
  unsigned length = 0;
  while (pixels < end) {
    const PixelCode code = codeOf(ColorAt(pixels), conversion);
    if (code != open) {
      field.Run(length, open);
      open = code;
      length = 0;
    }
    const int equal = EqualPixels(pixels, end);
    if (code == PixelCode::Background) {
      odd.Add(ColorAt(pixels), equal, conversion.Background);
    }
    length += static_cast<unsigned>(equal);
    pixels += std::size_t{3} * static_cast<std::size_t>(equal);
  }
  field.EndRow(open);
}

// Whether a line, counted from the window's top, goes to the first field. As painted, lines go in turn;
// traditionally the row's number from the bottom of the bitmap tells, so that line pairs change places
// for odd heights.
bool InFirstField(const BitmapWindow& window, int line, BitmapReading reading) {
  return reading == BitmapReading::AsPainted ? line % 2 == 0 : (window.LastRow - line) % 2 != 0;
}

EncodedBitmap EncodeRows(const Picture& picture, const ClippedBitmap& clip,
                         const ConversionColors& conversion, BitmapReading reading, const auto& codeOf,
                         OddColors& odd) {
  EncodedBitmap encoded;
  encoded.Area = clip.Area;
  RunWriter fieldA(encoded.FieldA);
  RunWriter fieldB(encoded.FieldB);
  for (int line = 0; line < clip.Window.Rows(); ++line) {
    const int pictureRow = picture.Height - 1 - (clip.Window.LastRow - line);
    const std::uint8_t* pixels =
        picture.Row(pictureRow) + std::size_t{3} * static_cast<std::size_t>(clip.Window.FirstCol);
    if (line == 0) {
      odd.Corner = ColorAt(pixels);
    }
    EncodeRow(pixels, clip.Window.Width(), conversion, codeOf,
              InFirstField(clip.Window, line, reading) ? fieldA : fieldB, odd);
  }
  return encoded;
}

// The rows, and how many pixels have none of the four colours.
EncodedBitmap EncodeWindow(const Picture& picture, const ClippedBitmap& clip, ConversionColors conversion,
                           BitmapReading reading, bool toNearest) {
  OddColors odd;
  EncodedBitmap encoded = EncodeRows(picture, clip, conversion, reading, PixelToCode, odd);
  if (toNearest && odd.Count() > 0) {
    if (odd.CornerIsBackground()) {
      conversion.Background = odd.Corner;
      conversion.BackgroundIsPainted = true;
    }
    OddColors left;
    encoded = EncodeRows(picture, clip, conversion, reading, NearestCode, left);
  }
  encoded.OddPixels = odd.Count();
  return encoded;
}

// Two values of 12 bits.
void Put12Bits(ByteWriter& unit, int first, int second) {
  unit.Put(3, static_cast<std::uint64_t>(first & 0xFFF) << 12U | static_cast<std::uint64_t>(second & 0xFFF));
}

// Four values of 4 bits, the first in the highest place.
void PutNibbles(ByteWriter& unit, const ColorQuad& values) {
  unsigned packed = 0;
  for (const std::int32_t value : values) {
    packed = packed << 4U | (static_cast<unsigned>(value) & 15U);
  }
  unit.U16(packed);
}

}  // namespace

PixelCode PixelToCode(Color color, const ConversionColors& conversion) {
  if (color == conversion.Pattern) {
    return PixelCode::Pattern;
  }
  if (color == conversion.Emphasis2) {
    return PixelCode::Emphasis2;
  }
  return color == conversion.Emphasis1 ? PixelCode::Emphasis1 : PixelCode::Background;
}

std::optional<EncodedBitmap> EncodeSPUBitmap(const Picture& picture, const ConversionColors& conversion,
                                             int x1, int y1, bool ntsc, const Rules& rules) {
  const BitmapReading reading =
      rules.BitmapsAsPainted ? BitmapReading::AsPainted : BitmapReading::Traditional;
  const bool toNearest = rules.OddPixelsTakeNearest;
  auto clip = ClipBitmap(picture.Width, picture.Height, x1, y1, ntsc, reading);
  if (!clip || reading == BitmapReading::AsPainted) {
    return clip ? std::optional(EncodeWindow(picture, *clip, conversion, reading, toNearest)) : std::nullopt;
  }
  Picture changed;  // the bitmap itself is never changed
  const Picture* source = &picture;
  if (clip->Window.Width() % 2 != 0 && picture.Width > 1) {
    changed = NarrowByOneColumn(picture);
    source = &changed;
    clip = ClipBitmap(changed.Width, changed.Height, x1, y1, ntsc, reading);
    if (!clip) {
      return std::nullopt;
    }
  }
  if (source->Width % 4 != 0) {
    changed = ShearRows(*source);
    source = &changed;
  }
  return EncodeWindow(*source, *clip, conversion, reading, toNearest);
}

Bytes BuildSPU(const SPURecord& record, const EncodedBitmap& bitmap) {
  const std::size_t sequences = FieldsAt + bitmap.FieldA.size() + bitmap.FieldB.size();
  const bool stops = record.StopDelay > 0 && record.StopDelay < NoStop;
  const std::size_t stopSequence = sequences + FirstSequenceBytes;

  ByteWriter unit;
  const auto size = unit.Reserve(2);
  unit.U16(sequences);
  unit.Raw(bitmap.FieldA);
  unit.Raw(bitmap.FieldB);

  unit.U16(0);  // shown at the unit's own time
  unit.U16(stops ? stopSequence : sequences);
  unit.U8(record.Forced ? ForcedStart : Start);
  unit.U8(SetColor);
  PutNibbles(unit, record.ColorIndexes);
  unit.U8(SetContrast);
  PutNibbles(unit, record.Contrasts);
  unit.U8(SetDisplayArea);
  Put12Bits(unit, bitmap.Area.X1, bitmap.Area.X2);
  Put12Bits(unit, bitmap.Area.Y1, bitmap.Area.Y2);
  unit.U8(SetFieldAddresses);
  unit.U16(FieldsAt);
  unit.U16(FieldsAt + bitmap.FieldA.size());
  unit.U8(CommandEnd);

  if (stops) {
    unit.U16(record.StopDelay);
    unit.U16(stopSequence);  // its own address ends the chain
    unit.U8(Stop);
    unit.U8(CommandEnd);
  }
  if (unit.Size() % 2 != 0) {
    unit.U8(CommandEnd);
  }
  unit.Patch(size, unit.Size());
  return unit.Take();
}

EncodedBitmap LoadSPUBitmap(PictureLoader& pictures, const SPURecord& record, bool ntsc, const Rules& rules) {
  if (const auto oversize = ReadOversize(record.File)) {
    RefusePicture(message::PictureTooLarge, record.File, oversize->Width, oversize->Height,
                  PictureLimits{}.MostSide, MostDiscPixels);
  }
  ConversionColors conversion = record.Conversion;
  // See-through pixels need a colour that reads as background: one of four is none of the other three.
  while (rules.SeeThroughIsBackground &&
         PixelToCode(conversion.Background, conversion) != PixelCode::Background) {
    ++conversion.Background;
    conversion.BackgroundIsPainted = false;
  }
  const Picture picture = rules.SeeThroughIsBackground ? pictures.LoadOver(record.File, conversion.Background)
                                                       : pictures.Load(record.File);
  auto bitmap = EncodeSPUBitmap(picture, conversion, record.X1, record.Y1, ntsc, rules);
  if (!bitmap) {
    throw SubpictureError(MessageOf(message::SubpictureOutside, {}, record.File));
  }
  return std::move(*bitmap);
}

Bytes MakeUnit(const SPURecord& record, const EncodedBitmap& bitmap) {
  Bytes unit = BuildSPU(record, bitmap);
  if (unit.size() > MostUnitBytes) {
    throw SubpictureError(
        MessageOf(message::SubpictureTooLarge, {}, record.File, unit.size(), MostUnitBytes));
  }
  return unit;
}

}  // namespace quorvelant
