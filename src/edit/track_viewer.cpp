#include "edit/track_viewer.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "disc/video_standard.h"
#include "model/highlight_groups.h"
#include "model/walk.h"
#include "subpicture/subtitle_times.h"

namespace quorvelant {

namespace {

bool IsWide(const Track& track) {
  return track.Aspect == "16:9";
}

const std::vector<SubPicturePlay>* EntriesOf(const ViewerState& state, const Track& track) {
  const bool there = state.Stream && *state.Stream < track.SubStreams.size();
  return there ? &track.SubStreams[*state.Stream].SubPlays : nullptr;
}

// The picture of the last group that begins at or before the frame; the first where there is none.
std::size_t PictureAt(std::span<const ViewerPicture> pictures, std::int64_t frame) {
  const auto after = std::ranges::upper_bound(pictures, frame, {}, &ViewerPicture::Frame);
  return after == pictures.begin() ? 0 : static_cast<std::size_t>(after - pictures.begin()) - 1;
}

ViewerState AtPicture(const ViewerState& state, std::size_t picture, const ViewerMaterial& material) {
  return picture < material.Pictures.size() ? AtFrame(state, material.Pictures[picture].ShownAt(), material)
                                            : state;
}

// The entry that starts nearest to the frame on the asked side.
std::optional<std::size_t> NearestEntry(const std::vector<SubPicturePlay>& entries, std::int64_t frame,
                                        bool before, int framesPerSecond) {
  std::optional<std::size_t> nearest;
  std::int64_t least = std::numeric_limits<std::int64_t>::max();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const std::int64_t start = TimecodeToFrames(entries[i].Start, framesPerSecond);
    const std::int64_t away = before ? frame - start : start - frame;
    if (away > 0 && away < least) {
      least = away;
      nearest = i;
    }
  }
  return nearest;
}

// Where a move among the entries leads.
std::optional<std::size_t> EntryAfterMove(const ViewerState& state, ViewerMove move,
                                          const std::vector<SubPicturePlay>& entries, int framesPerSecond) {
  const bool before = move == ViewerMove::PrevSub;
  if (move == ViewerMove::FirstSub) {
    return 0;
  }
  if (move == ViewerMove::LastSub) {
    return entries.size() - 1;
  }
  if (!state.Entry) {
    return NearestEntry(entries, state.Frame, before, framesPerSecond);
  }
  const bool atEnd = before ? *state.Entry == 0 : *state.Entry + 1 >= entries.size();
  return atEnd ? std::nullopt : std::optional(before ? *state.Entry - 1 : *state.Entry + 1);
}

ViewerState AtEntry(ViewerState state, std::size_t entry, const ViewerMaterial& material) {
  const SubPicturePlay& play = material.Track.SubStreams[*state.Stream].SubPlays[entry];
  state.Frame = TimecodeToFrames(play.Start, TrackTimes(material.Track).FramesPerSecond);
  state.Picture = PictureAt(material.Pictures, state.Frame);
  state.Entry = entry;
  return state;
}

ViewerState WithEntry(ViewerState state, const ViewerMaterial& material) {
  const auto* entries = EntriesOf(state, material.Track);
  state.Entry = entries == nullptr
                    ? std::nullopt
                    : EntryAt(*entries, state.Frame, TrackTimes(material.Track).FramesPerSecond);
  return state;
}

// A stream that its view shows.
ViewerState WithStream(ViewerState state, const ViewerMaterial& material) {
  const std::vector<std::size_t> streams = StreamsIn(state.View, material.Track);
  if (!state.Stream || std::ranges::find(streams, *state.Stream) == streams.end()) {
    state.Stream = streams.empty() ? std::nullopt : std::optional(streams.front());
  }
  return WithEntry(state, material);
}

// How long a slide shows; one without a time of its own as long as the least slide does.
std::int64_t SlideFrames(const VideoPlay& play, const std::string& standard) {
  const std::int64_t frames = TimecodeToFrames(play.SlideDuration, FramesPerSecond(standard));
  return frames > 0 ? frames : TimingOf(EqualNoCase(standard, "NTSC")).SlideGopFrames;
}

ViewerPicture WholePicture(std::int64_t frame, std::size_t play, const std::optional<PictureIndex>& index) {
  ViewerPicture picture{.Frame = frame, .Play = play};
  if (index && !index->Entries.empty()) {
    picture.Offset = index->Entries.front().Offset;
    picture.Bytes = index->Entries.front().Size;
  }
  return picture;
}

// The word for a view in a stream's display mode. "Letter" is short for letterbox.
bool Names(std::string_view word, ViewMode view, bool plain) {
  switch (view) {
    case ViewMode::Pan:
      return EqualNoCase(word, "Pan");
    case ViewMode::LetterBox:
      return EqualNoCase(word, "LetterBox") || EqualNoCase(word, "Letter");
    case ViewMode::Wide:
    case ViewMode::Normal:
      break;
  }
  return EqualNoCase(word, view == ViewMode::Wide ? "Wide" : "Normal") ||
         (plain && (word.empty() || EqualNoCase(word, "Not Specified") || EqualNoCase(word, "Normal")));
}

}  // namespace

