// A film as the operations of a session find it.
#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/tracks.h"

namespace quorvelant {

// Its scenes start every 100 frames.
inline Track Film(const std::string& name, std::size_t scenes = 1, std::string_view aspect = "4:3",
                  std::string_view standard = "PAL") {
  Track track;
  track.TrackName = name;
  track.Standard = standard;
  track.Aspect = aspect;
  track.Filled = true;
  track.VideoPlays.emplace_back().File = name + ".m2v";
  for (std::size_t i = 0; i < scenes; ++i) {
    Scene& scene = track.Scenes.emplace_back();
    scene.Name = fmt::format("{}_Scene{}", name, i + 1);
    scene.Frame = static_cast<std::int32_t>(i * 100);
  }
  return track;
}

}  // namespace quorvelant
