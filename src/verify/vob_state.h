// One VOB while its sectors are read.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "verify/audio_walk.h"
#include "verify/subpicture_walk.h"
#include "verify/video_walk.h"
#include "verify/vobu_facts.h"

namespace quorvelant {

// Tags of sectors by what they hold; else the id of the substream, or of the audio stream.
inline constexpr std::uint8_t NavTag = 0xBF;

struct VobState {
  VobState(const VobTeller& teller, const IfoVideo& video, bool known) : Video(teller, video, known) {}

  VideoWalk Video;
  std::map<unsigned, AudioWalk> Audio;
  std::map<unsigned, SubpictureWalk> Subpictures;
  std::vector<NavRecord> Records;            // as many as Video.Vobus() at the VOB's end
  std::optional<std::int64_t> LastScr = {};  // 27 MHz
};

}  // namespace quorvelant
