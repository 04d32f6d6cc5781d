// What ffmpeg, an independent decoder, makes of a video stream.
#pragma once

#include <string>
#include <vector>

#include "base/bytes.h"
#include "codec/planes.h"

namespace quorvelant {

struct FfmpegResult {
  std::vector<Planes> Pictures;
  std::string Complaints;  // everything it printed at level "warning"
};

// Decodes a video elementary stream whose pictures are `width` by `height`, in its own chroma format, with
// these options for the decoder.
FfmpegResult DecodeByFfmpeg(ByteView stream, unsigned width, unsigned height, unsigned across = 2,
                            unsigned down = 2, const std::string& options = {});

// Intra pictures of libavcodec's MPEG-2 encoder from 4:2:0 planes, one stream for all.
Bytes EncodeByFfmpeg(const std::vector<Planes>& pictures, const std::string& encoderOptions);

}  // namespace quorvelant
