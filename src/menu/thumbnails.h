// Thumbnails of a project's scenes.
#pragma once

#include "analysis/picture_index.h"
#include "base/rules.h"
#include "menu/page_painter.h"
#include "model/project.h"
#include "picture/picture_loader.h"

namespace quorvelant {

class UserInterface;

// The picture at or before a scene's first frame, whole, of any track. It holds one film's index and one
// picture at a time; all that is handed in must outlive it. A scene whose file cannot be read or decoded has
// an empty picture, and a file that cannot be opened is told.
[[nodiscard]] ThumbnailSource ThumbnailsOf(const Project& project, const IndexStore& store,
                                           PictureLoader& pictures, UserInterface& ui, const Rules& rules);

}  // namespace quorvelant
