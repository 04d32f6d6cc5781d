// The viewer of a track as a state machine: a state and an event in, a state out. No file is opened here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/picture_index.h"
#include "edit/button_rules.h"
#include "model/project.h"

namespace quorvelant {

// A picture that can be decoded by itself, or a slide.
struct ViewerPicture {
  std::int64_t Frame = 0;    // on the track, of the first picture of its group: where players can jump to
  std::size_t Play = 0;      // index in `VideoPlays`
  std::uint64_t Offset = 0;  // of its sequence header in the play's file; 0 for a bitmap
  std::uint64_t Bytes = 0;   // 0 where the file is to be taken whole
  // Pictures of its group that are shown before it, as those of an open group are that come after it.
  std::int64_t Lead = 0;

  [[nodiscard]] std::int64_t ShownAt() const { return Frame + Lead; }
  bool operator==(const ViewerPicture&) const = default;
};

// The index of a file, given by its path of this system; nothing where there is none.
using PictureIndexOf = std::function<std::optional<PictureIndex>(const std::string& path)>;

// The pictures of all live plays in a row. A slide and a still are one picture for their time. A film's play
// without an index ends the row, since nobody knows where the next one begins.
[[nodiscard]] std::vector<ViewerPicture> PicturesOf(const Project& project, std::size_t track,
                                                    const PictureIndexOf& indexOf);

// What is looked at. The pictures are those of the track, in the order of their frames.
struct ViewerMaterial {
  const quorvelant::Track& Track;
  std::span<const ViewerPicture> Pictures;
};

struct ViewerState {
  ViewMode View = ViewMode::Normal;
  std::int64_t Frame = 0;   // the moment looked at: exact, where a subtitle or a typed time says so
  std::size_t Picture = 0;  // of the group that the frame is of, or else the first
  std::optional<std::size_t> Stream = {};  // index in `SubStreams`
  std::optional<std::size_t> Entry = {};   // of the stream, at the frame
  bool operator==(const ViewerState&) const = default;
};

enum class ViewerMove { PrevGop, NextGop, FirstSub, PrevSub, NextSub, LastSub };

// Normal for a 4:3 track; otherwise wide, and the displays that the track permits.
[[nodiscard]] std::vector<ViewMode> OfferedViews(const Track& track);
// How buttons are edited in a view of the track.
[[nodiscard]] ButtonView ButtonViewOf(const Track& track, ViewMode view);

// On the first picture and the first stream of the first view.
[[nodiscard]] ViewerState OpenViewer(const ViewerMaterial& material);
// The moves stop at the ends. Those among subtitles do nothing without a stream or where no entry lies that
// way.
[[nodiscard]] ViewerState Moved(const ViewerState& state, ViewerMove move, const ViewerMaterial& material);
// Before the first frame is the first; after the end of a film its last frame.
[[nodiscard]] ViewerState AtFrame(const ViewerState& state, std::int64_t frame,
                                  const ViewerMaterial& material);
// A view that is not offered changes nothing. A stream that the view does not show gives way to its first.
[[nodiscard]] ViewerState InView(const ViewerState& state, ViewMode view, const ViewerMaterial& material);
[[nodiscard]] ViewerState OnStream(const ViewerState& state, std::size_t stream,
                                   const ViewerMaterial& material);
// The state after the track has changed: another list of pictures, streams or entries.
[[nodiscard]] ViewerState Refreshed(const ViewerState& state, const ViewerMaterial& material);

// The live subtitle streams of a view, by the words of their display modes. Empty: `NoStreams`.
[[nodiscard]] std::vector<std::size_t> StreamsIn(ViewMode view, const Track& track);
inline constexpr std::string_view NoStreams = "--- None Available ---";
// The line above the streams; `changed` once another view was chosen.
[[nodiscard]] std::string StreamsLine(ViewMode view, bool changed);
// The times of the entry that shows, or that there is none.
[[nodiscard]] std::string StatusLine(const ViewerState& state, const ViewerMaterial& material);

}  // namespace quorvelant
