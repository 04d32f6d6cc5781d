// The picture services of this platform. They need no display, and nothing of the platform shows here.
#pragma once

#include <memory>

#include "picture/picture_service.h"

namespace quorvelant {

// Bitmaps are read and written by this system's own code, so that they come out alike everywhere; PNG, JPEG
// and what else the platform knows by the platform. Its libraries are in a module that is loaded when the
// first of these is met, and stays: most runs never pay for it. Fonts are looked for when text is first
// drawn.
std::unique_ptr<PictureService> MakePlatformPictures(const PictureLimits& limits = {});

}  // namespace quorvelant
