// The ticks of a subtitle in its list: whether it is used, and whether it shows with subtitles off.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "base/message.h"
#include "model/tracks.h"

namespace quorvelant {

// Why the subtitle cannot be used: no bitmap is there to be shown. A relative path counts from
// `sourceFolder`.
[[nodiscard]] std::optional<Message> RefuseUse(const SubPicturePlay& play, std::string_view sourceFolder);

// Whether the subtitle and the buttons of a set, if it has any, show at the same time.
bool ShowTogether(const SubPicturePlay& play, const HighlightPlay& set, int framesPerSecond);

// Why a subtitle's forced mark cannot be cleared: buttons show in its span. It can always be set.
[[nodiscard]] std::optional<Message> RefuseForcedMark(const SubPicturePlay& play, bool forced,
                                                      std::span<const HighlightPlay> highlights,
                                                      int framesPerSecond);

}  // namespace quorvelant
