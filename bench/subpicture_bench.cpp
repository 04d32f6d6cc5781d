// Subpicture units: full screens of four colours, and captions.
#include <benchmark/benchmark.h>

#include <random>

#include "picture/bmp.h"
#include "subpicture/spu_encoder.h"

namespace quorvelant {
namespace {

constexpr std::uint32_t Colors[] = {0x010101, 0xFFFFFF, 0x808080, 0x00FF00};

// Rows of runs of 1 to 2 * `meanRun` pixels.
Picture Paint(int width, int height, int meanRun) {
  Picture picture(width, height);
  std::mt19937 random(1);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width;) {
      const std::uint32_t color = Colors[random() % 4];
      for (int end = std::min(width, x + 1 + static_cast<int>(random() % static_cast<unsigned>(2 * meanRun)));
           x < end; ++x) {
        picture.Set(x, y, color);
      }
    }
  }
  return picture;
}

SPURecord Record() {
  SPURecord record;
  record.Conversion = {Colors[1], Colors[2], Colors[3]};
  record.StopDelay = 200;
  return record;
}

void Encode(benchmark::State& state, int width, int height, int meanRun) {
  const Picture picture = Paint(width, height, meanRun);
  const SPURecord record = Record();
  for (auto _ : state) {
    const auto bitmap = EncodeSPUBitmap(picture, record.Conversion, 0, 0, false, Rules::Players);
    benchmark::DoNotOptimize(BuildSPU(record, *bitmap));
  }
  state.SetItemsProcessed(state.iterations());
}

// From the bytes of the bitmap's file, as authoring does it.
void EncodeFile(benchmark::State& state, int width, int height, int meanRun) {
  const Bytes file = WriteBmp(Paint(width, height, meanRun));
  const SPURecord record = Record();
  for (auto _ : state) {
    const Picture picture = ReadBmp(file, "bench.bmp");
    const auto bitmap = EncodeSPUBitmap(picture, record.Conversion, 0, 0, false, Rules::Players);
    benchmark::DoNotOptimize(BuildSPU(record, *bitmap));
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK_CAPTURE(Encode, full_screen, 720, 576, 8);
BENCHMARK_CAPTURE(Encode, full_screen_noise, 720, 576, 1);
BENCHMARK_CAPTURE(Encode, caption, 600, 80, 8);
BENCHMARK_CAPTURE(EncodeFile, full_screen, 720, 576, 8);
BENCHMARK_CAPTURE(EncodeFile, caption, 600, 80, 8);

}  // namespace
}  // namespace quorvelant
