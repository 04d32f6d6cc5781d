#include "menu/thumbnails.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"
#include "base/user_interface.h"
#include "codec/colors.h"
#include "edit/track_viewer.h"
#include "menu/film_picture.h"
#include "menu/page_layout.h"
#include "model/picture_file.h"

namespace quorvelant {

namespace {

// Whether nearly all of a picture is too dark to be told from black.
bool IsBlack(const Planes& planes) {
  constexpr std::uint8_t Dark = BlackLuma + 20;
  constexpr std::size_t LightShare = 50;  // one of so many samples may be lighter
  const Bytes& luma = planes.Y().Samples;
  const auto light = std::count_if(luma.begin(), luma.end(), [](std::uint8_t y) { return y > Dark; });
  return static_cast<std::size_t>(light) * LightShare < luma.size();
}

class SceneThumbnails {
 public:
  SceneThumbnails(const Project& project, const IndexStore& store, PictureLoader& pictures, UserInterface& ui,
                  bool skipsBlack)
      : project_(project), store_(store), pictures_(pictures), ui_(ui), files_(ui), skipsBlack_(skipsBlack) {
    files_.DimFiles(Slot);
  }

  Picture Of(std::size_t track, std::size_t scene) {
    const Track& film = project_.Tracks[track];
    if (!row_ || rowTrack_ != track) {
      row_ = PicturesOf(project_, track, [this](const std::string& path) { return IndexOf(path); });
      rowTrack_ = track;
    }
    if (scene >= film.Scenes.size() || row_->empty()) {
      return {};
    }
    const std::int64_t frame = film.Scenes[scene].Frame;
    const auto after = std::ranges::upper_bound(*row_, frame, {}, &ViewerPicture::Frame);
    const auto first = after == row_->begin() ? after : after - 1;
    return At(film, first, frame);
  }

 private:
  static constexpr int Slot = 0;
  using Place = std::vector<ViewerPicture>::const_iterator;

  [[nodiscard]] std::optional<PictureIndex> IndexOf(const std::string& path) {
    if (IsPicture(path) || !Open(path)) {
      return std::nullopt;
    }
    return IndexForPictures(path, store_, files_, Slot, ui_);
  }

  bool Open(const std::string& path) {
    if (path != open_) {
      if (!open_.empty()) {
        files_.AbandonFile(Slot);
      }
      open_ = files_.OpenSource(path, Slot) ? path : std::string();
    }
    return !open_.empty();
  }

  // A black picture gives way to the first that is not, up to two seconds on.
  Picture At(const Track& film, Place first, std::int64_t frame) {
    const std::string path = PathOf(film, *first);
    if (IsPicture(path)) {
      return LoadStill(path);
    }
    const std::int64_t end = frame + std::int64_t{2} * FramesPerSecond(film.Standard);
    std::optional<Planes> shown;
    for (auto at = first; at != row_->end() && (at == first || at->Frame <= end); ++at) {
      auto planes = Decode(film, *at);
      if (planes && (!skipsBlack_ || !IsBlack(*planes))) {
        return PictureFromPlanes(*planes);
      }
      if (!shown) {
        shown = std::move(planes);
      }
      if (!skipsBlack_) {
        break;
      }
    }
    return shown ? PictureFromPlanes(*shown) : Picture();
  }

  [[nodiscard]] std::string PathOf(const Track& film, const ViewerPicture& picture) const {
    return SystemPath(film.VideoPlays[picture.Play].File, project_.SourceFolder());
  }

  Picture LoadStill(const std::string& path) {
    try {
      return pictures_.Load(path);
    } catch (const PictureError& error) {
      ui_.Tell(error.What());
      return {};
    }
  }

  [[nodiscard]] std::optional<Planes> Decode(const Track& film, const ViewerPicture& picture) {
    const std::string path = PathOf(film, picture);
    return Open(path) ? DecodeFilmPicture({.Offset = picture.Offset, .Bytes = picture.Bytes},
                                          film.Coding != "MPEG1", files_, Slot)
                      : std::nullopt;
  }

  const Project& project_;
  const IndexStore& store_;
  PictureLoader& pictures_;
  UserInterface& ui_;
  Random files_;
  bool skipsBlack_;
  std::string open_;  // the file in the slot
  std::optional<std::vector<ViewerPicture>> row_;
  std::size_t rowTrack_ = 0;
};

}  // namespace

ThumbnailSource ThumbnailsOf(const Project& project, const IndexStore& store, PictureLoader& pictures,
                             UserInterface& ui, const Rules& rules) {
  const auto thumbnails = std::make_shared<SceneThumbnails>(project, store, pictures, ui, PagesFit(rules));
  return [thumbnails](std::size_t track, std::size_t scene) { return thumbnails->Of(track, scene); };
}

}  // namespace quorvelant
