// The packs that carry the pictures.
#pragma once

#include "mux/mux_state.h"

namespace quorvelant {

// Writes the current picture: what fits into the pack that the previous picture left open, then packs of its
// own, with the audio that is due between them. A last pack that is not full stays open for the next
// picture, unless that begins with a sequence header: a VOBU may begin there, so the pack is closed.
void WritePicture(MuxState& state);

}  // namespace quorvelant
