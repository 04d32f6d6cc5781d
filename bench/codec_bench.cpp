// Stills coded and intra pictures decoded a second, full size, on one core.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "codec/colors.h"
#include "codec/intra_decoder.h"
#include "codec/intra_encoder.h"
#include "codec/still_encoder.h"

namespace quorvelant {
namespace {

constexpr int Width = 720;
constexpr int Height = 576;

// Shades and texture under grain of `grain` steps: the more, the larger the picture at each scale.
Picture Scene(unsigned grain) {
  std::mt19937 random(1);
  Picture picture(Width, Height);
  for (int y = 0; y < Height; ++y) {
    for (int x = 0; x < Width; ++x) {
      for (std::size_t i = 0; i < 3; ++i) {
        const double shade = 110 + 60 * std::sin(x * 0.03 + static_cast<double>(i)) * std::cos(y * 0.02) +
                             20 * std::sin(x * 0.9) * std::sin(y * 0.7);
        picture.Row(y)[static_cast<std::size_t>(x) * 3 + i] =
            static_cast<std::uint8_t>(shade + static_cast<double>(random() % (grain + 1)));
      }
    }
  }
  return picture;
}

void EncodeStill(benchmark::State& state) {
  const Picture picture = Scene(static_cast<unsigned>(state.range(0)));
  std::size_t bytes = 0;
  for (auto round : state) {
    bytes = EncodeBitmap(picture, {}, Rules::Players).size();
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["bytes"] = static_cast<double>(bytes);
}
// Far below the limit, at the limit, and noise that needs a coarse scale.
BENCHMARK(EncodeStill)->Arg(2)->Arg(12)->Arg(60)->Unit(benchmark::kMillisecond);

// An intra picture of at most `bytes`.
Bytes IntraPicture(std::size_t bytes) {
  const Picture scene = Scene(12);
  Bytes picture = EncodeBitmap(scene, {}, Rules::Players);
  picture.resize(StillHeaderBytes);
  const Bytes slices = EncodeIntraSlices(PlanesFromPicture(scene, Rules::Players), bytes);
  picture.insert(picture.end(), slices.begin(), slices.end());
  return picture;
}

void DecodePlanes(benchmark::State& state) {
  const Bytes stream = IntraPicture(static_cast<std::size_t>(state.range(0)));
  for (auto round : state) {
    benchmark::DoNotOptimize(DecodeIntraPicture(stream, true));
  }
  state.SetItemsProcessed(state.iterations());
}

void DecodeBitmap(benchmark::State& state) {
  const Bytes stream = IntraPicture(static_cast<std::size_t>(state.range(0)));
  for (auto round : state) {
    benchmark::DoNotOptimize(DecodeIFrame(stream, true));
  }
  state.SetItemsProcessed(state.iterations());
}
// As large as in films, and as large as a still can be.
BENCHMARK(DecodePlanes)->Arg(80'000)->Arg(199'000)->Unit(benchmark::kMillisecond);
BENCHMARK(DecodeBitmap)->Arg(80'000)->Arg(199'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvelant
