#include "subpicture/subtitle_times.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string>
#include <utility>

#include "base/timecode.h"
#include "subpicture/messages.h"

namespace quorvelant {

namespace {

constexpr std::int64_t NewEntrySeconds = 2;
constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();

std::int64_t StartOf(const SubPicturePlay& entry, int framesPerSecond) {
  return TimecodeToFrames(entry.Start, framesPerSecond);
}

std::vector<std::int64_t> StartsOf(std::span<const SubPicturePlay> list, int framesPerSecond) {
  std::vector<std::int64_t> starts(list.size());
  std::ranges::transform(list, starts.begin(),
                         [&](const SubPicturePlay& entry) { return StartOf(entry, framesPerSecond); });
  return starts;
}

// The entries in the order of their starts, equal ones as they stand.
std::vector<std::size_t> OrderOf(const std::vector<std::int64_t>& starts) {
  std::vector<std::size_t> order(starts.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, {}, [&](std::size_t entry) { return starts[entry]; });
  return order;
}

// Sorts the list; gives the new place of an entry.
std::size_t SortByStart(std::vector<SubPicturePlay>& list, std::size_t entry, int framesPerSecond) {
  const std::vector<std::size_t> order = OrderOf(StartsOf(list, framesPerSecond));
  std::vector<SubPicturePlay> sorted;
  sorted.reserve(list.size());
  for (const std::size_t place : order) {
    sorted.push_back(std::move(list[place]));
  }
  list = std::move(sorted);
  return static_cast<std::size_t>(std::ranges::find(order, entry) - order.begin());
}

void PutSpan(SubPicturePlay& entry, const SubtitleTimes& times, int framesPerSecond) {
  entry.Start = FramesToTimecode(times.Start, framesPerSecond);
  entry.Duration = FramesToTimecode(times.Frames, framesPerSecond);
  entry.End = FramesToTimecode(times.Start + times.Frames, framesPerSecond);
}

// The times that an entry has; nothing where no length is said.
std::optional<SubtitleTimes> TimesOf(const SubPicturePlay& entry, int framesPerSecond) {
  const std::int64_t start = StartOf(entry, framesPerSecond);
  const auto end = EndOf(entry, framesPerSecond);
  return end ? std::optional(SubtitleTimes{start, *end - start}) : std::nullopt;
}

// Why an entry that starts at `start` meets the one before it.
std::optional<Message> RefuseAfter(const SubPicturePlay& earlier, std::int64_t start, int framesPerSecond) {
  const std::int64_t end = EndOf(earlier, framesPerSecond).value_or(StartOf(earlier, framesPerSecond));
  if (end < start) {
    return std::nullopt;
  }
  return MessageOf(message::SubtitleMeetsEarlier, {}, FramesToTimecode(start, framesPerSecond),
                   FramesToTimecode(end, framesPerSecond));
}

}  // namespace

std::optional<std::int64_t> EndOf(const SubPicturePlay& entry, int framesPerSecond) {
  if (!entry.End.empty()) {
    return TimecodeToFrames(entry.End, framesPerSecond);
  }
  if (entry.Duration.empty()) {
    return std::nullopt;
  }
  return StartOf(entry, framesPerSecond) + TimecodeToFrames(entry.Duration, framesPerSecond);
}

std::optional<std::size_t> EntryAt(std::span<const SubPicturePlay> list, std::int64_t frame,
                                   int framesPerSecond) {
  const std::vector<std::int64_t> starts = StartsOf(list, framesPerSecond);
  std::int64_t latest = -1;
  for (const std::int64_t start : starts) {
    latest = start <= frame ? std::max(latest, start) : latest;
  }
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < list.size(); ++i) {
    // One without an end ends where any other starts.
    const std::int64_t end = EndOf(list[i], framesPerSecond).value_or(starts[i] == latest ? Never : latest);
    const bool covers = starts[i] <= frame && frame < end;
    if (covers && (!found || starts[i] > starts[*found])) {
      found = i;
    }
  }
  return found;
}

std::optional<Message> RefuseStart(std::span<const SubPicturePlay> list, std::int64_t frame,
                                   const SubtitleClock& clock) {
  const auto startsAt = [&](std::int64_t wanted) {
    return std::ranges::any_of(
        list, [&](const SubPicturePlay& entry) { return StartOf(entry, clock.FramesPerSecond) == wanted; });
  };
  if (EntryAt(list, frame, clock.FramesPerSecond) || startsAt(frame)) {
    return MessageOf(message::SubtitleExists, {});
  }
  if (startsAt(frame + 1)) {
    return MessageOf(message::SubtitleWithoutRoom, {}, FramesToTimecode(frame + 1, clock.FramesPerSecond));
  }
  if (clock.TrackFrames > 0 && frame >= clock.TrackFrames) {
    return MessageOf(message::SubtitlePastEnd, {}, FramesToTimecode(frame, clock.FramesPerSecond),
                     FramesToTimecode(clock.TrackFrames, clock.FramesPerSecond));
  }
  return std::nullopt;
}

std::size_t InsertByStart(std::vector<SubPicturePlay>& list, SubPicturePlay entry, int framesPerSecond) {
  list.push_back(std::move(entry));
  const std::size_t place = SortByStart(list, list.size() - 1, framesPerSecond);
  SubtitleTimes times{StartOf(list[place], framesPerSecond), NewEntrySeconds * framesPerSecond};
  if (place + 1 < list.size()) {
    const std::int64_t gap = StartOf(list[place + 1], framesPerSecond) - times.Start - 1;
    times.Frames = std::min(times.Frames, std::max<std::int64_t>(gap, 0));
  }
  PutSpan(list[place], times, framesPerSecond);
  return place;
}

std::optional<Message> RefuseTimes(std::span<const SubPicturePlay> list, std::size_t entry,
                                   const SubtitleTimes& times, const SubtitleClock& clock) {
  const int rate = clock.FramesPerSecond;
  if (TimesOf(list[entry], rate) == times) {
    return std::nullopt;
  }
  if (times.Start < 0 || times.Frames < 1) {
    return MessageOf(message::SubtitleTimesUnfit, {});
  }
  std::vector<std::int64_t> starts = StartsOf(list, rate);
  const bool moves = starts[entry] != times.Start;
  if (moves && clock.TrackFrames > 0 && times.Start >= clock.TrackFrames) {
    return MessageOf(message::SubtitlePastEnd, {}, FramesToTimecode(times.Start, rate),
                     FramesToTimecode(clock.TrackFrames, rate));
  }
  starts[entry] = times.Start;
  const std::vector<std::size_t> order = OrderOf(starts);
  const auto place = std::ranges::find(order, entry);
  const std::int64_t end = times.Start + times.Frames;
  if (place + 1 != order.end() && end >= starts[*(place + 1)]) {
    return MessageOf(message::SubtitleMeetsNext, {}, FramesToTimecode(end, rate),
                     FramesToTimecode(starts[*(place + 1)], rate));
  }
  return moves && place != order.begin() ? RefuseAfter(list[*(place - 1)], times.Start, rate) : std::nullopt;
}

std::size_t PutTimes(std::vector<SubPicturePlay>& list, std::size_t entry, const SubtitleTimes& times,
                     int framesPerSecond) {
  SubPicturePlay& changed = list[entry];
  const auto before = TimesOf(changed, framesPerSecond);
  if (before != times) {
    if (!before || before->Frames != times.Frames) {
      changed.StopTime.clear();
    }
    PutSpan(changed, times, framesPerSecond);
  }
  return SortByStart(list, entry, framesPerSecond);
}

}  // namespace quorvelant
