#include "mux/still_source.h"

#include "codec/still_encoder.h"
#include "disc/video_standard.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"
#include "picture/bitmap_size.h"
#include "picture/picture_loader.h"

namespace quorvelant {
namespace {

void CheckSize(const MuxInput& input, const MuxVideoFile& file, const BitmapSize& size) {
  const int height = FullHeight(input.Ntsc);
  const bool full = size.Width == FullWidth && size.Height == height;
  const bool half = size.Width == FullWidth / 2 && size.Height == height / 2;
  if (!full && !half) {
    throw MuxFault(message::StillSizeUnfit, file.Path, FullWidth, height, FullWidth / 2, height / 2,
                   input.Name, file.Path, size.Width, size.Height);
  }
}

Picture LoadStill(const MuxInput& input, const MuxVideoFile& file, PictureLoader* platform) {
  try {
    if (const auto oversize = ReadOversize(file.Path)) {
      CheckSize(input, file, *oversize);
    }
    BmpLoader pictures(platform);
    Picture picture = pictures.Load(file.Path);
    CheckSize(input, file, {picture.Width, picture.Height});
    return picture;
  } catch (const PictureError& error) {
    throw MuxFault(message::StillUnreadable, file.Path, error.what());
  }
}

}  // namespace

std::function<Bytes(const MuxVideoFile&)> StillEncoderOf(const MuxInput& input, const MuxBuild& build) {
  return [&input, &build](const MuxVideoFile& file) {
    const StillFlags flags{.Wide = input.Aspect == "16:9"};
    return EncodeBitmap(LoadStill(input, file, build.Pictures), flags, build.Rules);
  };
}

std::optional<Message> FaultOfStill(const MuxInput& input, const MuxVideoFile& file,
                                    PictureLoader& platform) {
  try {
    LoadStill(input, file, &platform);
    return std::nullopt;
  } catch (const MuxFault& fault) {
    return fault.Told;
  }
}

}  // namespace quorvelant
