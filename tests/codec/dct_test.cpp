#include "codec/dct.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

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

// The generator that IEEE 1180 prescribes.
class Ieee1180Random {
 public:
  int Next(int low, int high) {
    state_ = state_ * 1103515245U + 12345U;
    const double unit = static_cast<double>(state_ & 0x7FFFFFFEU) / static_cast<double>(0x7FFFFFFF);
    return static_cast<int>(unit * (low + high + 1)) - low;
  }

 private:
  std::uint32_t state_ = 1;
};

struct Accuracy {
  std::array<double, 64> Sum{};
  std::array<double, 64> Squares{};
  int Peak = 0;
};

Accuracy Measure(int low, int high, int sign, int blocks) {
  Ieee1180Random random;
  Accuracy accuracy;
  for (int count = 0; count < blocks; ++count) {
    Reals samples{};
    std::generate(samples.begin(), samples.end(), [&] { return sign * random.Next(low, high); });
    const Reals exact = Pass(Pass(samples, false), false);
    Block coefficients;
    Reals rounded{};
    for (unsigned i = 0; i < 64; ++i) {
      rounded[i] = std::clamp(std::nearbyint(exact[i]), -2048.0, 2047.0);
      coefficients.At[i % 8 * 8 + i / 8] = static_cast<std::int16_t>(rounded[i]);
    }
    const Reals reference = Pass(Pass(rounded, true), true);
    Block output;
    InverseDct(coefficients, output);
    for (unsigned i = 0; i < 64; ++i) {
      const auto expected = static_cast<int>(std::clamp(std::nearbyint(reference[i]), -256.0, 255.0));
      const int error = std::clamp<int>(output.At[i], -256, 255) - expected;
      accuracy.Peak = std::max(accuracy.Peak, std::abs(error));
      accuracy.Sum[i] += error;
      accuracy.Squares[i] += error * error;
    }
  }
  return accuracy;
}

TEST(Dct, InverseMeetsIeee1180) {
  constexpr int Blocks = 10000;
  for (const auto& [low, high] : {std::pair{256, 255}, {5, 5}, {300, 300}}) {
    for (const int sign : {1, -1}) {
      const Accuracy accuracy = Measure(low, high, sign, Blocks);
      EXPECT_LE(accuracy.Peak, 1);
      double sum = 0;
      double squares = 0;
      for (unsigned i = 0; i < 64; ++i) {
        EXPECT_LE(accuracy.Squares[i] / Blocks, 0.06);
        EXPECT_LE(std::abs(accuracy.Sum[i]) / Blocks, 0.015);
        sum += accuracy.Sum[i];
        squares += accuracy.Squares[i];
      }
      EXPECT_LE(squares / (64 * Blocks), 0.02);
      EXPECT_LE(std::abs(sum) / (64 * Blocks), 0.0015);
    }
  }
  Block zero;
  Block output;
  output.At.fill(7);
  InverseDct(zero, output);
  EXPECT_EQ(output.At, zero.At);
}

}  // namespace
}  // namespace quorvelant
