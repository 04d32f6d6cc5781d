#include "codec/dct.h"

namespace quorvelant {
namespace {

// sqrt(2) * cos(k * pi / 16) in 13 bits. One pass therefore gains sqrt(8), both gain 8. With factors of
// 16 bits and sums of 32 each product is one widening multiplication, and no sum of eight can overflow.
constexpr int FactorBits = 13;
constexpr std::int16_t C1 = 11363;
constexpr std::int16_t C2 = 10703;
constexpr std::int16_t C3 = 9633;
constexpr std::int16_t C5 = 6436;
constexpr std::int16_t C6 = 4433;
constexpr std::int16_t C7 = 2260;

// What the first pass keeps below the binary point for the second. The inverse leaves the coefficients of
// coarse quantisers, which no block of samples has, room to overshoot four times.
constexpr int ForwardGuardBits = 3;
constexpr int InverseGuardBits = 2;
constexpr int GainBits = 3;

template <int Shift>
std::int16_t Rounded(std::int32_t sum) {
  return static_cast<std::int16_t>((sum + (1 << (Shift - 1))) >> Shift);
}

// Each pass transforms the eight columns of `in` at once: a loop that compiles to vector instructions.
template <int Shift>
void InversePass(const Block& in, Block& out) {
  for (unsigned lane = 0; lane < 8; ++lane) {
    const auto x = [&in, lane](unsigned row) -> std::int32_t { return in.At[row * 8 + lane]; };
    const std::int32_t sum = (x(0) + x(4)) * (1 << FactorBits);
    const std::int32_t difference = (x(0) - x(4)) * (1 << FactorBits);
    const std::int32_t outer = x(2) * C2 + x(6) * C6;
    const std::int32_t inner = x(2) * C6 - x(6) * C2;
    const std::array<std::int32_t, 4> even{sum + outer, difference + inner, difference - inner, sum - outer};
    const std::array<std::int32_t, 4> odd{
        x(1) * C1 + x(3) * C3 + x(5) * C5 + x(7) * C7, x(1) * C3 - x(3) * C7 - x(5) * C1 - x(7) * C5,
        x(1) * C5 - x(3) * C1 + x(5) * C7 + x(7) * C3, x(1) * C7 - x(3) * C5 + x(5) * C3 - x(7) * C1};
    for (unsigned k = 0; k < 4; ++k) {
      out.At[k * 8 + lane] = Rounded<Shift>(even[k] + odd[k]);
      out.At[(7 - k) * 8 + lane] = Rounded<Shift>(even[k] - odd[k]);
    }
  }
}

template <int Shift>
void ForwardPass(const Block& in, Block& out) {
  for (unsigned lane = 0; lane < 8; ++lane) {
    const auto x = [&in, lane](unsigned row) { return in.At[row * 8 + lane]; };
    // 16 bits hold the sums: the first pass takes 8 bits in, the second at most 14.
    const auto plus = [](std::int16_t a, std::int16_t b) { return static_cast<std::int16_t>(a + b); };
    const auto minus = [](std::int16_t a, std::int16_t b) { return static_cast<std::int16_t>(a - b); };
    const std::int16_t s0 = plus(x(0), x(7));
    const std::int16_t s1 = plus(x(1), x(6));
    const std::int16_t s2 = plus(x(2), x(5));
    const std::int16_t s3 = plus(x(3), x(4));
    const std::int16_t d0 = minus(x(0), x(7));
    const std::int16_t d1 = minus(x(1), x(6));
    const std::int16_t d2 = minus(x(2), x(5));
    const std::int16_t d3 = minus(x(3), x(4));
    const std::int16_t outer = minus(s0, s3);
    const std::int16_t inner = minus(s1, s2);
    const std::array<std::int32_t, 8> sums{(s0 + s1 + s2 + s3) * (1 << FactorBits),
                                           d0 * C1 + d1 * C3 + d2 * C5 + d3 * C7,
                                           outer * C2 + inner * C6,
                                           d0 * C3 - d1 * C7 - d2 * C1 - d3 * C5,
                                           (s0 - s1 - s2 + s3) * (1 << FactorBits),
                                           d0 * C5 - d1 * C1 + d2 * C7 + d3 * C3,
                                           outer * C6 - inner * C2,
                                           d0 * C7 - d1 * C5 + d2 * C3 - d3 * C1};
    for (unsigned k = 0; k < 8; ++k) {
      out.At[k * 8 + lane] = Rounded<Shift>(sums[k]);
    }
  }
}

void Transpose(const Block& in, Block& out) {
  for (unsigned row = 0; row < 8; ++row) {
    for (unsigned column = 0; column < 8; ++column) {
      out.At[column * 8 + row] = in.At[row * 8 + column];
    }
  }
}

}  // namespace

void ForwardDct(const Block& samples, Block& coefficients) {
  Block columns;
  Block rows;
  ForwardPass<FactorBits - ForwardGuardBits>(samples, columns);
  Transpose(columns, rows);
  ForwardPass<FactorBits + ForwardGuardBits + GainBits - CoefficientFractionBits>(rows, coefficients);
}

void InverseDct(const Block& coefficients, Block& samples) {
  Block columns;
  Block rows;
  InversePass<FactorBits - InverseGuardBits>(coefficients, columns);
  Transpose(columns, rows);
  InversePass<FactorBits + InverseGuardBits + GainBits>(rows, samples);
}

}  // namespace quorvelant