std::vector<ViewerPicture> PicturesOf(const Project& project, std::size_t track,
                                      const PictureIndexOf& indexOf) {
  const Track& shown = project.Tracks[track];
  const std::string& standard = shown.Standard.empty() ? project.Standard() : shown.Standard;
  const bool isFilm = EqualNoCase(shown.TrackType, "Motion");
  std::vector<ViewerPicture> pictures;
  std::int64_t base = 0;
  for (const auto& [place, play] : LiveWithIndex(shown.VideoPlays)) {
    if (play.File.empty()) {
      continue;
    }
    const auto index = indexOf(SystemPath(play.File, project.SourceFolder()));
    if (!isFilm) {
      pictures.push_back(WholePicture(base, place, index));
      base += SlideFrames(play, standard);
      continue;
    }
    if (!index) {
      break;
    }
    for (const PictureIndex::Entry& entry : index->Entries) {
      pictures.push_back(
          {.Frame = base + entry.Frame, .Play = place, .Offset = entry.Offset, .Bytes = entry.Size});
    }
    base += index->TotalFrames;
  }
  return pictures;
}

std::vector<ViewMode> OfferedViews(const Track& track) {
  if (!IsWide(track)) {
    return {ViewMode::Normal};
  }
  std::vector<ViewMode> views{ViewMode::Wide};
  constexpr std::uint8_t PanScanDisplay = 4;
  constexpr std::uint8_t LetterBoxDisplay = 2;
  const auto groups = ButtonGroupsOf({}, track.Aspect, track.DisplayMode);
  const auto permits = [&](std::uint8_t display) {
    return std::ranges::find(groups, display, &ButtonGroup::DisplayType) != groups.end();
  };
  if (permits(PanScanDisplay)) {
    views.push_back(ViewMode::Pan);
  }
  if (permits(LetterBoxDisplay)) {
    views.push_back(ViewMode::LetterBox);
  }
  return views;
}

ButtonView ButtonViewOf(const Track& track, ViewMode view) {
  return {.Ntsc = TrackTimes(track).IsNtsc(),
          .ShowsWide = view == ViewMode::Wide,
          .Mode = view,
          .DisplayModes = OfferedViews(track).size()};
}

ViewerState OpenViewer(const ViewerMaterial& material) {
  return AtPicture(WithStream({.View = OfferedViews(material.Track).front()}, material), 0, material);
}

