// Pixels to planes and back.
#pragma once

#include "base/rules.h"
#include "codec/planes.h"
#include "picture/picture.h"

namespace quorvelant {

// 4:2:0 planes of a picture with even sides.
Planes PlanesFromPicture(const Picture& picture, const Rules& rules);

// Pixels from planes of any chroma format. A sample of colour serves all its pixels, without a filter.
Picture PictureFromPlanes(const Planes& planes);
// The same as the bytes of a Windows bitmap.
Bytes BitmapFromPlanes(const Planes& planes);

}  // namespace quorvelant
