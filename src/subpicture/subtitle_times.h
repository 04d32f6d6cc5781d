// When the subtitles of a stream show, for those who edit them. Frames count from the start of the track.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/message.h"
#include "model/tracks.h"

namespace quorvelant {

// How the times of a track count.
struct SubtitleClock {
  int FramesPerSecond = 25;      // 25 or 30
  std::int64_t TrackFrames = 0;  // length of the track, 0 where it is not known or does not bind
};

// The frame after the last one that an entry shows: its end, or else its start and duration. Nothing where it
// has neither: then it shows until the next one starts.
[[nodiscard]] std::optional<std::int64_t> EndOf(const SubPicturePlay& entry, int framesPerSecond);

// The entry that shows at a frame; of several that overlap the one that starts last.
[[nodiscard]] std::optional<std::size_t> EntryAt(std::span<const SubPicturePlay> list, std::int64_t frame,
                                                 int framesPerSecond);

// Why no entry can begin at a frame: one shows there, the next starts a frame later, or the track has ended.
[[nodiscard]] std::optional<Message> RefuseStart(std::span<const SubPicturePlay> list, std::int64_t frame,
                                                 const SubtitleClock& clock);

// Puts an entry into the list, which is sorted by start, and gives it an end: two seconds after its start, or
// a frame before the next one where that is too near. Its start must not be refused. Gives its place.
std::size_t InsertByStart(std::vector<SubPicturePlay>& list, SubPicturePlay entry, int framesPerSecond);

// What an editor gives an entry.
struct SubtitleTimes {
  std::int64_t Start = 0;
  std::int64_t Frames = 0;
  bool operator==(const SubtitleTimes&) const = default;
};

// Why the entry cannot take these times: a frame at least lies between it and its neighbours, and it starts
// before the track ends. The times that it has are never refused.
[[nodiscard]] std::optional<Message> RefuseTimes(std::span<const SubPicturePlay> list, std::size_t entry,
                                                 const SubtitleTimes& times, const SubtitleClock& clock);

// Gives the entry these times and sorts the list by start; entries with equal starts keep their order. A stop
// time of its own gives way to a new length. Gives the entry's place.
std::size_t PutTimes(std::vector<SubPicturePlay>& list, std::size_t entry, const SubtitleTimes& times,
                     int framesPerSecond);

}  // namespace quorvelant
