#include "codec/slice_decoder.h"

#include <algorithm>
#include <cstring>

namespace quorvelant {
namespace {

constexpr unsigned MacroblockSide = 16;
constexpr int LargestCoefficient = 2047;
constexpr int SmallestCoefficient = -2048;
// Above this height a slice names its row with 3 bits more (6.3.16).
constexpr unsigned TallPicture = 2800;

std::int16_t Saturated(int coefficient) {
  return static_cast<std::int16_t>(std::clamp(coefficient, SmallestCoefficient, LargestCoefficient));
}

// The difference that `size` bits stand for: the lower half of the values is negative.
int ReadSigned(BitReader& reader, unsigned size) {
  if (size == 0) {
    return 0;
  }
  const int value = static_cast<int>(reader.Get(size));
  const int half = 1 << (size - 1);
  return value >= half ? value : value - (2 * half - 1);
}

// macroblock_address_increment, 0 with the reader failed if there is none.
unsigned ReadIncrement(BitReader& reader, bool mpeg2) {
  unsigned increment = 0;
  while (!reader.Failed()) {
    const std::uint32_t code = reader.Peek(AddressEscape.Bits);
    if (code == AddressEscape.Code) {
      increment += 33;
    } else if (mpeg2 || code != MacroblockStuffing.Code) {
      return increment + AddressIncrementLookup().Read(reader) + 1;
    }
    reader.Skip(AddressEscape.Bits);
  }
  return 0;
}

int ScaleOf(std::uint32_t code, bool nonLinear) {
  return nonLinear ? NonLinearScale[code] : static_cast<int>(code) * 2;
}

// The run and level after an escape code of either standard. False for the forbidden level 0.
bool ReadEscape(BitReader& reader, bool mpeg2, unsigned& run, unsigned& level, bool& negative) {
  const auto signedValue = [](std::uint32_t value, unsigned bits) {
    return static_cast<int>(value) - static_cast<int>((value >> (bits - 1)) << bits);
  };
  reader.Skip(DctEscape.Bits);
  run = reader.Get(6);
  int value = mpeg2 ? signedValue(reader.Get(12), 12) : signedValue(reader.Get(8), 8);
  if (!mpeg2 && value == 0) {  // 8 bits more for magnitudes from 128 on
    value = static_cast<int>(reader.Get(8));
  } else if (!mpeg2 && value == -128) {
    value = static_cast<int>(reader.Get(8)) - 256;
  }
  negative = value < 0;
  level = static_cast<unsigned>(negative ? -value : value);
  return level != 0;
}

}  // namespace

// What runs through the macroblocks of one slice.
struct SliceDecoder::Slice {
  BitReader Reader;
  int Scale = 0;  // quantiser_scale
  std::array<int, 3> DcPredictors{};
};

SliceDecoder::SliceDecoder(const PictureHeaders& headers, Planes& frame)
    : headers_(&headers),
      frame_(&frame),
      coefficients_(headers.TableB15 ? &DctLookup::B15() : &DctLookup::B14()),
      scan_(headers.AlternateScan ? AlternateScan : ZigzagScan),
      firstLine_(headers.Structure == PictureStructure::BottomField ? 1 : 0),
      lineStep_(headers.Structure == PictureStructure::Frame ? 1 : 2),
      columns_(frame.Y().Width / MacroblockSide),
      rows_(frame.Y().Height / MacroblockSide / lineStep_),
      blockCount_(headers.Chroma == ChromaFormat::Yuv420   ? 6
                  : headers.Chroma == ChromaFormat::Yuv422 ? 8
                                                           : 12),
      chromaWidth_(headers.Chroma == ChromaFormat::Yuv444 ? 16 : 8),
      chromaHeight_(headers.Chroma == ChromaFormat::Yuv420 ? 8 : 16),
      done_(std::size_t{columns_} * rows_) {
  std::transform(scan_.begin(), scan_.end(), scan_.begin(), ColumnMajor);
}

void SliceDecoder::Decode(std::uint8_t code, ByteView payload) {
  Slice slice{BitReader(payload)};
  unsigned row = code - 1U;
  if (headers_->Mpeg2 && headers_->Height > TallPicture) {
    row += slice.Reader.Get(3) << 7;
  }
  slice.Scale = ScaleOf(slice.Reader.Get(5), headers_->NonLinearScale);
  slice.DcPredictors.fill(1 << (7 + headers_->DcPrecision));
  while (slice.Reader.GetFlag()) {  // extra_bit_slice
    slice.Reader.Skip(8);
    if (slice.Reader.Failed()) {
      return;
    }
  }
  // An MPEG-1 slice may run on into the next rows.
  std::size_t next = std::size_t{row} * columns_;
  do {
    next += ReadIncrement(slice.Reader, headers_->Mpeg2);
    if (slice.Reader.Failed() || next > done_.size() ||
        !DecodeMacroblock(slice, static_cast<unsigned>(next - 1))) {
      return;
    }
  } while (slice.Reader.Peek(23) != 0);
}

bool SliceDecoder::DecodeMacroblock(Slice& slice, unsigned address) {
  BitReader& reader = slice.Reader;
  const bool withScale = !reader.GetFlag();  // table B.2: "1" intra, "01" intra with a new scale
  if (withScale && !reader.GetFlag()) {
    return false;
  }
  const bool fieldDct =
      headers_->Structure == PictureStructure::Frame && !headers_->FramePredFrameDct && reader.GetFlag();
  if (withScale) {
    slice.Scale = ScaleOf(reader.Get(5), headers_->NonLinearScale);
  }
  if (headers_->ConcealmentVectors) {
    SkipConcealmentVector(reader);
  }
  for (unsigned block = 0; block < blockCount_; ++block) {
    DecodeBlock(slice, block < 4 ? 0 : 1 + block % 2);
    if (reader.Failed()) {
      return false;
    }
    InverseDct(block_, samples_);
    StoreBlock(address, block, fieldDct);
  }
  done_[address] = true;
  return true;
}

// motion_vectors(0) of 6.2.5.2 with the prediction that a picture without motion type has, and the
// marker bit after it.
void SliceDecoder::SkipConcealmentVector(BitReader& reader) const {
  if (headers_->Structure != PictureStructure::Frame) {
    reader.Skip(1);  // motion_vertical_field_select
  }
  for (const unsigned fCode : headers_->ForwardFCodes) {
    if (MotionCodeLookup().Read(reader) != 0) {
      reader.Skip(1 + (fCode > 1 ? fCode - 1 : 0));  // sign and motion_residual
    }
  }
  reader.Skip(1);
}

void SliceDecoder::DecodeBlock(Slice& slice, unsigned component) {
  block_.At.fill(0);
  const unsigned size = DcSizeLookup(component != 0).Read(slice.Reader);
  int& predictor = slice.DcPredictors[component];
  predictor = Saturated(predictor + ReadSigned(slice.Reader, size));
  block_.At[0] = Saturated(predictor * (8 >> headers_->DcPrecision));
  DecodeCoefficients(slice, component == 0 ? headers_->LumaWeights : headers_->ChromaWeights);
}

// Inverse quantisation as 7.4 and ISO/IEC 11172-2 2.4.4.1 define it, with their mismatch controls:
// MPEG-2 makes the sum of the coefficients odd, MPEG-1 each coefficient but DC.
void SliceDecoder::DecodeCoefficients(Slice& slice, const Matrix& weights) {
  BitReader reader = slice.Reader;  // a copy can stay in registers
  const auto scale = static_cast<unsigned>(slice.Scale);
  const bool mpeg2 = headers_->Mpeg2;
  const DctLookup& codes = *coefficients_;
  int sum = block_.At[0];
  // The bits ahead stay in a register, which serves several codes before it is filled again.
  constexpr unsigned LongestCode = 16 + 1;  // with its sign
  std::uint64_t ahead = reader.Ahead();
  unsigned used = 0;
  for (unsigned position = 1;; ++position) {
    if (used > BitReader::AheadBits - LongestCode) {
      reader.Skip(used);
      ahead = reader.Ahead();
      used = 0;
    }
    const DctLookup::Entry entry = codes.Find(static_cast<std::uint32_t>(ahead >> 48));
    unsigned run = entry.Run;
    unsigned level = entry.Level;
    bool negative = ((ahead >> (63 - entry.Bits)) & 1) != 0;
    if (entry.What == DctLookup::Kind::Coefficient) [[likely]] {
      used += entry.Bits + 1U;
      ahead <<= entry.Bits + 1U;
    } else {
      reader.Skip(used);
      used = 0;
      if (entry.What == DctLookup::Kind::EndOfBlock) {
        reader.Skip(entry.Bits);
        break;
      }
      if (entry.What == DctLookup::Kind::Invalid || !ReadEscape(reader, mpeg2, run, level, negative)) {
        reader.Fail();
        break;
      }
      ahead = reader.Ahead();
    }
    position += run;
    if (position >= 64) {
      reader.Fail();
      break;
    }
    const unsigned place = scan_[position];
    unsigned magnitude = level * weights[place] * scale / 16;
    if (!mpeg2 && magnitude > 0) {
      magnitude = (magnitude - 1) | 1;
    }
    const int sign = negative ? -1 : 0;
    const std::int16_t coefficient = Saturated((static_cast<int>(magnitude) ^ sign) - sign);
    block_.At[place] = coefficient;
    sum += coefficient;
  }
  slice.Reader = reader;
  if (mpeg2 && sum % 2 == 0) {
    block_.At[63] ^= 1;
  }
}

std::uint8_t* SliceDecoder::Line(unsigned component, unsigned x, unsigned y) const {
  return frame_->Of[component].Row(firstLine_ + y * lineStep_) + x;
}

void SliceDecoder::StoreBlock(unsigned address, unsigned block, bool fieldDct) {
  const unsigned component = block < 4 ? 0 : 1 + block % 2;
  const unsigned width = component == 0 ? MacroblockSide : chromaWidth_;
  const unsigned height = component == 0 ? MacroblockSide : chromaHeight_;
  // Luminance blocks go across first, those of colour down first (figures 6-10 to 6-12).
  const unsigned right = component == 0 ? block % 2 : (block - 4) / 4;
  const unsigned lower = component == 0 ? block / 2 : (block - 4) / 2 % 2;
  const bool byField = fieldDct && height == MacroblockSide;
  const unsigned x = address % columns_ * width + right * 8;
  const unsigned y = address / columns_ * height + (byField ? lower : lower * 8);
  const unsigned lines = byField ? 2 : 1;
  for (unsigned i = 0; i < 8; ++i) {
    std::uint8_t* line = Line(component, x, y + i * lines);
    for (unsigned k = 0; k < 8; ++k) {
      line[k] = static_cast<std::uint8_t>(std::clamp<std::int16_t>(samples_.At[i * 8 + k], 0, 255));
    }
  }
}

void SliceDecoder::CopyMacroblock(unsigned from, unsigned to) {
  for (unsigned component = 0; component < 3; ++component) {
    const unsigned width = component == 0 ? MacroblockSide : chromaWidth_;
    const unsigned height = component == 0 ? MacroblockSide : chromaHeight_;
    for (unsigned i = 0; i < height; ++i) {
      std::memcpy(Line(component, to % columns_ * width, to / columns_ * height + i),
                  Line(component, from % columns_ * width, from / columns_ * height + i), width);
    }
  }
}

void SliceDecoder::ConcealMissing() {
  const auto fill = [this](unsigned to, unsigned from) {
    if (!done_[to] && done_[from]) {
      CopyMacroblock(from, to);
      done_[to] = true;
    }
  };
  const auto count = static_cast<unsigned>(done_.size());
  for (unsigned address = columns_; address < count; ++address) {
    fill(address, address - columns_);
  }
  for (unsigned address = count; address-- > columns_;) {
    fill(address - columns_, address);
  }
}

}  // namespace quorvelant
