#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

#include "picture/bmp.h"
#include "picture/messages.h"

namespace quorvelant {

namespace {

// Layout of the file header and of the information header after it, little-endian.
constexpr std::size_t FileHeaderBytes = 14;
constexpr std::size_t PixelOffsetAt = 10;  // 4 bytes: where the pixels begin
constexpr std::size_t CoreHeaderBytes = 12;
constexpr std::size_t InfoHeaderBytes = 40;
// After the header's own length (4 bytes) of the 12 byte form: width and height of 2 bytes each.
constexpr std::size_t CoreWidthAt = 18;
constexpr std::size_t CoreHeightAt = 20;
constexpr std::size_t CoreBitsAt = 24;
// The forms of 40 bytes and more.
constexpr std::size_t WidthAt = 18;
constexpr std::size_t HeightAt = 22;  // negative: top row first
constexpr std::size_t BitsAt = 28;
constexpr std::size_t CompressionAt = 30;
constexpr std::size_t ColorsUsedAt = 46;
constexpr std::size_t MasksAt = 54;

enum Compression : std::uint32_t { Plain = 0, Rle8 = 1, Rle4 = 2, BitFields = 3, AlphaBitFields = 6 };

struct Rgb {
  std::uint8_t Red = 0;
  std::uint8_t Green = 0;
  std::uint8_t Blue = 0;
};

struct BmpHeader {
  std::size_t HeaderBytes = 0;
  int Width = 0;
  int Height = 0;
  bool TopDown = false;
  unsigned Bits = 0;
  std::uint32_t Packing = Plain;
  std::size_t PixelOffset = 0;
  std::array<std::uint32_t, 3> Masks{};  // red, green, blue
  std::array<Rgb, 256> Palette{};
};

std::uint32_t Little(ByteView file, std::size_t offset, unsigned width) {
  std::uint32_t value = 0;
  for (unsigned i = width; i-- > 0;) {
    value = value << 8 | file[offset + i];
  }
  return value;
}

bool PackingFits(std::uint32_t packing, unsigned bits) {
  switch (packing) {
    case Plain:
      return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case Rle8:
      return bits == 8;
    case Rle4:
      return bits == 4;
    case BitFields:
    case AlphaBitFields:
      return bits == 16 || bits == 32;
    default:
      return false;
  }
}

// The palette stands between the header and the pixels; a header that claims more gets what is there.
void ReadPalette(ByteView file, std::size_t at, std::size_t entryBytes, std::size_t colors,
                 std::array<Rgb, 256>& palette) {
  for (std::size_t i = 0; i < colors && at + entryBytes <= file.size(); ++i, at += entryBytes) {
    palette.at(i) = {file[at + 2], file[at + 1], file[at]};
  }
}

// Reads the fields of the header that say how large the picture is and how it is packed.
void ReadShape(ByteView file, std::string_view name, const PictureLimits& limits, BmpHeader& header) {
  std::int64_t width = 0;
  std::int64_t height = 0;
  if (header.HeaderBytes == CoreHeaderBytes) {
    width = Little(file, CoreWidthAt, 2);
    height = Little(file, CoreHeightAt, 2);
    header.Bits = Little(file, CoreBitsAt, 2);
  } else {
    width = static_cast<std::int32_t>(Little(file, WidthAt, 4));
    height = static_cast<std::int32_t>(Little(file, HeightAt, 4));
    header.Bits = Little(file, BitsAt, 2);
    header.Packing = Little(file, CompressionAt, 4);
  }
  header.TopDown = height < 0;
  height = header.TopDown ? -height : height;
  CheckPictureSize(width, height, limits, name);
  header.Width = static_cast<int>(width);
  header.Height = static_cast<int>(height);
  if (!PackingFits(header.Packing, header.Bits)) {
    RefusePicture(message::BitmapPacking, name, header.Bits, header.Packing);
  }
}

// Finds the colour masks and the palette, which stand after the header.
void ReadColors(ByteView file, std::string_view name, BmpHeader& header) {
  std::size_t at = FileHeaderBytes + header.HeaderBytes;
  if (header.Packing == BitFields || header.Packing == AlphaBitFields) {
    if (file.size() < MasksAt + 12) {
      RefusePicture(message::BitmapTruncated, name);
    }
    for (unsigned i = 0; i < 3; ++i) {
      header.Masks[i] = Little(file, MasksAt + std::size_t{4} * i, 4);
    }
    if (header.HeaderBytes == InfoHeaderBytes) {
      at += header.Packing == BitFields ? 12 : 16;
    }
  } else if (header.Bits == 16) {
    header.Masks = {0x7C00, 0x03E0, 0x001F};
  } else {
    header.Masks = {0xFF0000, 0x00FF00, 0x0000FF};
  }
  if (header.Bits > 8) {
    return;
  }
  const bool core = header.HeaderBytes == CoreHeaderBytes;
  std::size_t colors = core ? 0 : Little(file, ColorsUsedAt, 4);
  const std::size_t most = std::size_t{1} << header.Bits;
  colors = colors == 0 ? most : std::min(colors, most);
  const std::size_t entryBytes = core ? 3 : 4;
  if (header.PixelOffset > at) {
    colors = std::min(colors, (header.PixelOffset - at) / entryBytes);
  }
  ReadPalette(file, at, entryBytes, colors, header.Palette);
}

BmpHeader ReadHeader(ByteView file, std::string_view name, const PictureLimits& limits) {
  if (file.empty()) {
    RefusePicture(message::PictureFileEmpty, name);
  }
  if (!IsBmp(file)) {
    RefusePicture(message::BitmapUnknown, name);
  }
  BmpHeader header;
  if (file.size() < FileHeaderBytes + CoreHeaderBytes) {
    RefusePicture(message::BitmapTruncated, name);
  }
  header.HeaderBytes = Little(file, FileHeaderBytes, 4);
  constexpr std::array<std::size_t, 7> Forms{CoreHeaderBytes, InfoHeaderBytes, 52, 56, 64, 108, 124};
  if (std::ranges::find(Forms, header.HeaderBytes) == Forms.end()) {
    RefusePicture(message::BitmapHeader, name, header.HeaderBytes);
  }
  if (file.size() < FileHeaderBytes + header.HeaderBytes) {
    RefusePicture(message::BitmapTruncated, name);
  }
  header.PixelOffset = Little(file, PixelOffsetAt, 4);
  ReadShape(file, name, limits, header);
  if (header.PixelOffset < FileHeaderBytes + header.HeaderBytes || header.PixelOffset > file.size()) {
    RefusePicture(message::BitmapTruncated, name);
  }
  ReadColors(file, name, header);
  return header;
}

// One colour of a pixel of bit fields, brought to eight bits: a shorter field repeats its bits, so that
// nothing stays 0 and all ones become 255.
struct Channel {
  Channel(std::uint32_t mask, std::string_view name)
      : Mask(mask),
        Shift(mask == 0 ? 0 : static_cast<unsigned>(std::countr_zero(mask))),
        Width(static_cast<unsigned>(std::popcount(mask))) {
    if (((mask >> Shift) & ((mask >> Shift) + 1)) != 0) {
      RefusePicture(message::BitmapMask, name);
    }
  }
  std::uint8_t Of(std::uint32_t pixel) const {
    const std::uint32_t value = (pixel & Mask) >> Shift;
    if (Width >= 8) {
      return static_cast<std::uint8_t>(value >> (Width - 8));
    }
    std::uint32_t wide = value;
    unsigned have = Width;
    while (have > 0 && have < 8) {
      wide = wide << Width | value;
      have += Width;
    }
    return static_cast<std::uint8_t>(have > 8 ? wide >> (have - 8) : wide);
  }
  std::uint32_t Mask;
  unsigned Shift;
  unsigned Width;
};

// The row of the picture that the file's row `fileRow` becomes.
int PictureRow(const BmpHeader& header, int fileRow) {
  return header.TopDown ? fileRow : header.Height - 1 - fileRow;
}

void PutRgb(std::uint8_t* target, Rgb color) {
  target[0] = color.Red;
  target[1] = color.Green;
  target[2] = color.Blue;
}

void UnpackIndexed(const BmpHeader& header, const std::uint8_t* source, std::uint8_t* target) {
  const unsigned bits = header.Bits;
  const auto mask = static_cast<std::uint8_t>((1U << bits) - 1U);
  for (unsigned x = 0; x < static_cast<unsigned>(header.Width); ++x, target += 3) {
    const unsigned bit = x * bits;
    PutRgb(target, header.Palette.at((source[bit / 8] >> (8 - bits - bit % 8)) & mask));
  }
}

// The palette as words, red in the first byte.
using WordPalette = std::array<std::array<std::uint8_t, 4>, 256>;

WordPalette WordsOf(const BmpHeader& header) {
  WordPalette words{};
  for (std::size_t i = 0; i < words.size(); ++i) {
    PutRgb(words[i].data(), header.Palette[i]);
  }
  return words;
}

// A byte a pixel, as most tools write: a pixel is stored as a word whose last byte the next one overwrites.
void UnpackBytes(int width, const WordPalette& words, const std::uint8_t* source, std::uint8_t* target) {
  const std::uint8_t* const last = source + width - 1;
  for (; source < last; ++source, target += 3) {
    std::memcpy(target, words[*source].data(), sizeof words[0]);
  }
  std::memcpy(target, words[*last].data(), 3);
}

void UnpackDirect(const BmpHeader& header, const std::array<Channel, 3>& channels, const std::uint8_t* source,
                  std::uint8_t* target) {
  const unsigned pixelBytes = header.Bits / 8;
  for (int x = 0; x < header.Width; ++x, source += pixelBytes, target += 3) {
    const std::uint32_t pixel = Little({source, pixelBytes}, 0, pixelBytes);
    for (std::size_t i = 0; i < 3; ++i) {
      target[i] = channels.at(i).Of(pixel);
    }
  }
}

void UnpackTrueColor(int width, unsigned pixelBytes, const std::uint8_t* source, std::uint8_t* target) {
  for (int x = 0; x < width; ++x, source += pixelBytes, target += 3) {
    PutRgb(target, {source[2], source[1], source[0]});
  }
}

Picture ReadPlain(ByteView file, std::string_view name, const BmpHeader& header) {
  const std::size_t rowBytes = (static_cast<std::size_t>(header.Width) * header.Bits + 31) / 32 * 4;
  const std::size_t lastRowBytes = (static_cast<std::size_t>(header.Width) * header.Bits + 7) / 8;
  // Some writers leave the padding of the last row out.
  if (rowBytes * static_cast<std::size_t>(header.Height - 1) + lastRowBytes >
      file.size() - header.PixelOffset) {
    RefusePicture(message::BitmapTruncated, name);
  }
  const std::array<Channel, 3> channels{Channel(header.Masks[0], name), Channel(header.Masks[1], name),
                                        Channel(header.Masks[2], name)};
  const bool bytesInPlace = header.Masks == std::array<std::uint32_t, 3>{0xFF0000, 0x00FF00, 0x0000FF};
  const WordPalette words = WordsOf(header);
  Picture picture(header.Width, header.Height);
  for (int row = 0; row < header.Height; ++row) {
    const std::uint8_t* source = file.data() + header.PixelOffset + rowBytes * static_cast<std::size_t>(row);
    std::uint8_t* target = picture.Row(PictureRow(header, row));
    if (header.Bits == 8) {
      UnpackBytes(header.Width, words, source, target);
    } else if (header.Bits < 8) {
      UnpackIndexed(header, source, target);
    } else if (header.Bits >= 24 && bytesInPlace) {
      UnpackTrueColor(header.Width, header.Bits / 8, source, target);
    } else {
      UnpackDirect(header, channels, source, target);
    }
  }
  return picture;
}

// Decodes the runs of RLE4 and RLE8. Pixels that no run reaches have index 0.
class RunDecoder {
 public:
  RunDecoder(ByteView data, std::string_view name, const BmpHeader& header)
      : data_(data), name_(name), header_(&header), picture_(header.Width, header.Height) {}

