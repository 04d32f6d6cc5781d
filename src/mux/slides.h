// Stills and slides: single pictures whose time on screen is made of navigation packs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "mux/decode_schedule.h"

namespace quorvelant {

struct MuxState;

// What changes while a still or slideshow track is written.
struct SlideState {
  std::vector<std::int64_t> Frames;    // how long each file of the video list shows
  std::optional<std::int64_t> EndPts;  // ticks: the end of the track; nothing while a still waits for sound
  std::size_t File = std::numeric_limits<std::size_t>::max();  // index of the one showing
  std::int64_t StartFields = 0;                                // of it: fields before it
};

// Works out how long every slide shows.
void PlanSlides(MuxState& state);

// The times of the current picture: it shows at once, and is decoded a frame earlier.
DecodeTimes SlideTimes(const MuxState& state);

// Takes the current picture into the VOBU that is open. Raises MuxFault for a file of several pictures.
void OpenSlide(MuxState& state);

// Shows the file just written for its time: a VOBU for every run of frames, sound and subtitles as they
// come due. The VOBU opened last is that of the next slide; after the last slide none is opened.
void HoldSlide(MuxState& state);

}  // namespace quorvelant
