// Menus of 16:9 on a 4:3 screen, where the picture has three quarters of its height between black bars.
#pragma once

#include <string>

#include "base/rules.h"
#include "picture/picture.h"

namespace quorvelant {

// The line of the screen on which a line of the page shows: an eighth of the height down, and three quarters.
[[nodiscard]] int LetterboxLine(int line, int height);

// The sublayer of a page, of its colours, as the letterboxed page needs it: three quarters of the height. The
// sublayer shows `down` lines below its place on the page.
[[nodiscard]] Picture LetterboxSublayer(const Picture& sublayer, int down, const Rules& rules);

// "x.SubLayer.bmp" has "x.SubLayer.LetterBox.bmp" beside it.
[[nodiscard]] std::string LetterboxFileOf(const std::string& sublayerFile);
// Writes that file; both are paths of this system. Raises PictureError.
void WriteLetterboxSublayer(const std::string& sublayerFile, const Rules& rules);

}  // namespace quorvelant
