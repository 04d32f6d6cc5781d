#include "codec/dct.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <random>

namespace quorvelant {
namespace {

using Reals = std::array<double, 64>;

double Basis(unsigned frequency, unsigned at) {
  const double scale = frequency == 0 ? std::sqrt(0.125) : 0.5;
  return scale * std::cos((2 * at + 1) * frequency * std::numbers::pi / 16);
}

// out[8j + k] = sum over i of in[8i + j] * basis: twice that transforms and transposes back.
Reals Pass(const Reals& in, bool inverse) {
  Reals out{};
  for (unsigned j = 0; j < 8; ++j) {
    for (unsigned k = 0; k < 8; ++k) {
      for (unsigned i = 0; i < 8; ++i) {
        out[j * 8 + k] += in[i * 8 + j] * (inverse ? Basis(i, k) : Basis(k, i));
      }
    }
  }
  return out;
}

// The transforms as their definitions have them; both blocks stand row by row.
Reals PlainForward(const Reals& samples) {
  return Pass(Pass(samples, false), false);
}
Reals PlainInverse(const Reals& coefficients) {
  return Pass(Pass(coefficients, true), true);
}

unsigned Transposed(unsigned place) {
  return place % 8 * 8 + place / 8;
}

Block ToBlock(const Reals& values, bool transposed) {
  Block block;
  for (unsigned i = 0; i < 64; ++i) {
    block.At[transposed ? Transposed(i) : i] = static_cast<std::int16_t>(values[i]);
  }
  return block;
}

// Errors of the 64 values over many blocks.
struct Accuracy {
  Reals Sum{};
  Reals Squares{};
  double Peak = 0;

  void Add(unsigned place, double error) {
    Peak = std::max(Peak, std::abs(error));
    Sum[place] += error;
    Squares[place] += error * error;
  }

  // The largest error, and for each of the 64 places the mean error and mean square error.
  void ExpectWithin(double peak, double mean, double meanSquare, int blocks) const {
    EXPECT_LE(Peak, peak);
    for (unsigned i = 0; i < 64; ++i) {
      EXPECT_LE(std::abs(Sum[i]) / blocks, mean) << i;
      EXPECT_LE(Squares[i] / blocks, meanSquare) << i;
    }
  }
};

// Full range, faint, and nothing but the two ends: what overflows sums of 16 bits.
TEST(Dct, ForwardIsThePlainTransformInSixteenths) {
  std::mt19937 random(20);  // NOLINT(cert-msc51-cpp)
  const auto within = [&random](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  constexpr int Blocks = 3000;
  Accuracy accuracy;
  for (int count = 0; count < Blocks; ++count) {
    Reals samples{};
    std::generate(samples.begin(), samples.end(), [&]() -> double {
      return count % 3 == 0 ? within(-128, 127) : count % 3 == 1 ? within(-3, 3) : within(0, 1) * 255 - 128;
    });
    if (count < 64) {  // the pattern that makes one coefficient as large as it can be
      Reals one{};
      one[static_cast<unsigned>(count)] = 1;
      const Reals signs = PlainInverse(one);
      std::transform(signs.begin(), signs.end(), samples.begin(),
                     [](double s) { return s < 0 ? -128 : 127; });
    }
    const Reals expected = PlainForward(samples);
    Block coefficients;
    ForwardDct(ToBlock(samples, false), coefficients);
    for (unsigned i = 0; i < 64; ++i) {
      accuracy.Add(i, coefficients.At[Transposed(i)] - 16 * expected[i]);
    }
  }
  accuracy.ExpectWithin(2, 0.2, 0.2, Blocks);
}

TEST(Dct, InverseMeetsIeee1180) {
  constexpr int Blocks = 10000;
  const auto rounded = [](double value, double low, double high) {
    return std::clamp(std::nearbyint(value), low, high);
  };
  for (const auto& [low, high, sign] :
       {std::tuple{256, 255, 1}, {256, 255, -1}, {5, 5, 1}, {5, 5, -1}, {300, 300, 1}, {300, 300, -1}}) {
    std::uint32_t state = 1;
    // The generator that the standard prescribes.
    const auto next = [&state, low = low, high = high] {
      state = state * 1103515245U + 12345U;
      const double unit = static_cast<double>(state & 0x7FFFFFFEU) / static_cast<double>(0x7FFFFFFF);
      return static_cast<int>(unit * (low + high + 1)) - low;
    };
    Accuracy accuracy;
    for (int count = 0; count < Blocks; ++count) {
      Reals block{};
      std::generate(block.begin(), block.end(), [&, sign = sign] { return sign * next(); });
      block = PlainForward(block);
      for (double& coefficient : block) {
        coefficient = rounded(coefficient, -2048, 2047);
      }
      const Reals reference = PlainInverse(block);
      Block output;
      InverseDct(ToBlock(block, true), output);
      for (unsigned i = 0; i < 64; ++i) {
        accuracy.Add(i, std::clamp<int>(output.At[i], -256, 255) - rounded(reference[i], -256, 255));
      }
    }
    accuracy.ExpectWithin(1, 0.015, 0.06, Blocks);
    const double sum = std::reduce(accuracy.Sum.begin(), accuracy.Sum.end());
    EXPECT_LE(std::abs(sum) / (64 * Blocks), 0.0015);
    EXPECT_LE(std::reduce(accuracy.Squares.begin(), accuracy.Squares.end()) / (64 * Blocks), 0.02);
  }
  Block output;
  InverseDct({}, output);
  EXPECT_EQ(output.At, Block{}.At);
}

}  // namespace
}  // namespace quorvelant
