#include "subpicture/spu_timing.h"

#include <algorithm>
#include <limits>

#include "base/random.h"
#include "base/timecode.h"
#include "model/held_cells.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::int64_t MostStopDelay = 65535;

bool GoesOnDisc(const SubPicturePlay& play) {
  return play.Used && !play.File.empty();
}

// The index of the play that goes on the disc after `index`; the count of plays where there is none.
std::size_t NextOnDisc(const SubtitleStream& stream, std::size_t index) {
  ++index;
  while (index < stream.SubPlays.size() && !GoesOnDisc(stream.SubPlays[index])) {
    ++index;
  }
  return index;
}

SPURecord RecordOf(const SubPicturePlay& play, std::size_t entry, const TrackClock& clock,
                   const SubStreamOptions& options) {
  SPURecord record;
  record.Conversion = {play.ConversionP, play.ConversionE1, play.ConversionE2, play.ConversionBg};
  record.ColorIndexes = {play.ColorE2, play.ColorE1, play.ColorP, play.ColorBg};
  record.Contrasts = {play.ContrastE2, play.ContrastE1, play.ContrastP, play.ContrastBg};
  const PlaySpan span = SpanOf(play, clock.FramesPerSecond);
  record.StartPTS = clock.PtsOf(span.Start);
  record.EndPTS = clock.PtsOf(span.End);
  const std::int64_t frames =
      play.StopTime.empty() ? span.End - span.Start : TimecodeToFrames(play.StopTime, clock.FramesPerSecond);
  record.StopDelay = StopDelayOf(frames, clock, options.StopDelayOnClock);
  record.X1 = play.X1;
  record.Y1 = play.Y1;
  record.Forced = play.Forced;
  record.File = SystemPath(play.File, options.SourceFolder);
  record.Entry = entry;
  return record;
}

}  // namespace

PlaySpan SpanOf(const SubPicturePlay& play, int framesPerSecond) {
  const std::int64_t start = TimecodeToFrames(play.Start, framesPerSecond);
  const std::int64_t end = play.End.empty() ? start + TimecodeToFrames(play.Duration, framesPerSecond)
                                            : TimecodeToFrames(play.End, framesPerSecond);
  return {start, end};
}

PlaySpan SpanOf(const HighlightPlay& play, int framesPerSecond) {
  const std::int64_t start = TimecodeToFrames(play.StartTimeToVideo, framesPerSecond);
  return {start, start + TimecodeToFrames(play.Duration, framesPerSecond)};
}

std::uint32_t StopDelayOf(std::int64_t frames, const TrackClock& clock, bool onClock) {
  const std::int64_t within = std::clamp<std::int64_t>(frames, 0, std::numeric_limits<std::int32_t>::max());
  const std::int64_t frameTicks = onClock ? clock.FramePeriod : 90000 / clock.FramesPerSecond;
  const std::int64_t steps = within * frameTicks / 1024;
  return static_cast<std::uint32_t>(std::min(steps, MostStopDelay));
}

std::vector<SPURecord> PrepareSPURecords(const SubtitleStream& stream, const std::vector<bool>& held,
                                         const TrackClock& clock, const SubStreamOptions& options) {
  std::vector<SPURecord> records;
  for (std::size_t i = 0; i < stream.SubPlays.size(); ++i) {
    if (!GoesOnDisc(stream.SubPlays[i])) {
      continue;
    }
    records.push_back(RecordOf(stream.SubPlays[i], i, clock, options));
    if (options.StillTrack || (i < held.size() && held[i])) {
      records.back().StopDelay = 0;
    }
  }
  if (options.ExtendFinalSubtitle && !records.empty()) {
    records.back().StopDelay = 0;
  }
  return records;
}

std::vector<bool> ScenesWithStillTime(const Project& project, std::size_t trackIndex, const Rules& rules) {
  const HeldCells held(project, rules);
  std::vector<bool> holds(project.Tracks[trackIndex].Scenes.size());
  for (const auto& place : LivePgcs(project)) {
    for (const Cell_P* cell : LiveCells(*place.Chain)) {
      if (held.Has(*cell) && cell->SegmentUsed == static_cast<std::int64_t>(trackIndex) &&
          cell->pScene >= 0 && static_cast<std::size_t>(cell->pScene) < holds.size()) {
        holds[static_cast<std::size_t>(cell->pScene)] = true;
      }
    }
  }
  return holds;
}

std::vector<bool> HeldPlays(const Track& track, const SubtitleStream& stream,
                            const std::vector<bool>& sceneHolds, int framesPerSecond) {
  // The scene a frame lies in: the last that starts at or before it; the count of scenes for none.
  const auto sceneAt = [&](std::int64_t frame) {
    std::size_t found = track.Scenes.size();
    for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
      if (track.Scenes[i].Frame <= frame &&
          (found == track.Scenes.size() || track.Scenes[i].Frame >= track.Scenes[found].Frame)) {
        found = i;
      }
    }
    return found;
  };
  std::vector<bool> held(stream.SubPlays.size());
  for (std::size_t i = 0; i < stream.SubPlays.size(); ++i) {
    const SubPicturePlay& play = stream.SubPlays[i];
    if (!GoesOnDisc(play) || TimecodeToFrames(play.StopTime, framesPerSecond) != 0) {
      continue;
    }
    const std::size_t scene = sceneAt(SpanOf(play, framesPerSecond).Start);
    const std::size_t next = NextOnDisc(stream, i);
    const bool last = next == stream.SubPlays.size() ||
                      sceneAt(SpanOf(stream.SubPlays[next], framesPerSecond).Start) != scene;
    held[i] = last && scene < sceneHolds.size() && sceneHolds[scene];
  }
  return held;
}

}  // namespace quorvelant
