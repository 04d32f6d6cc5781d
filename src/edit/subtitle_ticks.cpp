#include "edit/subtitle_ticks.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/random.h"
#include "edit/messages.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {

bool KeepIfBitmapExists(SubPicturePlay& play, std::string_view sourceFolder, UserInterface& ui) {
  const std::string path = SystemPath(play.File, sourceFolder);
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    ui.Tell(MessageOf(message::BitmapDeselected, path));
    play.Used = false;
    return false;
  }
  return true;
}

bool ShowTogether(const SubPicturePlay& play, const HighlightPlay& set, int framesPerSecond) {
  const PlaySpan span = SpanOf(play, framesPerSecond);
  const PlaySpan buttons = SpanOf(set, framesPerSecond);
  return !set.Buttons.empty() && buttons.Start < span.End && span.Start < buttons.End;
}

bool SetForced(SubPicturePlay& play, bool forced, std::span<const HighlightPlay> highlights,
               int framesPerSecond, UserInterface& ui) {
  const auto together = [&](const HighlightPlay& set) { return ShowTogether(play, set, framesPerSecond); };
  if (!forced && std::ranges::any_of(highlights, together)) {
    ui.Tell(MessageOf(message::ForcedNeeded, {}));
    return false;
  }
  play.Forced = forced;
  return true;
}

}  // namespace quorvelant
