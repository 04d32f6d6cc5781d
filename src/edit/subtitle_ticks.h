// The ticks of a subtitle in its list: whether it is used, and whether it shows with subtitles off.
#pragma once

#include <span>
#include <string_view>

#include "base/user_interface.h"
#include "model/tracks.h"

namespace quorvelant {

// Whether the subtitle's bitmap is there to be shown; otherwise the subtitle is no longer used, which is
// told. A relative path counts from `sourceFolder`.
bool KeepIfBitmapExists(SubPicturePlay& play, std::string_view sourceFolder, UserInterface& ui);

// Whether the subtitle and the buttons of a set, if it has any, show at the same time.
bool ShowTogether(const SubPicturePlay& play, const HighlightPlay& set, int framesPerSecond);

// Sets or clears a subtitle's forced mark. Clearing it is refused, and told, while buttons show in its span.
bool SetForced(SubPicturePlay& play, bool forced, std::span<const HighlightPlay> highlights,
               int framesPerSecond, UserInterface& ui);

}  // namespace quorvelant
