#pragma once

// A track or a scene dropped on the structure becomes cells.

#include <cstddef>
#include <optional>
#include <string_view>

#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

struct Dropped {
  std::size_t Track = 0;             // index in `Tracks`
  std::optional<std::size_t> Scene;  // from 0; none: all scenes of the track
};

// Why the drop cannot be; cheap enough for each move of a drag. `target` is the key of a PGC or a program.
// All that the cells of a PGC and of a domain share is looked at ahead of any change: standard and aspect,
// streams by their numbers, kinds of sound, numbers of programs and cells.
[[nodiscard]] std::optional<Message> RefuseDrop(const Project& project, const Dropped& what,
                                                std::string_view target);

// On a PGC each scene becomes a program with one cell, on a program a cell; both go to the end. The display
// modes of the track's subtitles go into the PGC's maps. Gives the key of the first new cell.
Outcome Drop(EditSession& session, const Dropped& what, std::string_view target);

}  // namespace quorvelant