  Picture Decode() {
    for (int row = 0; row < header_->Height; ++row) {
      for (int column = 0; column < header_->Width; ++column) {
        PutRgb(picture_.Row(row) + std::size_t{3} * static_cast<std::size_t>(column), header_->Palette[0]);
      }
    }
    bool more = true;
    while (more && row_ < header_->Height) {
      const std::uint8_t count = Next();
      const std::uint8_t value = Next();
      if (count > 0) {
        for (unsigned i = 0; i < count; ++i) {
          Plot(Index(value, i));
        }
      } else {
        more = Escape(value);
      }
    }
    return std::move(picture_);
  }

 private:
  // After a count of 0: end of line, end of bitmap, a move, or that many pixels as they stand.
  bool Escape(std::uint8_t code) {
    switch (code) {
      case 0:
        column_ = 0;
        ++row_;
        return true;
      case 1:
        return false;
      case 2:
        column_ = std::min(column_ + Next(), header_->Width);
        row_ += Next();
        return true;
      default:
        Literal(code);
        return true;
    }
  }

  // `count` pixels, filled up to a whole number of 16-bit words.
  void Literal(unsigned count) {
    const unsigned pixelsAByte = header_->Bits == 4 ? 2 : 1;
    const unsigned bytes = (count + pixelsAByte - 1) / pixelsAByte;
    std::uint8_t value = 0;
    for (unsigned i = 0; i < count; ++i) {
      if (i % pixelsAByte == 0) {
        value = Next();
      }
      Plot(Index(value, i));
    }
    if (bytes % 2 != 0) {
      Next();
    }
  }

