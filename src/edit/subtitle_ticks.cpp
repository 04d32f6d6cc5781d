#include "edit/subtitle_ticks.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/random.h"
#include "edit/messages.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {

std::optional<Message> RefuseUse(const SubPicturePlay& play, std::string_view sourceFolder) {
  const std::string path = SystemPath(play.File, sourceFolder);
  std::error_code error;
  return std::filesystem::is_regular_file(path, error)
             ? std::nullopt
             : std::optional(MessageOf(message::BitmapDeselected, path));
}

bool ShowTogether(const SubPicturePlay& play, const HighlightPlay& set, int framesPerSecond) {
  const PlaySpan span = SpanOf(play, framesPerSecond);
  const PlaySpan buttons = SpanOf(set, framesPerSecond);
  return !set.Buttons.empty() && buttons.Start < span.End && span.Start < buttons.End;
}

std::optional<Message> RefuseForcedMark(const SubPicturePlay& play, bool forced,
                                        std::span<const HighlightPlay> highlights, int framesPerSecond) {
  const bool needed = std::ranges::any_of(
      highlights, [&](const HighlightPlay& set) { return ShowTogether(play, set, framesPerSecond); });
  return forced || !needed ? std::nullopt : std::optional(MessageOf(message::ForcedNeeded, {}));
}

}  // namespace quorvelant
