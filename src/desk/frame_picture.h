// Pictures of films, decoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/user_interface.h"
#include "model/project.h"
#include "picture/picture.h"
#include "picture/picture_loader.h"

namespace quorvelant {

struct TrackPicture {
  std::int64_t Frame = 0;  // on the track
  quorvelant::Picture Picture;
};

// The last picture of a track at or before a frame that stands on its own, or else the first. Told, and
// nothing, where there is none: the track has no file, one that cannot be read, or ends before the frame.
[[nodiscard]] std::optional<TrackPicture> PictureOfTrack(const Project& project, std::size_t track,
                                                         std::int64_t frame, PictureLoader& pictures,
                                                         UserInterface& ui);

}  // namespace quorvelant
