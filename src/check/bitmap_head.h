// The head of a subtitle's bitmap: what is seen of it without its pixels.
#pragma once

#include <optional>
#include <string>

#include "base/message.h"
#include "model/tracks.h"

namespace quorvelant {

// Why the bitmap at `path`, a path of this system at which there is a file, makes no subtitle: it is no
// picture, has more pixels than a screen could show, or none of its lines lies within the screen. Nothing
// where its head does not tell.
[[nodiscard]] std::optional<Message> WhyNoSubtitle(const SubPicturePlay& play, const std::string& path,
                                                   const std::string& place, bool ntsc);

}  // namespace quorvelant
