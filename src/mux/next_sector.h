// Whose turn it is: navigation, video or one of the audio streams.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "disc/clock.h"

namespace quorvelant {

// An audio stream's claim on the next sector.
struct AudioClaim {
  Clock NextScr;             // 0 or less: not in use
  std::int64_t NextPts = 0;  // ticks: of the frame that would go, or whose rest would
};

enum class SectorKind { None, Nav, Video, Audio };
struct NextSector {
  SectorKind Kind = SectorKind::None;
  std::size_t Stream = 0;  // index of the claim, for Audio
  bool operator==(const NextSector&) const = default;
};

// The earliest clock decides; equal clocks go in the order Nav, Video, Audio 0 to 7. An audio stream whose
// next frame is at or beyond `audioLimit` is passed over. `nav` or `video` may be absent.
NextSector NextSectorKind(std::optional<Clock> nav, std::optional<Clock> video,
                          std::span<const AudioClaim> audio, std::optional<std::int64_t> audioLimit);

}  // namespace quorvelant
