// The constant tables of ISO/IEC 13818-2 (and 11172-2) that an intra picture needs: codes, scans,
// quantiser matrices and scales.
#pragma once

#include <array>
#include <cstdint>

namespace quorvelant {

// One variable-length code: the low `Bits` bits of `Code`.
struct Vlc {
  std::uint16_t Code;
  std::uint8_t Bits;
};

// A code of tables B.14 and B.15: `Run` zeros, then a coefficient of magnitude `Level`. The sign bit
// follows the code.
struct RunLevelVlc {
  std::uint8_t Run;
  std::uint8_t Level;
  Vlc Word;
};

struct DctTable {
  std::array<RunLevelVlc, 111> Codes;
  Vlc EndOfBlock;
};

// Escape is the same code in both tables; 6 bits of run and the level follow (7.2.2.3).
inline constexpr Vlc DctEscape{0x01, 6};

// Tables B.14 (intra_vlc_format 0) and B.15 (intra_vlc_format 1).
extern const DctTable DctTableB14;
extern const DctTable DctTableB15;

// Tables B.12 and B.13: dct_dc_size, by size 0 to 11.
extern const std::array<Vlc, 12> DcSizeLuma;
extern const std::array<Vlc, 12> DcSizeChroma;

// Table B.1: macroblock_address_increment, entry i for an increment of i + 1.
extern const std::array<Vlc, 33> AddressIncrement;
inline constexpr Vlc AddressEscape{0x08, 11};
// ISO/IEC 11172-2 only.
inline constexpr Vlc MacroblockStuffing{0x0F, 11};

// Table B.10: the magnitude 0 to 16 of motion_code; above 0 a sign bit follows.
extern const std::array<Vlc, 17> MotionCode;

// An 8 by 8 array in the stream's own order: scan position in, or row * 8 + column.
using Matrix = std::array<std::uint8_t, 64>;

// Figures 7-2 and 7-3: the row * 8 + column of each scan position.
extern const Matrix ZigzagScan;
extern const Matrix AlternateScan;

// 6.3.11: the default intra matrix, by row * 8 + column. The default non-intra matrix is 64 times 16.
extern const Matrix DefaultIntraMatrix;
inline constexpr std::uint8_t DefaultNonIntraWeight = 16;

// Table 7-6 for q_scale_type 1: quantiser_scale by quantiser_scale_code. Type 0 is twice the code.
extern const std::array<std::uint8_t, 32> NonLinearScale;

// Coefficients in the coders stand column by column: horizontal frequency u and vertical frequency v
// at 8u + v, which saves the transforms a transposition. This is the place of row * 8 + column.
constexpr std::uint8_t ColumnMajor(unsigned rowMajor) {
  return static_cast<std::uint8_t>((rowMajor & 7) * 8 + rowMajor / 8);
}

}  // namespace quorvelant
