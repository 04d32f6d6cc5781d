// What users do to subtitles in their table and at the moment that the viewer shows.
#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "edit/outcome.h"
#include "edit/overlays.h"
#include "window/window_parts.h"

namespace quorvelant {

// Each is one step of the history. Gives the key of the subtitle that was made or changed, whose place in the
// order of times may be another one; nothing where it was not done, which is told.
class SubtitleEditor {
 public:
  explicit SubtitleEditor(WindowParts& parts) : parts_(parts) {}

  [[nodiscard]] std::int64_t StartOf(const SubtitlePlace& place) const;  // in frames

  // A cell of SubtitleModel as a user wrote it: the start, or the duration or end, which move the end. What
  // is no time is refused too; nothing is told.
  Outcome Retime(const SubtitlePlace& place, int column, const QString& text);
  // A tick of SubtitleModel.
  void Tick(const SubtitlePlace& place, int column, bool on);
  // The start or the end at the viewer's frame; with `along` those after it follow.
  std::optional<std::string> SetHere(const SubtitlePlace& place, bool isEnd, bool along);
  // A subtitle at the viewer's frame, of a bitmap that is asked for, with position and colours of `settings`.
  std::optional<std::string> AddHere(std::optional<std::size_t> stream, SubPicturePlay settings);
  // Another bitmap, which is asked for, for the subtitle of that moment.
  void ReplaceAt(const SubtitleMoment& moment);

 private:
  [[nodiscard]] const SubtitleStream& StreamOf(const SubtitlePlace& place) const;
  [[nodiscard]] int RateOf(const SubtitlePlace& place) const;  // frames per second
  [[nodiscard]] std::optional<std::string> AskBitmap();

  WindowParts& parts_;
};

}  // namespace quorvelant
