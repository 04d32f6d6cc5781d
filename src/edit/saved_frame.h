// A picture of the viewer as a file, and as a track of its own. The picture is handed in: nothing is decoded
// here.
#pragma once

#include <cstddef>
#include <string>

#include "edit/outcome.h"
#include "edit/session.h"
#include "picture/picture.h"

namespace quorvelant {

// The picture in another size, each pixel mixed of its four nearest. It has at least one.
[[nodiscard]] Picture Resized(const Picture& picture, int width, int height);

// Where a picture goes: a bitmap file, by a path as a project holds it. One that is there is asked about.
struct FrameFile {
  std::string Path;
  quorvelant::Consent Consent = quorvelant::Consent::None;
  bool DryRun = false;  // nothing is written
};

Outcome SaveFrame(const EditSession& session, const Picture& frame, const FrameFile& file);

// The same in the full size of the standard, and the file becomes a still track of the standard, aspect and
// displays of `source`, named "Track_" and the next free number. Undo takes the track away, the file stays.
// Gives the key of its play.
Outcome SaveFrameAsTrack(EditSession& session, std::size_t source, const Picture& frame,
                         const FrameFile& file);

}  // namespace quorvelant
