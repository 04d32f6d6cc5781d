#include "desk/frame_picture.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "base/file_text.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/messages.h"
#include "check/track_times.h"
#include "codec/colors.h"
#include "desk/messages.h"
#include "edit/messages.h"
#include "edit/track_viewer.h"
#include "menu/film_picture.h"
#include "model/keys.h"
#include "model/picture_file.h"

namespace quorvelant {

namespace {

constexpr int Slot = 0;
// The indexes of a film's files, and how long they are together.
struct FilmIndexes {
  UserInterface& Ui;
  std::int64_t Frames = 0;
  bool Failed = false;  // and told

  std::optional<PictureIndex> IndexOf(const std::string& path) {
    if (const std::string_view why = WhyNotPlainFile(path); !why.empty()) {
      Ui.Tell(MessageOf(message::SourceMissing, path, path, why));
      Failed = true;
    }
    if (Failed || IsPicture(path)) {
      return std::nullopt;
    }
    Random files(Ui);
    files.DimFiles(Slot);
    auto index =
        files.OpenSource(path, Slot) ? IndexForPictures(path, IndexStore(), files, Slot, Ui) : std::nullopt;
    Failed = Failed || !index;
    Frames += index ? index->TotalFrames : 0;
    return index;
  }
};

std::optional<Picture> Decoded(const Track& track, const std::string& path, const ViewerPicture& at,
                               PictureLoader& pictures, UserInterface& ui) {
  if (IsPicture(path)) {
    return pictures.Load(path);
  }
  Random files(ui);
  files.DimFiles(Slot);
  if (!files.OpenSource(path, Slot)) {
    return std::nullopt;
  }
  const auto planes =
      DecodeFilmPicture({.Offset = at.Offset, .Bytes = at.Bytes}, track.Coding != "MPEG1", files, Slot);
  if (!planes) {
    ui.Tell(MessageOf(message::PictureNotIntra, path));
    return std::nullopt;
  }
  return PictureFromPlanes(*planes);
}

}  // namespace

std::optional<TrackPicture> PictureOfTrack(const Project& project, std::size_t track, std::int64_t frame,
                                           PictureLoader& pictures, UserInterface& ui) {
  const Track& shown = project.Tracks[track];
  FilmIndexes indexes{.Ui = ui};
  const std::vector<ViewerPicture> all =
      PicturesOf(project, track, [&indexes](const std::string& path) { return indexes.IndexOf(path); });
  if (indexes.Failed) {
    return std::nullopt;
  }
  if (all.empty()) {
    ui.Tell(MessageOf(message::FrameEmpty, TrackKey(track)));
    return std::nullopt;
  }
  if (EqualNoCase(shown.TrackType, "Motion") && frame >= indexes.Frames) {
    const int rate = TrackTimes(shown).FramesPerSecond;
    ui.Tell(MessageOf(message::FramePastEnd, TrackKey(track), FramesToTimecode(indexes.Frames, rate)));
    return std::nullopt;
  }
  const auto after = std::ranges::upper_bound(all, frame, {}, &ViewerPicture::Frame);
  const ViewerPicture& at = after == all.begin() ? *after : *std::prev(after);
  const std::string path = SystemPath(shown.VideoPlays[at.Play].File, project.SourceFolder());
  auto picture = Decoded(shown, path, at, pictures, ui);
  return picture ? std::optional(TrackPicture{at.Frame, *std::move(picture)}) : std::nullopt;
}

}  // namespace quorvelant
