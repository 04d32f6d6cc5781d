#include "ui/fact_words.h"

namespace quorvelant {

QString CountWords(std::size_t count, const char* one, const char* several) {
  return count == 0 ? QString()
                    : QStringLiteral("%1 %2").arg(count).arg(QString::fromUtf8(count == 1 ? one : several));
}

QString JoinWords(QStringList parts) {
  parts.removeAll(QString());
  return parts.join(QStringLiteral(", "));
}

std::optional<std::int64_t> TrackLength(const Track& track) {
  const std::int64_t frames = track.VideoFrames > 0 ? track.VideoFrames : track.FrameCount;
  return frames > 0 ? std::optional(frames) : std::nullopt;
}

std::optional<std::int64_t> SceneLength(const Track& track, std::size_t scene) {
  if (scene >= track.Scenes.size()) {
    return std::nullopt;
  }
  const auto end = scene + 1 < track.Scenes.size()
                       ? std::optional<std::int64_t>(track.Scenes[scene + 1].Frame)
                       : TrackLength(track);
  const std::int64_t start = track.Scenes[scene].Frame;
  return end && *end > start ? std::optional(*end - start) : std::nullopt;
}

}  // namespace quorvelant
