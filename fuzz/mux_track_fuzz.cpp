// Video and sound of any bytes through the multiplexer, without output. The first byte holds switches, the
// second how many 256ths of the rest are video; what remains is sound. Four channels stand for slides and
// stills too.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "mux/mux_track.h"

namespace {

using namespace quorvelant;  // NOLINT(google-build-using-namespace): a program of its own

// Answers yes, so that a run goes on behind every question.
class WillingUi : public UserInterface {
 public:
  void Tell(const Message&) override {}
  bool Ask(std::string_view, std::string_view, bool) override { return true; }
  std::optional<std::string> AskText(std::string_view, std::string_view, std::string_view) override {
    return std::nullopt;
  }
  void Status(std::string_view) override {}
  void Progress(double, double) override {}
  bool StopRequested() override { return false; }
};

std::string Saved(const char* name, ByteView bytes) {
  static const std::filesystem::path folder = [] {
    auto path = std::filesystem::temp_directory_path() / ("mux_track_fuzz" + std::to_string(getpid()));
    std::filesystem::create_directories(path);
    return path;
  }();
  const std::string path = (folder / name).string();
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return path;
}

MuxAudioStream SoundOf(ByteView bytes, unsigned switches) {
  MuxAudioStream stream;
  stream.Pcm = (switches & 4) != 0;
  stream.Traits.Quantisation = (switches & 8) != 0 ? 24 : 16;
  stream.Traits.ChannelCount = 1 + static_cast<int>(switches >> 6);
  stream.Traits.SampleRate = 48;
  stream.Paths = {Saved("sound", bytes)};
  stream.DataOffsets = {0};
  stream.DataBytes = {bytes.size()};
  return stream;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  if (byteCount < 2) {
    return 0;
  }
  const unsigned switches = data[0];
  const ByteView rest(data + 2, byteCount - 2);
  const std::size_t videoBytes = rest.size() * data[1] / 255;

  MuxInput input;
  input.Ntsc = (switches & 1) != 0;
  input.Video.resize(1);
  input.Video[0].Path = Saved("video", rest.first(videoBytes));
  if ((switches & 16) != 0) {
    input.Video.push_back(input.Video.front());
  }
  if (switches >> 6 == 3) {
    input.Kind = data[1] % 2 != 0 ? TrackKind::SlideShow : TrackKind::Still;
    input.Infinite = data[1] % 4 == 0;
    input.ExtendSlideForAudio = true;
    input.Video.back().HoldFlag = !input.Infinite;
    input.Video.back().HoldFrames = data[1];
  }
  if ((switches & 2) != 0) {
    input.Audio = {SoundOf(rest.subspan(videoBytes), switches)};
  }
  input.Marks.resize(3);
  input.Marks[1].Frame = 12;
  input.Marks[2].Frame = 40;

  WillingUi ui;
  Log log;
  Random files(ui);
  files.DimFiles(9);
  MuxBuild build{ui, log, files, (switches & 32) != 0 ? Rules::Classic : Rules::Players};
  build.RemoveSeqEnd = (switches & 16) != 0;
  build.DryRun = true;
  VobOutput output(files, {"VTS_01"}, true);
  VobSetRecords records;
  MuxTrack(input, build, output, records);
  return 0;
}
