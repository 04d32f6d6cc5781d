#include "ffmpeg_decode.h"

#include <fmt/format.h>

#include <cstdlib>
#include <stdexcept>

#include "support/temp_folder.h"

namespace quorvelant {
namespace {

std::string_view AsText(ByteView bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Runs ffmpeg with `arguments`; gives what it printed.
std::string RunFfmpeg(const TempFolder& folder, const std::string& arguments) {
  const std::string line = fmt::format("ffmpeg -nostdin -hide_banner -loglevel warning -y {} >'{}' 2>&1",
                                       arguments, folder / "log");
  const int status = std::system(line.c_str());  // NOLINT(concurrency-mt-unsafe,bugprone-command-processor)
  const std::string log = TempFolder::Read(folder / "log");
  if (status != 0) {
    throw std::runtime_error(fmt::format("{}\n{}", line, log));
  }
  return log;
}

}  // namespace

FfmpegResult DecodeByFfmpeg(ByteView stream, unsigned width, unsigned height, unsigned across, unsigned down,
                            const std::string& options) {
  const TempFolder folder;
  const std::string source = folder.Write("in.m2v", AsText(stream));
  FfmpegResult result;
  result.Complaints =
      RunFfmpeg(folder, fmt::format("{} -f mpegvideo -i pipe:0 -fps_mode passthrough -f rawvideo '{}' <'{}'",
                                    options, folder / "out.yuv", source));
  const std::string samples = TempFolder::Read(folder / "out.yuv");
  std::size_t at = 0;
  while (at < samples.size()) {
    Planes& planes = result.Pictures.emplace_back();
    planes.Y() = Plane(width, height, 0);
    planes.Of[1] = Plane((width + across - 1) / across, (height + down - 1) / down, 0);
    planes.Of[2] = planes.Of[1];
    for (Plane& plane : planes.Of) {
      samples.copy(reinterpret_cast<char*>(plane.Samples.data()), plane.Samples.size(), at);
      at += plane.Samples.size();
    }
  }
  return result;
}

Bytes EncodeByFfmpeg(const std::vector<Planes>& pictures, const std::string& encoderOptions) {
  const TempFolder folder;
  std::string samples;
  for (const Planes& planes : pictures) {
    for (const Plane& plane : planes.Of) {
      samples += AsText(plane.Samples);
    }
  }
  const std::string source = folder.Write("in.yuv", samples);
  RunFfmpeg(folder, fmt::format("-f rawvideo -pix_fmt yuv420p -s {}x{} -r 25 -i '{}' -c:v mpeg2video -g 1 {} "
                                "-f mpeg2video '{}'",
                                pictures[0].Of[0].Width, pictures[0].Of[0].Height, source, encoderOptions,
                                folder / "out.m2v"));
  const std::string stream = TempFolder::Read(folder / "out.m2v");
  return {stream.begin(), stream.end()};
}

}  // namespace quorvelant
