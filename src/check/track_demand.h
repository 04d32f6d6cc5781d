// What a track asks of a disc as a whole: room for its streams, and a clock that lasts as long as it does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/video_info.h"
#include "base/rules.h"
#include "check/findings.h"
#include "model/tracks.h"

namespace quorvelant {

// One stream that the track carries.
struct SoundDemand {
  std::int32_t Number = 0;
  bool Pcm = false;
  std::int64_t DelayMs = 0;
  AudioTraits Traits = {};  // of its first file
  std::uint64_t Bytes = 0;  // of sound, in all its files
};

// Its pictures.
struct VideoDemand {
  bool HasFiles = false;
  std::optional<int> Kbps = std::nullopt;  // the least of its films; 0 where one has no constant rate
  std::uint64_t Bytes = 0;                 // of its films
  std::int64_t HeldFrames = 0;             // of stills and slides that are shown for a time

  void AddFilm(const VideoInfo& info, const std::string& path);
};

struct TrackDemand {
  std::string Name;
  int FramesPerSecond = 25;
  std::vector<SoundDemand> Sound = {};  // in their order
  VideoDemand Video = {};
};

// How many frames a file of a track is shown for; nothing for films, and for stills that wait for ever.
[[nodiscard]] std::optional<std::int64_t> HeldFrames(const Track& track, const VideoPlay& play,
                                                     int framesPerSecond);

// That the track has no picture, is longer than a player's clock counts, has sound that would begin before
// the disc does, or asks for more than a disc carries. `place` is the track's key.
[[nodiscard]] Findings JudgeDemand(const TrackDemand& track, const std::string& place, const Rules& rules);

}  // namespace quorvelant
