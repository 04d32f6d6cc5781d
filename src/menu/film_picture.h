// Single pictures of a film.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "analysis/picture_index.h"
#include "base/random.h"
#include "codec/planes.h"

namespace quorvelant {

// The index beside the file while it is no older than the file, otherwise a walk through the file, which is
// open in `slot`. Nothing is written: looking at a picture leaves no file. Nothing when the user stopped it.
[[nodiscard]] std::optional<PictureIndex> IndexForPictures(const std::string& file, const IndexStore& store,
                                                           Random& files, int slot, UserInterface& ui);

// Where a picture stands in a file, as its index says.
struct PictureSpan {
  std::uint64_t Offset = 0;
  std::uint64_t Bytes = 0;  // to the second picture's header; 0 where that is not known
};

// The intra picture there, of the file that is open in `slot`; nothing where there is none.
[[nodiscard]] std::optional<Planes> DecodeFilmPicture(const PictureSpan& span, bool isMpeg2, Random& files,
                                                      int slot);

}  // namespace quorvelant
