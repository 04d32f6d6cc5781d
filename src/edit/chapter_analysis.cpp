#include "edit/chapter_analysis.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string>

#include "base/text.h"
#include "base/timecode.h"
#include "disc/video_standard.h"
#include "edit/messages.h"
#include "model/keys.h"
#include "model/walk.h"
#include "picture/bitmap_size.h"

namespace quorvelant {

namespace {

// The index of no track and no scene.
constexpr std::int32_t Gone = -1;

std::vector<IndexSource> VideoFiles(const Project& project, const Track& track) {
  std::vector<IndexSource> files;
  for (const VideoPlay* play : Live(track.VideoPlays)) {
    if (!play->File.empty()) {
      const std::string path = SystemPath(play->File, project.SourceFolder());
      files.push_back({path, ReadBitmapSize(path).has_value()});
    }
  }
  return files;
}

// A cell that showed scene `pScene` of the track comes to show what `moved` says, or nothing.
void MoveScene(Cell_P& cell, const std::vector<std::int32_t>& moved) {
  if (cell.pScene < 0 || static_cast<std::size_t>(cell.pScene) >= moved.size()) {
    return;
  }
  const std::int32_t scene = moved[static_cast<std::size_t>(cell.pScene)];
  cell.pScene = std::max(scene, 0);
  cell.SegmentUsed = scene == Gone ? Gone : cell.SegmentUsed;
}

// Takes the scenes past the end away, but never the first; cells keep what they showed by index. Removed
// cells do so too: one that comes back must not show another scene.
bool RemoveScenesPastEnd(Project& project, std::size_t trackIndex) {
  Track& track = project.Tracks[trackIndex];
  std::vector<std::int32_t> moved;  // old index -> new one
  std::vector<Scene> kept;
  for (const Scene& scene : track.Scenes) {
    const bool keep = kept.empty() || scene.Frame < track.VideoFrames;
    moved.push_back(keep ? static_cast<std::int32_t>(kept.size()) : Gone);
    if (keep) {
      kept.push_back(scene);
    }
  }
  if (kept.size() == track.Scenes.size()) {
    return false;
  }
  track.Scenes = std::move(kept);
  for (const auto& place : AllPgcs(project)) {
    for (Cell_P* cell : AllCells(*place.Chain)) {
      if (cell->SegmentUsed == static_cast<std::int32_t>(trackIndex)) {
        MoveScene(*cell, moved);
      }
    }
  }
  return true;
}

bool IsSlideShow(const Track& track) {
  return EqualNoCase(track.TrackType, "SlideShow");
}

// How long each slide shows, in frames; one without a time of its own as long as a slide does.
std::vector<std::int64_t> SlideFrames(const Project& project, const Track& track) {
  const std::string& standard = track.Standard.empty() ? project.Standard() : track.Standard;
  std::vector<std::int64_t> frames;
  for (const VideoPlay* play : Live(track.VideoPlays)) {
    if (!play->File.empty()) {
      const std::int64_t hold = TimecodeToFrames(play->SlideDuration, FramesPerSecond(standard));
      frames.push_back(hold > 0 ? hold : TimingOf(EqualNoCase(standard, "NTSC")).SlideGopFrames);
    }
  }
  return frames;
}

// Where chapters can start in files one after the other, `indexes` in their order: nothing where one has
// none.
std::vector<ChapterStart> StartsIn(const std::vector<std::optional<PictureIndex>>& indexes) {
  std::vector<ChapterStart> starts;
  std::int64_t base = 0;
  for (const std::optional<PictureIndex>& index : indexes) {
    starts.push_back({base, !index || index->Entries.empty()});
    for (std::size_t i = 0; index && i < index->Entries.size(); ++i) {
      starts.push_back({base + index->Entries[i].Frame, false});
    }
    base += index ? index->TotalFrames : 1;
  }
  std::ranges::stable_sort(starts, {}, &ChapterStart::Frame);
  return starts;
}

// Stores the length of the track, removes the scenes past it where it is known and moves the others.
void FitScenes(Project& project, std::size_t trackIndex, std::int64_t frames, bool endIsKnown,
               const std::vector<ChapterStart>& starts, UserInterface& ui) {
  Track& track = project.Tracks[trackIndex];
  track.VideoFrames =
      static_cast<std::int32_t>(std::min<std::int64_t>(frames, std::numeric_limits<std::int32_t>::max()));
  if (endIsKnown && RemoveScenesPastEnd(project, trackIndex)) {
    ui.Tell(MessageOf(message::ScenesRemoved, TrackKey(trackIndex)));
  }
  for (std::size_t i = 1; i < track.Scenes.size(); ++i) {
    track.Scenes[i].Frame = static_cast<std::int32_t>(MoveToChapterStart(starts, track.Scenes[i].Frame));
  }
}

}  // namespace

bool AnalyseChapters(Project& project, std::size_t trackIndex, IndexStore& store, UserInterface& ui) {
  Track& track = project.Tracks[trackIndex];
  const std::vector<IndexSource> files = VideoFiles(project, track);
  if (files.empty()) {
    ui.Tell(MessageOf(message::AnalysisWithoutFile, TrackKey(trackIndex)));
    return false;
  }
  if (std::all_of(files.begin(), files.end(), [](const IndexSource& file) { return file.IsImage; })) {
    return true;
  }
  if (IsSlideShow(track)) {
    const std::vector<std::int64_t> slides = SlideFrames(project, track);
    FitScenes(project, trackIndex, std::accumulate(slides.begin(), slides.end(), std::int64_t{0}),
              !track.ExtendSlideForAudio, ChapterStarts(project, trackIndex, store), ui);
    return true;
  }
  const IndexRun run = BuildPictureIndex(files, {}, store, ui);
  if (!run.Complete) {
    return false;
  }
  std::int64_t frames = 0;
  std::vector<std::optional<PictureIndex>> indexes;
  for (const FileIndex& file : run.Files) {
    const bool hasOne = file.State != IndexState::NotIndexed;
    frames += hasOne ? file.Index.TotalFrames : 1;
    indexes.push_back(hasOne ? std::optional(file.Index) : std::nullopt);
  }
  if (frames <= 0) {
    return true;  // an index that tells nothing
  }
  FitScenes(project, trackIndex, frames, true, StartsIn(indexes), ui);
  return true;
}

std::vector<ChapterStart> ChapterStarts(const Project& project, std::size_t trackIndex,
                                        const IndexStore& store) {
  const Track& track = project.Tracks[trackIndex];
  if (IsSlideShow(track)) {
    std::vector<ChapterStart> starts;
    std::int64_t base = 0;
    for (const std::int64_t frames : SlideFrames(project, track)) {
      starts.push_back({base, false});
      base += frames;
    }
    return starts;
  }
  std::vector<std::optional<PictureIndex>> indexes;
  for (const IndexSource& file : VideoFiles(project, track)) {
    indexes.push_back(file.IsImage ? std::nullopt : FindPictureIndex(file.Name, store));
  }
  return StartsIn(indexes);
}

std::int64_t MoveToChapterStart(const std::vector<ChapterStart>& starts, std::int64_t frame) {
  const auto behind =
      std::upper_bound(starts.begin(), starts.end(), frame,
                       [](std::int64_t at, const ChapterStart& start) { return at < start.Frame; });
  if (behind == starts.begin() || (behind - 1)->AnywhereBehind) {
    return frame;
  }
  return (behind - 1)->Frame;
}

}  // namespace quorvelant
