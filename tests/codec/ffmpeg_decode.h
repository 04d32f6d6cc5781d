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

// Decodes a video elementary stream whose pictures have planes of the size of `shape`, with these options
// for the decoder.
FfmpegResult DecodeByFfmpeg(ByteView stream, const Planes& shape, const std::string& options = {});

}  // namespace quorvelant
