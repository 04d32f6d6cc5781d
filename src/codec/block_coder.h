// Quantises and codes the AC coefficients of intra blocks (table B.15, zigzag scan).
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "codec/bit_writer.h"

namespace quorvelant {

// One step of the quality ladder, best first: the finest scale with every coefficient rounded to the
// nearest level, then scale after scale with levels chosen by what they cost. The last two keep only the
// first coefficients, and DC alone, so that there is a step on which every picture fits.
struct QualityStep {
  static constexpr unsigned Coarsest = 31;
  static constexpr unsigned Count = Coarsest + 3;
  unsigned Index = 0;

  // quantiser_scale_code, 1 to 31.
  unsigned ScaleCode() const { return Index == 0 ? 1 : Index < Coarsest ? Index : Coarsest; }
  bool WeighsBits() const { return Index > 0; }
  // Scan positions coded, DC included.
  unsigned Positions() const { return Index <= Coarsest ? 64 : Index == Coarsest + 1 ? 24 : 1; }
};

// The coefficients of a block in scan order, in sixteenths. DC stands at 0 and is not used here.
using ScannedBlock = std::span<const std::int16_t, 64>;

struct RunLevel {
  std::uint8_t Run;
  std::int16_t Level;
};

// The codes of one block, without those of DC and end of block.
struct CodedBlock {
  std::array<RunLevel, 63> Codes;
  unsigned Count = 0;
  unsigned Bits = 0;  // end of block included
};

class BlockCoder {
 public:
  explicit BlockCoder(QualityStep step);

  // Chooses the levels. A lower level than the nearest is taken where the bits it saves outweigh the
  // error it adds.
  void Quantise(ScannedBlock coefficients, CodedBlock& coded) const;

  // Writes what `Quantise` chose, with the end of block.
  static void Write(const CodedBlock& coded, BitWriter& writer);

 private:
  std::uint64_t positions_;  // bit i for scan position i, DC left out
  std::int32_t bitWorth_;    // of one bit against the errors below; 0 where bits do not count
  // By scan position.
  std::array<std::uint32_t, 64> reciprocals_{};  // sixteenths to levels, in 2^-19
  std::array<std::int32_t, 64> errorWeights_{};
};

}  // namespace quorvelant
