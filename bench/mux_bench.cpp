// The multiplexer alone, beside a plain copy of the bytes it writes: the same folder, the same run.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "base/silent_ui.h"
#include "mux/mux_track.h"
#include "picture/bmp.h"

namespace quorvelant {
namespace {

constexpr int Groups = 800;                 // of 12 PAL pictures: 384 seconds
constexpr std::size_t GroupBytes = 390000;  // 6.5 Mbit/s
constexpr std::size_t SoundFrames = 12000;  // of 1792 bytes: AC3 at 448 kbit/s

// Sources and results, gone with the program.
class Folder {
 public:
  Folder() : path_(std::filesystem::temp_directory_path() / ("mux_bench" + std::to_string(getpid()))) {
    std::filesystem::create_directories(path_);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::string operator/(const char* name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// Bytes of a coded picture: no start code among them.
void AddFiller(std::string& text, std::size_t bytes) {
  std::uint32_t random = 1;
  for (std::size_t i = 0; i < bytes; ++i) {
    random = random * 1664525 + 1013904223;
    text.push_back(static_cast<char>(1 + random % 255));
    if (i % 800 == 799) {
      text.append({'\0', '\0', '\x01', '\x02'});  // slices are that long
    }
  }
}

std::string GroupOfPictures() {
  constexpr std::array<unsigned char, 12> Sequence{0,    0,    1,    0xB3, 0x2D, 0x02,
                                                   0x40, 0x23, 0x17, 0xED, 0x23, 0x80};
  constexpr std::array<unsigned char, 8> Group{0, 0, 1, 0xB8, 0, 8, 0, 0x40};
  constexpr std::array<std::array<int, 2>, 12> Order{
      {{1, 2}, {3, 0}, {3, 1}, {2, 5}, {3, 3}, {3, 4}, {2, 8}, {3, 6}, {3, 7}, {2, 11}, {3, 9}, {3, 10}}};
  std::string text(Sequence.begin(), Sequence.end());
  text.append(Group.begin(), Group.end());
  for (const auto& [type, temporal] : Order) {
    const std::array<int, 17> header{
        0,    0,    1, 0,    temporal >> 2, (temporal & 3) << 6 | type << 3, 0xFF, 0xF8, 0, 0, 1, 0xB5,
        0x8F, 0xFF, 3, 0x80, 0x80};
    text.append(header.begin(), header.end());
    AddFiller(text, GroupBytes / 26 * (type == 1 ? 5 : type == 2 ? 3 : 1));
  }
  return text;
}

std::string SoundFrame() {
  std::string frame{'\x0B', '\x77', '\0', '\0', '\x1E', '\x40', '\x40'};
  frame.resize(1792, '\x5A');
  return frame;
}

void Repeat(const std::string& path, const std::string& part, std::size_t times) {
  std::ofstream file(path, std::ios::binary);
  for (std::size_t i = 0; i < times; ++i) {
    file << part;
  }
}

const Folder& Media() {
  static const Folder folder;
  if (!std::filesystem::exists(folder / "film.m2v")) {
    Repeat(folder / "film.m2v", GroupOfPictures(), Groups);
    Repeat(folder / "film.ac3", SoundFrame(), SoundFrames);
  }
  return folder;
}

void Report(benchmark::State& state, std::uint64_t bytesEach) {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.SetBytesProcessed(static_cast<std::int64_t>(bytesEach) * state.iterations());
  state.counters["peak_MiB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

// Multiplexes the track to the files of that stem; how many bytes it wrote, nothing where it failed.
std::optional<std::uint64_t> MultiplexTo(const std::string& stem, const MuxInput& input) {
  SilentUi ui;
  Log log;
  Random files(ui);
  files.DimFiles(9);
  MuxBuild build{ui, log, files, Rules::Players};
  VobOutput output(files, {stem});
  VobSetRecords records;
  if (MuxTrack(input, build, output, records) != MuxOutcome::Done) {
    return std::nullopt;
  }
  output.Finish();
  return std::uint64_t{output.TotalSectors()} * SectorBytes;
}

void Multiplex(benchmark::State& state) {
  const Folder& folder = Media();
  MuxInput input;
  input.Name = "Film";
  input.Video.resize(1);
  input.Video[0].Path = folder / "film.m2v";
  input.Audio.resize(1);
  input.Audio[0].Paths = {folder / "film.ac3"};
  input.Audio[0].DataOffsets = {0};
  input.Audio[0].DataBytes = {std::filesystem::file_size(folder / "film.ac3")};
  std::uint64_t bytes = 0;
  for (auto run : state) {
    const auto multiplexed = MultiplexTo(folder / "VTS_01", input);
    if (!multiplexed) {
      state.SkipWithError("the track failed");
      return;
    }
    bytes = *multiplexed;
  }
  Report(state, bytes);
}
BENCHMARK(Multiplex)->Unit(benchmark::kMillisecond)->UseRealTime();

void CopyOfTheSameBytes(benchmark::State& state) {
  const Folder& folder = Media();
  if (!std::filesystem::exists(folder / "VTS_01_1.VOB")) {
    state.SkipWithError("Multiplex has not run");
    return;
  }
  for (auto run : state) {
    std::filesystem::remove(folder / "copy");
    std::filesystem::copy_file(folder / "VTS_01_1.VOB", folder / "copy");
  }
  Report(state, std::filesystem::file_size(folder / "VTS_01_1.VOB"));
}
BENCHMARK(CopyOfTheSameBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

// One slide for so many hours, which no sector holds back: a navigation pack for half a second of it. The
// time grows with the hours (N), never with their square, and the memory by a record of 250 bytes each.
void HoldASlide(benchmark::State& state) {
  const Folder& folder = Media();
  const std::string slide = folder / "slide.bmp";
  const Bytes bitmap = WriteBmp(Picture(720, 576));
  std::ofstream(slide, std::ios::binary)
      .write(reinterpret_cast<const char*>(bitmap.data()), std::ssize(bitmap));
  MuxInput input;
  input.Name = "Slides";
  input.Kind = TrackKind::SlideShow;
  input.Video.push_back(
      {.Path = slide, .ImageSource = true, .HoldFlag = true, .HoldFrames = state.range(0) * 3600 * 25});
  std::uint64_t bytes = 0;
  for (auto run : state) {
    const auto multiplexed = MultiplexTo(folder / "VTS_02", input);
    if (!multiplexed) {
      state.SkipWithError("the track failed");
      return;
    }
    bytes = *multiplexed;
  }
  state.SetComplexityN(state.range(0));
  Report(state, bytes);
}
BENCHMARK(HoldASlide)
    ->RangeMultiplier(2)
    ->Range(1, 8)
    ->Arg(13)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace quorvelant
