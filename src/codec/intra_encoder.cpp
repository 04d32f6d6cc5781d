#include "codec/intra_encoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <span>
#include <vector>

#include "codec/bit_writer.h"
#include "codec/block_coder.h"
#include "codec/dct.h"
#include "codec/tables.h"

namespace quorvelant {
namespace {

constexpr unsigned BlocksPerMacroblock = 6;
constexpr unsigned MacroblockSide = 16;
constexpr unsigned SliceHeaderBits = 32 + 5 + 1;  // start code, scale, extra_bit_slice
constexpr unsigned MacroblockHeaderBits = 1 + 1;  // address increment 1, type intra
constexpr unsigned NewScaleBits = 1 + 5;          // the longer type and the scale
// 4:2:0 at main level (table 8-12 of 8.2.3).
constexpr unsigned LargestMacroblockBits = 4608;

// A DC difference as dct_dc_size and the bits after it.
struct DcCode {
  Vlc Size;
  std::uint32_t Value;
  unsigned ValueBits;
};

DcCode CodeDc(int difference, bool colour) {
  const auto magnitude = static_cast<unsigned>(difference < 0 ? -difference : difference);
  const auto bits = static_cast<unsigned>(std::bit_width(magnitude));
  const unsigned value = difference < 0 ? (1U << bits) - 1 - magnitude : magnitude;
  return {colour ? DcSizeChroma[bits] : DcSizeLuma[bits], value, bits};
}

// How one macroblock is coded.
struct MacroblockPlan {
  std::uint8_t Step;
  std::uint16_t Bits;  // all but a change of scale
};
using PicturePlan = std::vector<MacroblockPlan>;

class IntraEncoder {
 public:
  explicit IntraEncoder(const Planes& planes);

  Bytes Encode(std::size_t largestBytes);

 private:
  void TransformMacroblock(const Planes& planes, unsigned address);
  void DifferenceDc();
  ScannedBlock Coefficients(std::size_t block) const {
    return ScannedBlock(coefficients_.data() + block * 64, 64);
  }
  const BlockCoder& Coder(unsigned step);

  MacroblockPlan PlanMacroblock(unsigned address, unsigned step);
  PicturePlan PlanPicture(unsigned step);
  std::size_t EstimateBytes(unsigned step);
  unsigned EstimateStep(std::size_t largestBytes);
  std::size_t SliceBytes(std::span<const MacroblockPlan> row) const;
  std::size_t PictureBytes(const PicturePlan& plan) const;
  void Refine(PicturePlan& plan, const PicturePlan& finer, std::size_t spareBytes) const;

  Bytes Write(const PicturePlan& plan);
  void WriteMacroblock(BitWriter& writer, unsigned address, unsigned step);

