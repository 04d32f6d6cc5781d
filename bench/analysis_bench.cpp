// Start code search against a plain loop, and index building against reading the same file. Each figure
// stands beside its limit from the same run.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

#include "analysis/picture_index.h"
#include "base/silent_ui.h"
#include "disc/start_code_search.h"

namespace quorvelant {
namespace {

// Coded bytes as a film of 6 Mbit/s has them: slices of 830 bytes, 36 a picture, a group each 12 pictures.
Bytes FilmBytes(std::size_t bytes) {
  constexpr std::size_t SliceBytes = 830;
  std::mt19937_64 random(1);
  Bytes film(bytes);
  for (std::uint8_t& byte : film) {
    byte = static_cast<std::uint8_t>(random());
  }
  const auto put = [&film](std::size_t at, std::initializer_list<std::uint8_t> code) {
    std::copy(code.begin(), code.end(), film.begin() + static_cast<std::ptrdiff_t>(at));
  };
  for (std::size_t slice = 0; (slice + 1) * SliceBytes <= bytes; ++slice) {
    const std::size_t at = slice * SliceBytes;
    if (slice % (36 * 12) == 0) {
      put(at, {0, 0, 1, 0xB3, 0x2D, 0x02, 0x40, 0x23, 0, 0, 1, 0xB8, 0,    8,    0,    0x40,
               0, 0, 1, 0x00, 0,    0x08, 0,    0,    0, 0, 1, 0xB5, 0x8F, 0xFF, 0xF7, 0x80});
    } else if (slice % 36 == 0) {
      put(at, {0, 0, 1, 0x00, 0, 0x10, 0, 0, 0, 0, 1, 0xB5, 0x8F, 0xFF, 0xF7, 0x80});
    } else {
      put(at, {0, 0, 1, static_cast<std::uint8_t>(slice % 36)});
    }
  }
  return film;
}

template <std::size_t (*Find)(ByteView, std::size_t)>
void Search(benchmark::State& state) {
  const Bytes film = FilmBytes(std::size_t{64} << 20);
  std::size_t found = 0;
  for (auto step : state) {
    for (std::size_t at = Find(film, 0); at != NoStartCode; at = Find(film, at + 1)) {
      ++found;
    }
  }
  benchmark::DoNotOptimize(found);
  state.counters["GB/s"] =
      benchmark::Counter(static_cast<double>(film.size()) * static_cast<double>(state.iterations()) / 1e9,
                         benchmark::Counter::kIsRate);
  if (Find == FindStartCode) {
    state.counters["limit_GB/s"] = 5;
  }
}
BENCHMARK(Search<FindStartCode>)->Name("StartCodes/fast")->Unit(benchmark::kMillisecond);
BENCHMARK(Search<FindStartCodePlainly>)->Name("StartCodes/plain")->Unit(benchmark::kMillisecond);

// Seconds of processor used so far: the file is in the page cache, so that is what either way costs, and
// other programs on the machine do not count.
double ProcessorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void ReadPlainly(const std::string& file) {
  Bytes window(std::size_t{1} << 20);
  const int handle = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  while (read(handle, window.data(), window.size()) > 0) {
  }
  close(handle);
}

// The kernel's mark of the most memory this program held since the mark was last reset.
void ResetPeakMemory() {
  std::ofstream("/proc/self/clear_refs") << "5";
}
double PeakMebibytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) {
      return std::strtod(line.c_str() + 6, nullptr) / 1024;
    }
  }
  return 0;
}

// A file of a gigabyte in the page cache, for as long as it lives.
class GigabyteFile {
 public:
  GigabyteFile() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvelant-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("no temporary folder could be made");
    }
    folder_ = pattern;
    const Bytes film = FilmBytes(std::size_t{432} * 830 * 16);  // whole groups
    std::ofstream out(Name(), std::ios::binary);
    for (std::size_t written = 0; written < 1'000'000'000; written += film.size()) {
      out.write(reinterpret_cast<const char*>(film.data()), static_cast<std::streamsize>(film.size()));
    }
  }
  GigabyteFile(const GigabyteFile&) = delete;
  GigabyteFile& operator=(const GigabyteFile&) = delete;
  ~GigabyteFile() { std::filesystem::remove_all(folder_); }
  std::string Name() const { return (folder_ / "film.m2v").string(); }

 private:
  std::filesystem::path folder_;
};

// The middle of some values, and the ends.
struct Spread {
  explicit Spread(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    Least = values.front();
    Middle = values[values.size() / 2];
    Most = values.back();
  }
  double Least, Middle, Most;
};

// `ratio`: the index's time over that of reading the file with 1 MB reads, the middle of pairs that are
// measured one right after the other.
void IndexAgainstReading(benchmark::State& state) {
  constexpr int Pairs = 9;
  const GigabyteFile film;
  SilentUi ui;
  ReadPlainly(film.Name());
  std::vector<double> index;
  std::vector<double> ratios;
  ResetPeakMemory();
  for (auto step : state) {
    for (int pair = 0; pair < Pairs; ++pair) {
      const double start = ProcessorSeconds();
      ReadPlainly(film.Name());
      const double between = ProcessorSeconds();
      IndexStore store;
      benchmark::DoNotOptimize(BuildPictureIndex({{film.Name(), false}}, "", store, ui, true));
      index.push_back(ProcessorSeconds() - between);
      ratios.push_back(index.back() / (between - start));
    }
  }
  const Spread ratio(ratios);
  state.counters["index_s"] = Spread(index).Middle;
  state.counters["ratio"] = ratio.Middle;
  state.counters["ratio_least"] = ratio.Least;
  state.counters["ratio_most"] = ratio.Most;
  state.counters["limit"] = 1.5;
  state.counters["peak_MiB"] = PeakMebibytes();
  state.counters["limit_MiB"] = 16;
}
BENCHMARK(IndexAgainstReading)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvelant
