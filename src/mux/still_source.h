// Bitmaps of stills and slides as coded pictures.
#pragma once

#include <functional>
#include <optional>

#include "base/bytes.h"
#include "mux/mux_track.h"

namespace quorvelant {

// Makes the stream of one picture, without a sequence end code, of a bitmap of the track's video list. What
// it returns raises MuxFault where the bitmap can't be read or has no size of the track's standard. `input`
// and `build` must outlive it.
std::function<Bytes(const MuxVideoFile&)> StillEncoderOf(const MuxInput& input, const MuxBuild& build);

// Why a bitmap of the video list can make no still, before anything is written; nothing when all is well.
std::optional<Message> FaultOfStill(const MuxInput& input, const MuxVideoFile& file, PictureLoader& platform);

}  // namespace quorvelant
