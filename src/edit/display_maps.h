#pragma once

// Which subpicture stream a PGC shows in each display mode.

#include "model/my_dvd.h"
#include "model/tracks.h"

namespace quorvelant {

// Spreads the display modes of the track's subtitle streams over the PGC's four maps. Entry n of a mode is
// stream n where that stream shows in the mode, else the stream of the same language and extension that does,
// else n. Menus show stream 0 alone, so their other entries stay.
void MapDisplayModes(PGC_P& chain, const Track& track, bool isMenu);

}  // namespace quorvelant
