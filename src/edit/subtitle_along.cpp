#include "edit/subtitle_along.h"

#include <span>
#include <utility>
#include <vector>

#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/change.h"
#include "edit/messages.h"
#include "edit/subtitle_ticks.h"
#include "model/keys.h"
#include "subpicture/messages.h"

namespace quorvelant {

namespace {

using Entries = std::vector<SubPicturePlay>;

const Entries* EntriesAt(const Project& project, const SubtitlePlace& place) {
  const bool isTrack = place.Track < project.Tracks.Count() && !project.Tracks[place.Track].Removed;
  if (!isTrack || place.Stream >= project.Tracks[place.Track].SubStreams.size()) {
    return nullptr;
  }
  const SubtitleStream& stream = project.Tracks[place.Track].SubStreams[place.Stream];
  return stream.Removed || place.Entry >= stream.SubPlays.size() ? nullptr : &stream.SubPlays;
}

// The frame at which an entry without an end ends for those who move it: where the next one starts.
std::int64_t EndIn(const Entries& list, std::size_t entry, int rate) {
  if (const auto end = EndOf(list[entry], rate)) {
    return *end;
  }
  return TimecodeToFrames(list[entry + 1 < list.size() ? entry + 1 : entry].Start, rate);
}

void Move(SubPicturePlay& entry, std::int64_t by, int rate) {
  entry.Start = FramesToTimecode(TimecodeToFrames(entry.Start, rate) + by, rate);
  if (!entry.End.empty()) {
    entry.End = FramesToTimecode(TimecodeToFrames(entry.End, rate) + by, rate);
  }
}

}  // namespace

Outcome SetTimesAlong(EditSession& session, const SubtitlePlace& place, const SubtitleTimes& times) {
  const Entries* const entries = EntriesAt(session.Work(), place);
  if (entries == nullptr) {
    const std::string key = SubPlayKey(place);
    return Outcome::Refused(MessageOf(message::NoSuchElement, key, "subtitle", key));
  }
  const Track& track = session.Work().Tracks[place.Track];
  const TrackTimes clock(track);
  const int rate = clock.FramesPerSecond;
  const bool moves = times.Start != TimecodeToFrames((*entries)[place.Entry].Start, rate);
  if (moves && place.Entry > 0 && times.Start <= TimecodeToFrames((*entries)[place.Entry - 1].Start, rate)) {
    return Outcome::Refused(MessageOf(message::SubtitleMeetsEarlier, SubPlayKey(place),
                                      clock.Timecode(times.Start),
                                      clock.Timecode(EndIn(*entries, place.Entry - 1, rate))));
  }
  // Among those before it and itself the usual rules hold.
  const std::span<const SubPicturePlay> head(entries->data(), place.Entry + 1);
  if (auto refusal = RefuseTimes(head, place.Entry, times, {rate, clock.Frames})) {
    return Outcome::Refused(*std::move(refusal));
  }
  const std::int64_t by = times.Start + times.Frames - EndIn(*entries, place.Entry, rate);
  if (const std::int64_t last = TimecodeToFrames(entries->back().Start, rate) + by;
      place.Entry + 1 < entries->size() && by > 0 && clock.StartsPastEnd(last)) {
    return Outcome::Refused(
        MessageOf(message::SubtitlePastEnd, SubPlayKey(place), clock.Timecode(last), clock.End()));
  }
  Change change(session, "Subtitle Times");
  Entries& changed = change.EditTrack(place.Track).SubStreams[place.Stream].SubPlays;
  for (std::size_t later = place.Entry + 1; by != 0 && later < changed.size(); ++later) {
    Move(changed[later], by, rate);
  }
  // Nothing overtakes anything, so the entry keeps its place.
  PutTimes(changed, place.Entry, times, rate);
  for (std::size_t entry = place.Entry; entry < changed.size(); ++entry) {
    changed[entry].Forced =
        changed[entry].Forced || RefuseForcedMark(changed[entry], false, track.HighlightPlays, rate);
  }
  return change.Commit(SubPlayKey(place));
}

}  // namespace quorvelant
