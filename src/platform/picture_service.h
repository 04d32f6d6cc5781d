// The picture services of this platform. It needs no display, and nothing of it shows here.
#pragma once

#include <memory>

#include "picture/picture_service.h"

namespace quorvelant {

// Bitmaps are read and written by this system's own code, so that they come out alike everywhere; PNG, JPEG
// and what else the platform knows by the platform. Fonts are looked for when text is first drawn.
std::unique_ptr<PictureService> MakePictureService(const PictureLimits& limits = {});

}  // namespace quorvelant
