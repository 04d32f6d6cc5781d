#include "ffmpeg_decode.h"

#include <fmt/format.h>

#include "support/disc_judges.h"
#include "support/temp_folder.h"

namespace quorvelant {
FfmpegResult DecodeByFfmpeg(ByteView stream, const Planes& shape, const std::string& options) {
  const TempFolder folder;
  const std::string source = folder.Write("in.m2v", stream);
  const std::string command = fmt::format(
      "ffmpeg -nostdin -hide_banner -loglevel warning {} -f mpegvideo -i pipe:0 -fps_mode passthrough -f "
      "rawvideo '{}' <'{}'",
      options, folder / "out.yuv", source);
  FfmpegResult result;
  result.Complaints = fmt::format("{}", fmt::join(LinesOf(command), ""));
  const std::string samples = TempFolder::Read(folder / "out.yuv");
  for (std::size_t at = 0; at < samples.size();) {
    Planes& planes = result.Pictures.emplace_back(shape);
    for (Plane& plane : planes.Of) {
      samples.copy(reinterpret_cast<char*>(plane.Samples.data()), plane.Samples.size(), at);
      at += plane.Samples.size();
    }
  }
  return result;
}

}  // namespace quorvelant
