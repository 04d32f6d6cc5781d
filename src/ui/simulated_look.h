// What a simulated player shows: the picture of its moment, with a viewer of its own.
#pragma once

#include <QImage>
#include <QObject>
#include <cstdint>
#include <optional>
#include <string>

#include "player/nav_machine.h"
#include "ui/document.h"
#include "ui/jobs.h"
#include "ui/overlay_image.h"
#include "ui/picture_geometry.h"
#include "ui/selection.h"
#include "ui/viewer.h"

namespace quorvelant {

// How the player's screen shows films of 16:9.
enum class PlayerScreenKind : std::uint8_t { Wide, LetterBox, PanScan };

// What is chosen in the window stays as it is while a disc plays.
class SimulatedLook : public QObject {
  Q_OBJECT
 public:
  SimulatedLook(Document& document, Jobs& jobs, PictureLoader& pictures);

  void Show(const NavDisc& disc, const NavState& state, PlayerScreenKind screen);

  // False where the cell has no track, or nothing plays.
  [[nodiscard]] bool HasPicture() const { return hasPicture_; }
  [[nodiscard]] const QImage& Picture() const { return viewer_.PictureNow(); }
  [[nodiscard]] bool IsReady() const { return viewer_.IsPictureReady(); }
  [[nodiscard]] QString Words() const;  // why there is no picture
  // What lies over it: subtitles that show, and the chosen button in the colours of its mark.
  [[nodiscard]] QImage Overlay(bool isPressed) const;
  [[nodiscard]] PictureGeometry Geometry(const QRectF& space) const;
  // The button under a pixel of the disc, from 0.
  [[nodiscard]] std::optional<std::size_t> ButtonAt(const QPoint& pixel) const;
  // How long the cell plays by the pictures of its film, where the project does not know it.
  [[nodiscard]] std::optional<double> CellSeconds() const;
  [[nodiscard]] std::optional<std::size_t> TrackIndex() const { return viewer_.TrackIndex(); }
  [[nodiscard]] ViewMode View() const { return viewer_.State().View; }
  [[nodiscard]] std::int64_t Frame() const { return viewer_.State().Frame; }

 signals:
  void Changed();

 private:
  void ShowStream(const NavDisc& disc, const NavState& state);
  [[nodiscard]] const HighlightPlay* Buttons() const;
  [[nodiscard]] bool ShowsSubpicture() const;

  Document& document_;
  Selection chosen_;
  Viewer viewer_;
  std::string cell_;  // that plays
  std::optional<std::size_t> button_;
  bool hasPicture_ = false;
  bool hasPage_ = false;
  bool hasStream_ = false;
  bool subtitlesOn_ = false;
};

}  // namespace quorvelant
