// The pixels of buttons that are drawn on a picture without any.
#pragma once

#include <cstdint>
#include <string>

#include "edit/button_sets.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// A span of a track, in frames.
struct ShadeSpan {
  std::size_t Track = 0;
  std::int64_t Start = 0;
  std::int64_t Frames = 0;
};

// Whether some view of the track shows no subtitle at the frame: buttons would not be seen there.
[[nodiscard]] bool LacksShade(const Track& track, std::int64_t frame);

// Puts a forced subtitle of one colour over the whole picture, itself see-through, into each view that has
// none at the span's start, so that every button colours its rectangle. Streams are added where there are
// none. `file` is the bitmap as the project holds it; `schemes` are those of the buttons.
Outcome AddShade(EditSession& session, const ShadeSpan& span, const std::string& file,
                 const ColorScheme& scheme);

// The colours of a scheme under which the shade shows by half: selected yellow, activated red, by the palette
// of a new project.
[[nodiscard]] ColorScheme ShadeScheme();

// Writes the bitmap beside the project, or else beside the track's first file, where it is not there already.
// Its path as the project holds it; empty, and `why`, where it cannot be written.
[[nodiscard]] std::string ShadeFile(const EditSession& session, std::size_t track, std::string& why);

}  // namespace quorvelant
