#include "codec/colors.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

namespace quorvelant {
namespace {

// One row of the matrix of ITU-R BT.601 in thousandths, with the offset of the plane.
struct Weights {
  int Red;
  int Green;
  int Blue;
  int Offset;
};
constexpr std::array<Weights, 3> ToPlanes{
    {{257, 504, 98, 16'000}, {-148, -291, 439, 128'000}, {439, -368, -71, 128'000}}};

// Each sum of a plane lies between 16 and 240 thousand: no clipping is needed.
std::uint8_t Sample(const Weights& weights, const std::uint8_t* rgb, int half) {
  const int sum = weights.Red * rgb[0] + weights.Green * rgb[1] + weights.Blue * rgb[2] + weights.Offset;
  return static_cast<std::uint8_t>(static_cast<unsigned>(sum + half) / 1000U);
}

// The mean of the 2 by 2 samples at `upper` and `lower`.
using Mean = std::uint8_t (*)(const std::uint8_t* upper, const std::uint8_t* lower);

// Columns first, then rows, each halving cut.
std::uint8_t CutMean(const std::uint8_t* upper, const std::uint8_t* lower) {
  return static_cast<std::uint8_t>(((upper[0] + upper[1]) / 2 + (lower[0] + lower[1]) / 2) / 2);
}

std::uint8_t RoundedMean(const std::uint8_t* upper, const std::uint8_t* lower) {
  return static_cast<std::uint8_t>((upper[0] + upper[1] + lower[0] + lower[1] + 2) / 4);
}

// How the fractions of a step end, in samples and in the means of colour.
struct Rounding {
  int Half;  // thousandths
  Mean OfFour;
};
constexpr Rounding Cut{0, CutMean};
constexpr Rounding Nearest{500, RoundedMean};

Plane FullPlane(const Picture& picture, const Weights& weights, int half) {
  Plane plane(static_cast<unsigned>(picture.Width), static_cast<unsigned>(picture.Height), 0);
  const std::uint8_t* rgb = picture.Pixels.data();
  for (std::uint8_t& sample : plane.Samples) {
    sample = Sample(weights, rgb, half);
    rgb += 3;
  }
  return plane;
}

template <class MeanOfFour>
Plane HalfPlane(const Plane& full, MeanOfFour mean) {
  Plane plane(full.Width / 2, full.Height / 2, 0);
  for (unsigned y = 0; y < plane.Height; ++y) {
    const std::uint8_t* upper = full.Row(2 * y);
    const std::uint8_t* lower = full.Row(2 * y + 1);
    std::uint8_t* row = plane.Row(y);
    for (unsigned x = 0; x < plane.Width; ++x) {
      row[x] = mean(upper + std::size_t{2} * x, lower + std::size_t{2} * x);
    }
  }
  return plane;
}

// Thousandths of Y - 16, Cb - 128 and Cr - 128 in one channel.
struct Shares {
  float Luma;
  float Blue;
  float Red;
};
constexpr std::array<Shares, 3> ToRgb{{{1164, 0, 1596}, {1164, -391, -813}, {1164, 2018, 0}}};

// The colour samples of one row, each as often as it has pixels.
void Spread(const std::uint8_t* samples, bool doubled, Bytes& row) {
  if (!doubled) {
    std::copy_n(samples, row.size(), row.begin());
    return;
  }
  std::uint8_t* target = row.data();
  const std::size_t pairs = row.size() / 2;
  for (std::size_t i = 0; i < pairs; ++i) {
    const std::uint8_t sample = samples[i];
    target[2 * i] = sample;
    target[2 * i + 1] = sample;
  }
  row.back() = samples[(row.size() - 1) / 2];
}

// One channel of a row, rounded and clipped. A float holds the sums of thousandths exactly, and half a
// thousandth more keeps every product clear of the whole numbers: the cut is exact without a division.
void ChannelRow(const Shares& shares, const std::uint8_t* luma, const std::uint8_t* cb,
                const std::uint8_t* cr, std::uint8_t* channel, std::size_t count) {
  const Shares held = shares;  // so that the loop becomes one of vectors
  for (std::size_t x = 0; x < count; ++x) {
    const auto y = static_cast<float>(luma[x] - 16);
    const auto u = static_cast<float>(cb[x] - 128);
    const auto v = static_cast<float>(cr[x] - 128);
    const float sum = held.Luma * y + held.Blue * u + held.Red * v + 500.5F;
    const auto value = static_cast<std::int32_t>(sum * 0.001F);
    channel[x] = static_cast<std::uint8_t>(std::min(std::max(value, 0), 255));
  }
}

}  // namespace

Planes PlanesFromPicture(const Picture& picture, const Rules& rules) {
  assert(picture.Width % 2 == 0 && picture.Height % 2 == 0);
  const Rounding rounding = rules.RoundColours ? Nearest : Cut;
  Planes planes;
  planes.Y() = FullPlane(picture, ToPlanes[0], rounding.Half);
  for (std::size_t i = 1; i < 3; ++i) {
    planes.Of[i] = HalfPlane(FullPlane(picture, ToPlanes[i], rounding.Half), rounding.OfFour);
  }
  return planes;
}

Picture PictureFromPlanes(const Planes& planes) {
  const Plane& luma = planes.Y();
  const bool halfAcross = planes.Of[1].Width < luma.Width;
  const unsigned downShift = planes.Of[1].Height < luma.Height ? 1 : 0;
  Picture picture(static_cast<int>(luma.Width), static_cast<int>(luma.Height));
  Bytes cb(luma.Width);
  Bytes cr(luma.Width);
  std::array<Bytes, 3> channels;
  channels.fill(Bytes(luma.Width));
  for (unsigned y = 0; y < luma.Height; ++y) {
    Spread(planes.Of[1].Row(y >> downShift), halfAcross, cb);
    Spread(planes.Of[2].Row(y >> downShift), halfAcross, cr);
    for (std::size_t i = 0; i < 3; ++i) {
      ChannelRow(ToRgb[i], luma.Row(y), cb.data(), cr.data(), channels[i].data(), luma.Width);
    }
    std::uint8_t* rgb = picture.Row(static_cast<int>(y));
    const std::uint8_t* red = channels[0].data();
    const std::uint8_t* green = channels[1].data();
    const std::uint8_t* blue = channels[2].data();
    for (std::size_t x = 0; x < luma.Width; ++x, rgb += 3) {
      rgb[0] = red[x];
      rgb[1] = green[x];
      rgb[2] = blue[x];
    }
  }
  return picture;
}

}  // namespace quorvelant