  std::uint8_t Index(std::uint8_t value, unsigned place) const {
    if (header_->Bits == 8) {
      return value;
    }
    return static_cast<std::uint8_t>(place % 2 == 0 ? value >> 4 : value & 15);
  }

  void Plot(std::uint8_t index) {
    if (column_ < header_->Width && row_ < header_->Height) {
      std::uint8_t* row = picture_.Row(PictureRow(*header_, row_));
      PutRgb(row + std::size_t{3} * static_cast<std::size_t>(column_), header_->Palette.at(index));
      ++column_;
    }
  }

  std::uint8_t Next() {
    if (at_ >= data_.size()) {
      RefusePicture(message::BitmapTruncated, name_);
    }
    return data_[at_++];
  }

  ByteView data_;
  std::string_view name_;
  const BmpHeader* header_;
  Picture picture_;
  std::size_t at_ = 0;
  int column_ = 0;
  int row_ = 0;
};

}  // namespace

bool IsBmp(ByteView file) {
  return file.size() >= 2 && file[0] == 'B' && file[1] == 'M';
}

Picture ReadBmp(ByteView file, std::string_view name, const PictureLimits& limits) {
  const BmpHeader header = ReadHeader(file, name, limits);
  if (header.Packing == Rle8 || header.Packing == Rle4) {
    return RunDecoder(file.subspan(header.PixelOffset), name, header).Decode();
  }
  return ReadPlain(file, name, header);
}

}  // namespace quorvelant
