// Pictures of films, decoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "analysis/picture_index.h"
#include "base/random.h"
#include "base/user_interface.h"
#include "model/project.h"
#include "picture/picture.h"
#include "picture/picture_loader.h"

namespace quorvelant {

// The picture that begins at the offset of the file in the slot; nothing where none that stands on its own
// does. `byteCount` is its size in the file's index, 0 for what is not known.
[[nodiscard]] std::optional<Picture> DecodePictureAt(Random& files, int slot, std::uint64_t offset,
                                                     std::uint64_t byteCount, bool isMpeg2);

// The index beside the file while it is no older than the file, otherwise a walk through the file. Nothing
// is written: looking at a picture leaves no file. Raises FileError; nothing where the user stopped it.
[[nodiscard]] std::optional<PictureIndex> IndexToLook(const std::string& file, Random& files, int slot,
                                                      UserInterface& ui);

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