ViewerState Moved(const ViewerState& state, ViewerMove move, const ViewerMaterial& material) {
  if (move == ViewerMove::PrevGop) {
    return state.Picture == 0 ? state : AtPicture(state, state.Picture - 1, material);
  }
  if (move == ViewerMove::NextGop) {
    return AtPicture(state, state.Picture + 1, material);
  }
  const auto* entries = EntriesOf(state, material.Track);
  if (entries == nullptr || entries->empty()) {
    return state;
  }
  const auto entry = EntryAfterMove(state, move, *entries, TrackTimes(material.Track).FramesPerSecond);
  return entry ? AtEntry(state, *entry, material) : state;
}

ViewerState AtFrame(const ViewerState& state, std::int64_t frame, const ViewerMaterial& material) {
  ViewerState moved = state;
  const std::int64_t length = TrackTimes(material.Track).Frames;
  moved.Frame = std::max<std::int64_t>(length > 0 ? std::min(frame, length - 1) : frame, 0);
  moved.Picture = PictureAt(material.Pictures, moved.Frame);
  return WithEntry(moved, material);
}

ViewerState InView(const ViewerState& state, ViewMode view, const ViewerMaterial& material) {
  const std::vector<ViewMode> offered = OfferedViews(material.Track);
  if (std::ranges::find(offered, view) == offered.end()) {
    return state;
  }
  ViewerState changed = state;
  changed.View = view;
  return WithStream(changed, material);
}

ViewerState OnStream(const ViewerState& state, std::size_t stream, const ViewerMaterial& material) {
  const std::vector<std::size_t> streams = StreamsIn(state.View, material.Track);
  if (std::ranges::find(streams, stream) == streams.end()) {
    return state;
  }
  ViewerState changed = state;
  changed.Stream = stream;
  return WithEntry(changed, material);
}

ViewerState Refreshed(const ViewerState& state, const ViewerMaterial& material) {
  const std::vector<ViewMode> offered = OfferedViews(material.Track);
  ViewerState fresh = state;
  if (std::ranges::find(offered, state.View) == offered.end()) {
    fresh.View = offered.front();
  }
  return AtFrame(WithStream(fresh, material), state.Frame, material);
}

std::vector<std::size_t> StreamsIn(ViewMode view, const Track& track) {
  const bool plain = view == (IsWide(track) ? ViewMode::Wide : ViewMode::Normal);
  std::vector<std::size_t> streams;
  for (const auto& [place, stream] : LiveWithIndex(track.SubStreams)) {
    const auto words = Split(stream.DisplayMode, "/");
    if (std::ranges::any_of(words, [&](std::string_view word) { return Names(Trim(word), view, plain); })) {
      streams.push_back(place);
    }
  }
  return streams;
}

std::string StreamsLine(ViewMode view, bool changed) {
  const auto name = [view]() -> std::string_view {
    switch (view) {
      case ViewMode::Wide:
        return "Wide";
      case ViewMode::Pan:
        return "Pan-Scan";
      case ViewMode::LetterBox:
        return "LetterBoxed";
      case ViewMode::Normal:
        break;
    }
    return "4:3";
  };
  return fmt::format("Subtitle streams {} for this Viewing Mode ({})", changed ? "set" : "that are available",
                     name());
}

std::string StatusLine(const ViewerState& state, const ViewerMaterial& material) {
  const auto* entries = EntriesOf(state, material.Track);
  if (entries == nullptr || !state.Entry || *state.Entry >= entries->size()) {
    return "No Subpictures at this time frame";
  }
  const SubPicturePlay& entry = (*entries)[*state.Entry];
  const int rate = TrackTimes(material.Track).FramesPerSecond;
  const std::int64_t start = TimecodeToFrames(entry.Start, rate);
  const auto end = EndOf(entry, rate);
  return fmt::format("Subpicture Start= {} ; Subpicture End={} (Duration={})", FramesToTimecode(start, rate),
                     end ? FramesToTimecode(*end, rate) : "CELL_END",
                     FramesToTimecode(end ? *end - start : 0, rate));
}

}  // namespace quorvelant
