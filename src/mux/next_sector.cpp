#include "mux/next_sector.h"

namespace quorvelant {

NextSector NextSectorKind(std::optional<Clock> nav, std::optional<Clock> video,
                          std::span<const AudioClaim> audio, std::optional<std::int64_t> audioLimit) {
  NextSector next;
  std::optional<Clock> earliest;
  const auto consider = [&](Clock time, NextSector row) {
    if (time.Units > 0 && (!earliest || time < *earliest)) {
      earliest = time;
      next = row;
    }
  };
  consider(nav.value_or(Clock{}), {SectorKind::Nav});
  consider(video.value_or(Clock{}), {SectorKind::Video});
  for (std::size_t i = 0; i < audio.size(); ++i) {
    if (!audioLimit || audio[i].NextPts < *audioLimit) {
      consider(audio[i].NextScr, {SectorKind::Audio, i});
    }
  }
  return next;
}

}  // namespace quorvelant
