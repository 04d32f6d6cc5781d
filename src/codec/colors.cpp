#include "codec/colors.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "picture/bmp.h"

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

// A piece of a row: the samples of each pixel less their offsets, as numbers to count with.
constexpr std::size_t MostPixels = 64;
struct RowPiece {
  std::array<float, MostPixels> Luma;
  std::array<float, MostPixels> Cb;
  std::array<float, MostPixels> Cr;
};
using Channel = std::array<std::uint8_t, MostPixels>;

// One channel of a piece, rounded and clipped. A float holds the sums of thousandths exactly, and half a
// thousandth more keeps every product clear of the whole numbers: the cut is exact without a division.
Channel ChannelOf(const Shares& shares, const RowPiece& piece) {
  Channel channel;
  for (std::size_t x = 0; x < MostPixels; ++x) {
    const float sum = shares.Luma * piece.Luma[x] + shares.Blue * piece.Cb[x] + shares.Red * piece.Cr[x];
    const auto value = static_cast<std::int32_t>((sum + 500.5F) * 0.001F);
    channel[x] = static_cast<std::uint8_t>(std::min(std::max(value, 0), 255));
  }
  return channel;
}

// The samples from `first` on, each as often as it has pixels.
void Spread(const std::uint8_t* samples, std::size_t first, std::size_t count, bool doubled,
            std::array<float, MostPixels>& piece) {
  constexpr int Neutral = NeutralChroma;
  if (doubled) {
    samples += first / 2;  // pieces begin at even columns
    const std::size_t pairs = count / 2;
    for (std::size_t x = 0; x < pairs; ++x) {
      piece[2 * x] = piece[2 * x + 1] = static_cast<float>(samples[x] - Neutral);
    }
    if (count % 2 != 0) {
      piece[count - 1] = static_cast<float>(samples[pairs] - Neutral);
    }
    return;
  }
  for (std::size_t x = 0; x < count; ++x) {
    piece[x] = static_cast<float>(samples[first + x] - Neutral);
  }
}

// The places of the channels within a pixel's three bytes.
struct PixelOrder {
  std::size_t Red, Green, Blue;
};

// The pixels of row `y`, three bytes each.
void PutRow(const Planes& planes, unsigned y, const PixelOrder order, std::uint8_t* target) {
  const Plane& luma = planes.Y();
  const bool halfAcross = planes.Of[1].Width < luma.Width;
  const unsigned colorRow = planes.Of[1].Height < luma.Height ? y / 2 : y;
  RowPiece piece{};
  for (std::size_t first = 0; first < luma.Width; first += MostPixels) {
    const std::size_t count = std::min(MostPixels, luma.Width - first);
    const std::uint8_t* samples = luma.Row(y) + first;
    for (std::size_t x = 0; x < count; ++x) {
      piece.Luma[x] = static_cast<float>(samples[x] - BlackLuma);
    }
    Spread(planes.Of[1].Row(colorRow), first, count, halfAcross, piece.Cb);
    Spread(planes.Of[2].Row(colorRow), first, count, halfAcross, piece.Cr);
    const Channel red = ChannelOf(ToRgb[0], piece);
    const Channel green = ChannelOf(ToRgb[1], piece);
    const Channel blue = ChannelOf(ToRgb[2], piece);
    for (std::size_t x = 0; x < count; ++x, target += 3) {
      target[order.Red] = red[x];
      target[order.Green] = green[x];
      target[order.Blue] = blue[x];
    }
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
  Picture picture(static_cast<int>(luma.Width), static_cast<int>(luma.Height));
  for (unsigned y = 0; y < luma.Height; ++y) {
    PutRow(planes, y, {0, 1, 2}, picture.Row(static_cast<int>(y)));
  }
  return picture;
}

Bytes BitmapFromPlanes(const Planes& planes) {
  const Plane& luma = planes.Y();
  BmpImage bitmap(static_cast<int>(luma.Width), static_cast<int>(luma.Height));
  for (unsigned y = 0; y < luma.Height; ++y) {
    PutRow(planes, y, {2, 1, 0}, bitmap.Row(static_cast<int>(y)));
  }
  return bitmap.Take();
}

}  // namespace quorvelant
