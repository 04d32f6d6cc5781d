#include "codec/block_coder.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

#include "codec/tables.h"

namespace quorvelant {
namespace {

// Levels are weighed in 1/256.
constexpr unsigned LevelFractionBits = 8;
constexpr std::uint32_t OneLevel = 1U << LevelFractionBits;
constexpr unsigned ReciprocalBits = 19;
constexpr int LargestLevel = 2047;

constexpr unsigned CodedRuns = 32;
constexpr unsigned CodedLevels = 41;
constexpr std::uint8_t EscapeBits = 24;

// Code and sign of each run and level; 0 bits where only an escape will do.
struct CodeBook {
  std::array<std::array<Vlc, CodedLevels>, CodedRuns> Words{};

  CodeBook() {
    for (const RunLevelVlc& code : DctTableB15.Codes) {
      Words[code.Run][code.Level] = {static_cast<std::uint16_t>(code.Word.Code << 1),
                                     static_cast<std::uint8_t>(code.Word.Bits + 1)};
    }
  }

  static const CodeBook& Get() {
    static const CodeBook book;
    return book;
  }
};

// A coefficient left out lengthens the run of the next one, which takes back some of its bits.
constexpr std::uint8_t LongerRunBits = 2;

// Bits of each run and of levels up to the last that any run codes without escape.
struct CostTable {
  std::array<std::array<std::uint8_t, CodedLevels + 1>, 64> Bits{};

  CostTable() {
    for (auto& row : Bits) {
      row.fill(EscapeBits);
      row[0] = LongerRunBits;
    }
    for (const RunLevelVlc& code : DctTableB15.Codes) {
      Bits[code.Run][code.Level] = static_cast<std::uint8_t>(code.Word.Bits + 1);
    }
  }

  static const CostTable& Get() {
    static const CostTable table;
    return table;
  }

  int Of(unsigned run, unsigned level) const { return Bits[run][std::min(level, CodedLevels)]; }
};

// The squared error, in squares of the step of weight 1, that one bit should save. At high rates a bit more
// cuts the error of a coefficient, a twelfth of its squared step, to a quarter: ln 2 / 6 of the squared step,
// which is 40 at a weight of 19. Larger and smaller figures give less on pictures, too.
constexpr int ErrorOfOneBit = 40;

// Bit i is set where entry i is 1, others being 0.
std::uint64_t MaskOf(const std::array<std::uint8_t, 64>& flags) {
  std::uint64_t mask = 0;
  for (unsigned i = 0; i < 64; i += 8) {
    std::uint64_t eight = 0;
    for (unsigned k = 0; k < 8; ++k) {
      eight |= std::uint64_t{flags[i + k]} << (8 * k);
    }
    // The product brings the low bits of the eight bytes together in the top byte.
    mask |= (eight * 0x0102040810204080U >> 56) << i;
  }
  return mask;
}

}  // namespace

BlockCoder::BlockCoder(QualityStep step)
    : positions_((step.Positions() == 64 ? 0 : std::uint64_t{1} << step.Positions()) - 2),
      bitWorth_(step.WeighsBits() ? ErrorOfOneBit * static_cast<int>(OneLevel) : 0) {
  const unsigned scale = NonLinearScale[step.ScaleCode()];
  for (unsigned i = 0; i < 64; ++i) {
    const unsigned weight = DefaultIntraMatrix[ZigzagScan[i]];
    reciprocals_[i] = ((1U << ReciprocalBits) + weight * scale / 2) / (weight * scale);
    errorWeights_[i] = static_cast<std::int32_t>(weight * weight);
  }
}

void BlockCoder::Quantise(ScannedBlock coefficients, CodedBlock& coded) const {
  const CostTable& costs = CostTable::Get();
  std::array<std::uint32_t, 64> levels;  // magnitudes in 1/256
  std::array<std::uint8_t, 64> counts;   // 1 where the nearest level is not 0
  for (unsigned i = 0; i < 64; ++i) {
    const auto magnitude = static_cast<std::uint32_t>(std::abs(coefficients[i]));
    levels[i] = (magnitude * reciprocals_[i]) >> (ReciprocalBits - LevelFractionBits);
    counts[i] = levels[i] >= OneLevel / 2 ? 1 : 0;
  }
  unsigned count = 0;
  int bits = DctTableB15.EndOfBlock.Bits;
  unsigned last = 0;
  // Branches on levels could not be foreseen, so the body has none.
  for (std::uint64_t left = MaskOf(counts) & positions_; left != 0; left &= left - 1) {
    const auto i = static_cast<unsigned>(std::countr_zero(left));
    const unsigned run = i - last - 1;
    const unsigned nearest = (levels[i] + OneLevel / 2) / OneLevel;
    const int cost = costs.Of(run, nearest);
    const int lowerCost = costs.Of(run, nearest - 1);
    // (1 + d)^2 - d^2 in steps, where d is what the lower level lies off less 1.
    const int addedError = static_cast<int>(2 * levels[i] - 2 * nearest * OneLevel + OneLevel);
    const bool lower = addedError * errorWeights_[i] < bitWorth_ * (cost - lowerCost);
    const unsigned level = nearest - (lower ? 1 : 0);
    const int limited = std::min(static_cast<int>(level), LargestLevel);
    coded.Codes[count] = {static_cast<std::uint8_t>(run),
                          static_cast<std::int16_t>(coefficients[i] < 0 ? -limited : limited)};
    const bool kept = level > 0;
    count += kept ? 1 : 0;
    bits += kept ? (lower ? lowerCost : cost) : 0;
    last = kept ? i : last;
  }
  coded.Count = count;
  coded.Bits = static_cast<unsigned>(bits);
}

void BlockCoder::Write(const CodedBlock& coded, BitWriter& writer) {
  const CodeBook& book = CodeBook::Get();
  for (const auto& [run, level] : std::span(coded.Codes).first(coded.Count)) {
    const auto magnitude = static_cast<unsigned>(std::abs(level));
    const Vlc word = run < CodedRuns && magnitude < CodedLevels ? book.Words[run][magnitude] : Vlc{0, 0};
    if (word.Bits != 0) {
      writer.Put(word.Bits, word.Code | (level < 0 ? 1U : 0U));
    } else {
      writer.Put(DctEscape.Bits, DctEscape.Code);
      writer.Put(6, run);
      writer.Put(12, static_cast<std::uint32_t>(level) & 0xFFF);
    }
  }
  writer.Put(DctTableB15.EndOfBlock.Bits, DctTableB15.EndOfBlock.Code);
}

}  // namespace quorvelant
