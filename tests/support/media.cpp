#include "support/media.h"

#include <fmt/format.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "support/folders.h"
#include "support/temp_folder.h"

namespace quorvelant {

namespace {

constexpr std::string_view OutputMark = "@OUT@";
constexpr std::string_view Ffmpeg = "ffmpeg -nostdin -hide_banner -loglevel error -y";
// Nothing of the date, the machine or the number of threads reaches the file.
constexpr std::string_view Exact = "-threads 1 -fflags +bitexact -flags +bitexact";

std::uint64_t Fingerprint(std::string_view text) {  // FNV-1a
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char letter : text) {
    hash = (hash ^ static_cast<std::uint8_t>(letter)) * 0x100000001b3U;
  }
  return hash;
}

// Runs `command`, in which "@OUT@" stands for the file to be made, unless the cache has its result.
std::string Cached(std::string command, std::string_view kind, std::string_view extension) {
  namespace fs = std::filesystem;
  static std::atomic<int> counter{0};
  const fs::path folder = fs::path(SourceFile("build/media"));
  const fs::path wanted = folder / fmt::format("{}-{:016x}.{}", kind, Fingerprint(command), extension);
  if (fs::exists(wanted)) {
    return wanted.string();
  }
  fs::create_directories(folder);
  const std::string stem = (folder / fmt::format("aside-{}-{}", getpid(), counter++)).string();
  const std::string aside = fmt::format("{}.{}", stem, extension);
  const std::string log = stem + ".log";
  command.replace(command.find(OutputMark), OutputMark.size(), fmt::format("'{}'", aside));
  const std::string line = fmt::format("( {} ) >'{}' 2>&1", command, log);
  // The helper programs are started one after the other by the test's own thread.
  const int status = std::system(line.c_str());  // NOLINT(concurrency-mt-unsafe,bugprone-command-processor)
  std::error_code missing;
  if (status != 0 || fs::file_size(aside, missing) == 0 || missing) {
    throw std::runtime_error(fmt::format("sample media not made by: {}\n{}", command, TempFolder::Read(log)));
  }
  // Where another program was first its file stays: a run that reads it would end if it changed.
  std::error_code taken;
  fs::create_hard_link(aside, wanted, taken);
  if (!fs::exists(wanted)) {
    fs::rename(aside, wanted);  // on a file system without links
  }
  fs::remove(aside);
  fs::remove(log);
  return wanted.string();
}

bool IsNtsc(std::string_view standard) {
  return standard == "NTSC";
}

// Makes a file by ffmpeg's `arguments`: everything between its name and the output's.
std::string ByFfmpeg(const std::string& arguments, std::string_view kind, std::string_view extension) {
  return Cached(fmt::format("{} {} {} {}", Ffmpeg, arguments, Exact, OutputMark), kind, extension);
}

std::string Mpeg2Video(const VideoSample& sample, int height) {
  // A scene cut would start a GOP of its own; only an out-of-reach threshold allows closed GOPs.
  const std::string_view codec = sample.Mpeg1 ? "mpeg1video" : "mpeg2video";
  return ByFfmpeg(
      fmt::format("-f lavfi -i testsrc2=size={}x{}:rate={} -frames:v {} -c:v {} {} {} -g {} -bf {} "
                  "-sc_threshold 1000000000 -b:v {}k -maxrate {}k -bufsize 1835008 -aspect {} -f {}",
                  sample.Width, height, IsNtsc(sample.Standard) ? "30000/1001" : "25", sample.Frames, codec,
                  sample.Closed ? "-flags +cgop" : "",
                  sample.Interlaced ? "-flags +ildct+ilme -top 1 -alternate_scan 1" : "", sample.GopLength,
                  sample.GopLength == 1 ? 0 : sample.BFrames, sample.KbitPerSecond, sample.KbitPerSecond,
                  sample.Aspect, codec),
      "video", sample.Mpeg1 ? "m1v" : "m2v");
}

std::string FilmWithPulldown(const VideoSample& sample, int height) {
  return Cached(
      fmt::format("{} -f lavfi -i testsrc2=size={}x{}:rate=24000/1001 -frames:v {} -pix_fmt yuv420p "
                  "-strict -1 -f yuv4mpegpipe - | "
                  "mpeg2enc -v 0 -f 8 -p -n n -a {} -b {} -g {} -G {} -R {} {} -o {}",
                  Ffmpeg, sample.Width, height, sample.Frames, sample.Aspect == "16:9" ? 3 : 2,
                  sample.KbitPerSecond, sample.GopLength, sample.GopLength, sample.BFrames,
                  sample.Closed ? "-c" : "", OutputMark),
      "video", "m2v");
}

std::string Sine(int rate, double seconds, int channels, const std::string& codec,
                 std::string_view extension) {
  return ByFfmpeg(fmt::format("-f lavfi -i sine=frequency=440:sample_rate={}:duration={} -ac {} {}", rate,
                              seconds, channels, codec),
                  "sine", extension);
}

}  // namespace

std::string SampleVideo(const VideoSample& sample) {
  const int fullHeight = IsNtsc(sample.Standard) ? 480 : 576;
  const int height = sample.Height != 0 ? sample.Height : fullHeight;
  return sample.Pulldown ? FilmWithPulldown(sample, height) : Mpeg2Video(sample, height);
}

std::string SampleAc3(const Ac3Sample& sample) {
  return Sine(sample.Rate, sample.Seconds, sample.Channels, fmt::format("-b:a {}k", sample.Kbps), "ac3");
}

std::string SampleWav(const WavSample& sample) {
  return Sine(sample.Rate, sample.Seconds, sample.Channels, fmt::format("-c:a pcm_s{}le", sample.Bits),
              "wav");
}

std::optional<std::string> SharedFile(std::string_view name) {
  namespace fs = std::filesystem;
  const char* named = std::getenv("QUORVELANT_SHARED");  // NOLINT(concurrency-mt-unsafe): nobody sets it
  const fs::path folder = named != nullptr ? fs::path(named) : fs::path(SourceFile("../shared"));
  const fs::path file = folder / name;
  return fs::exists(file) ? std::optional(file.string()) : std::nullopt;
}

}  // namespace quorvelant