  unsigned columns_;
  unsigned rows_;
  std::vector<std::int16_t> coefficients_;   // 64 a block in scan order, six blocks a macroblock
  std::vector<std::int16_t> dcDifferences_;  // by block
  std::array<std::optional<BlockCoder>, QualityStep::Count> coders_;
};

IntraEncoder::IntraEncoder(const Planes& planes)
    : columns_(planes.Y().Width / MacroblockSide),
      rows_(planes.Y().Height / MacroblockSide),
      coefficients_(std::size_t{columns_} * rows_ * BlocksPerMacroblock * 64),
      dcDifferences_(std::size_t{columns_} * rows_ * BlocksPerMacroblock) {
  for (unsigned address = 0; address < columns_ * rows_; ++address) {
    TransformMacroblock(planes, address);
  }
  DifferenceDc();
}

void IntraEncoder::TransformMacroblock(const Planes& planes, unsigned address) {
  Block samples;
  Block transformed;
  for (unsigned block = 0; block < BlocksPerMacroblock; ++block) {
    const Plane& plane = planes.Of[block < 4 ? 0 : block - 3];
    const unsigned side = block < 4 ? MacroblockSide : MacroblockSide / 2;
    const unsigned x = address % columns_ * side + (block < 4 ? block % 2 * 8 : 0);
    const unsigned y = address / columns_ * side + (block < 4 ? block / 2 * 8 : 0);
    for (unsigned i = 0; i < 8; ++i) {
      const std::uint8_t* line = plane.Row(y + i) + x;
      for (unsigned k = 0; k < 8; ++k) {
        samples.At[i * 8 + k] = static_cast<std::int16_t>(line[k] - 128);
      }
    }
    ForwardDct(samples, transformed);
    std::int16_t* scanned = coefficients_.data() + (std::size_t{address} * BlocksPerMacroblock + block) * 64;
    for (unsigned i = 0; i < 64; ++i) {
      scanned[i] = transformed.At[ColumnMajor(ZigzagScan[i])];
    }
  }
}

// DC is quantised alike at every scale, so its codes are known from the start.
void IntraEncoder::DifferenceDc() {
  constexpr int StepSixteenths = (8 >> StillDcPrecision) << CoefficientFractionBits;
  constexpr int MiddleSixteenths = (128 * 8) << CoefficientFractionBits;  // of the 128 taken off each sample
  std::array<int, 3> predictors{};
  for (std::size_t block = 0; block < dcDifferences_.size(); ++block) {
    if (block % (std::size_t{columns_} * BlocksPerMacroblock) == 0) {
      predictors.fill(1 << (7 + StillDcPrecision));
    }
    const std::size_t inMacroblock = block % BlocksPerMacroblock;
    int& predictor = predictors[inMacroblock < 4 ? 0 : inMacroblock - 3];
    const int level = (Coefficients(block)[0] + MiddleSixteenths + StepSixteenths / 2) / StepSixteenths;
    dcDifferences_[block] = static_cast<std::int16_t>(level - predictor);
    predictor = level;
  }
}

const BlockCoder& IntraEncoder::Coder(unsigned step) {
  if (!coders_[step]) {
    coders_[step].emplace(QualityStep{step});
  }
  return *coders_[step];
}

// Goes down the ladder from `step` to the first that keeps within what a macroblock may take.
MacroblockPlan IntraEncoder::PlanMacroblock(unsigned address, unsigned step) {
  CodedBlock coded;
  for (;; ++step) {
    unsigned bits = MacroblockHeaderBits;
    for (unsigned block = 0; block < BlocksPerMacroblock; ++block) {
      const std::size_t at = std::size_t{address} * BlocksPerMacroblock + block;
      const DcCode dc = CodeDc(dcDifferences_[at], block >= 4);
      Coder(step).Quantise(Coefficients(at), coded);
      bits += dc.Size.Bits + dc.ValueBits + coded.Bits;
    }
    if (bits + NewScaleBits <= LargestMacroblockBits || step + 1 == QualityStep::Count) {
      return {static_cast<std::uint8_t>(step), static_cast<std::uint16_t>(bits)};
    }
  }
}

PicturePlan IntraEncoder::PlanPicture(unsigned step) {
  PicturePlan plan;
  plan.reserve(std::size_t{columns_} * rows_);
  for (unsigned address = 0; address < columns_ * rows_; ++address) {
    plan.push_back(PlanMacroblock(address, step));
  }
  return plan;
}

// The size at `step` as every eighth macroblock lets expect it.
std::size_t IntraEncoder::EstimateBytes(unsigned step) {
  std::size_t bits = 0;
  std::size_t looked = 0;
  for (unsigned row = 0; row < rows_; ++row) {
    // 3 rows on, the columns looked at lie apart.
    for (unsigned column = row * 3 % 8; column < columns_; column += 8) {
      bits += PlanMacroblock(row * columns_ + column, step).Bits;
      ++looked;
    }
  }
  const std::size_t count = std::size_t{columns_} * rows_;
  return looked == 0 ? 0 : (bits * count / looked + std::size_t{rows_} * SliceHeaderBits) / 8;
}

unsigned IntraEncoder::EstimateStep(std::size_t largestBytes) {
  unsigned low = 0;
  unsigned high = QualityStep::Count - 1;
  while (low < high) {
    const unsigned middle = (low + high) / 2;
    if (EstimateBytes(middle) <= largestBytes) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return low;
}

unsigned ScaleCode(const MacroblockPlan& plan) {
  return QualityStep{plan.Step}.ScaleCode();
}

std::size_t IntraEncoder::SliceBytes(std::span<const MacroblockPlan> row) const {
  std::size_t bits = SliceHeaderBits;
  unsigned scale = ScaleCode(row.front());
  for (const MacroblockPlan& macroblock : row) {
    bits += macroblock.Bits + (ScaleCode(macroblock) != scale ? NewScaleBits : 0);
    scale = ScaleCode(macroblock);
  }
  return (bits + 7) / 8;
}

std::size_t IntraEncoder::PictureBytes(const PicturePlan& plan) const {
  std::size_t bytes = 0;
  for (unsigned row = 0; row < rows_; ++row) {
    bytes += SliceBytes(std::span(plan).subspan(std::size_t{row} * columns_, columns_));
  }
  return bytes;
}

// Spends what is left on rows of the next better step, rows spread over the height, and on the first
// macroblocks of one row more.
void IntraEncoder::Refine(PicturePlan& plan, const PicturePlan& finer, std::size_t spareBytes) const {
  constexpr unsigned Stride = 11;  // coprime to the row counts of both standards, 36 and 30
  std::vector<MacroblockPlan> row(columns_);
  for (unsigned i = 0; i < rows_; ++i) {
    const std::size_t first = std::size_t{i * Stride % rows_} * columns_;
    const std::span<MacroblockPlan> coarse = std::span(plan).subspan(first, columns_);
    const std::size_t coarseBytes = SliceBytes(coarse);
    unsigned better = columns_;
    for (; better > 0; --better) {
      std::copy(coarse.begin(), coarse.end(), row.begin());
      std::copy_n(finer.begin() + static_cast<std::ptrdiff_t>(first), better, row.begin());
      const std::size_t bytes = SliceBytes(row);
      if (bytes <= coarseBytes + spareBytes) {
        spareBytes = coarseBytes + spareBytes - bytes;
        std::copy(row.begin(), row.end(), coarse.begin());
        break;
      }
    }
    if (better < columns_) {
      return;
    }
  }
}

Bytes IntraEncoder::Encode(std::size_t largestBytes) {
  unsigned step = EstimateStep(largestBytes);
  PicturePlan plan = PlanPicture(step);
  while (PictureBytes(plan) > largestBytes && step + 1 < QualityStep::Count) {
    plan = PlanPicture(++step);
  }
  while (step > 0 && PictureBytes(plan) <= largestBytes) {
    const PicturePlan finer = PlanPicture(--step);
    if (PictureBytes(finer) > largestBytes) {
      Refine(plan, finer, largestBytes - PictureBytes(plan));
      break;
    }
    plan = finer;
  }
  return Write(plan);
}

Bytes IntraEncoder::Write(const PicturePlan& plan) {
  BitWriter writer;
  for (unsigned row = 0; row < rows_; ++row) {
    unsigned address = row * columns_;
    unsigned scale = ScaleCode(plan[address]);
    writer.StartCode(static_cast<std::uint8_t>(row + 1));
    writer.Put(5, scale);
    writer.Put(1, 0);  // extra_bit_slice
    for (unsigned column = 0; column < columns_; ++column, ++address) {
      writer.Put(1, 1);  // macroblock_address_increment 1
      if (ScaleCode(plan[address]) == scale) {
        writer.Put(1, 1);  // macroblock_type: intra
      } else {
        scale = ScaleCode(plan[address]);
        writer.Put(2, 1);  // macroblock_type: intra with a new scale
        writer.Put(5, scale);
      }
      WriteMacroblock(writer, address, plan[address].Step);
    }
  }
  writer.Align();
  return writer.Take();
}

void IntraEncoder::WriteMacroblock(BitWriter& writer, unsigned address, unsigned step) {
  CodedBlock coded;
  for (unsigned block = 0; block < BlocksPerMacroblock; ++block) {
    const std::size_t at = std::size_t{address} * BlocksPerMacroblock + block;
    const DcCode dc = CodeDc(dcDifferences_[at], block >= 4);
    writer.Put(dc.Size.Bits, dc.Size.Code);
    writer.Put(dc.ValueBits, dc.Value);
    Coder(step).Quantise(Coefficients(at), coded);
    BlockCoder::Write(coded, writer);
  }
}

}  // namespace

Bytes EncodeIntraSlices(const Planes& planes, std::size_t largestBytes) {
  return IntraEncoder(planes).Encode(largestBytes);
}

}  // namespace quorvelant
