#include "test_pictures.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

namespace quorvelant {

Picture PhotographLike(int width, int height, unsigned seed) {
  std::mt19937 random(seed);
  const auto unit = [&random] { return static_cast<double>(random()) / 4294967296.0; };
  struct Disc {
    double X, Y, Radius, Texture;
    std::array<double, 3> Colour;
  };
  std::vector<Disc> discs(24);
  for (Disc& disc : discs) {
    disc = {unit() * width, unit() * height, 20 + unit() * 120, 0.1 + unit(), {unit(), unit(), unit()}};
  }
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      std::array<double, 3> colour{0.3 + 0.4 * x / width, 0.4, 0.8 - 0.5 * y / height};
      for (const Disc& disc : discs) {
        const double distance = std::hypot(x - disc.X, y - disc.Y);
        if (distance < disc.Radius) {
          const double shade = 0.7 - 0.4 * distance / disc.Radius +
                               0.1 * std::sin(x * disc.Texture) * std::cos(y * disc.Texture * 0.7);
          std::transform(disc.Colour.begin(), disc.Colour.end(), colour.begin(),
                         [shade](double channel) { return channel * 0.5 + shade * 0.5; });
        }
      }
      const double grain = (unit() + unit() + unit() - 1.5) * 4;
      std::uint8_t* pixel = picture.Row(y) + std::size_t{3} * static_cast<std::size_t>(x);
      for (std::size_t i = 0; i < 3; ++i) {
        pixel[i] = static_cast<std::uint8_t>(std::clamp(colour[i] * 255 + grain, 0.0, 255.0));
      }
    }
  }
  return picture;
}

Picture Noise(int width, int height, unsigned seed) {
  std::mt19937 random(seed);
  Picture picture(width, height);
  for (std::uint8_t& channel : picture.Pixels) {
    channel = static_cast<std::uint8_t>(random());
  }
  return picture;
}

double Psnr(const Planes& a, const Planes& b) {
  double squaredError = 0;
  double samples = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t k = 0; k < a.Of[i].Samples.size(); ++k) {
      const double difference = a.Of[i].Samples[k] - b.Of[i].Samples[k];
      squaredError += difference * difference;
      ++samples;
    }
  }
  return 10 * std::log10(255.0 * 255.0 * samples / squaredError);
}

int LargestDifference(const Planes& a, const Planes& b) {
  int largest = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    if (a.Of[i].Width != b.Of[i].Width || a.Of[i].Height != b.Of[i].Height) {
      return 256;
    }
    for (std::size_t k = 0; k < a.Of[i].Samples.size(); ++k) {
      largest = std::max(largest, std::abs(a.Of[i].Samples[k] - b.Of[i].Samples[k]));
    }
  }
  return largest;
}

}  // namespace quorvelant
