// The discrete cosine transform of 8 by 8 blocks and its inverse, in whole numbers: the same bits on
// every machine.
#pragma once

#include <array>
#include <cstdint>

namespace quorvelant {

// Samples stand row by row, coefficients column by column (see `ColumnMajor`).
struct alignas(32) Block {
  std::array<std::int16_t, 64> At{};
};

// Fraction of the forward transform's coefficients: they come in sixteenths.
inline constexpr int CoefficientFractionBits = 4;

// Samples of -128 to 127: 16 bits hold every coefficient that these can have.
void ForwardDct(const Block& samples, Block& coefficients);

// Whole coefficients of -2048 to 2047, as dequantised. Meets the accuracy demanded by IEEE 1180.
// Coefficients that no block of samples has may wrap around; nothing else happens.
void InverseDct(const Block& coefficients, Block& samples);

}  // namespace quorvelant
