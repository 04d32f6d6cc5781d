// The moment that Picture and the tables of a track's overlays look at.
#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "edit/track_viewer.h"
#include "ui/document.h"
#include "ui/jobs.h"
#include "ui/selection.h"

namespace quorvelant {

// A track in the viewer: the state machine of edit/track_viewer.h with the track's pictures, which are
// indexed and decoded in a worker. The newest request wins.
class Viewer : public QObject {
  Q_OBJECT
 public:
  Viewer(Document& document, Selection& selection, Jobs& jobs, QObject* parent = nullptr);
  ~Viewer() override;

  // Nothing while no track is shown.
  [[nodiscard]] const Track* Shown() const;
  [[nodiscard]] std::optional<std::size_t> TrackIndex() const;
  [[nodiscard]] const ViewerState& State() const { return state_; }
  [[nodiscard]] const std::vector<ViewerPicture>& Pictures() const { return pictures_; }
  [[nodiscard]] std::int64_t FrameCount() const;  // of the track, 0 while it is not known

  void Move(ViewerMove move);
  void ToFrame(std::int64_t frame);
  void ToView(ViewMode view);
  void ToStream(std::size_t stream);

  // The picture at the state, as decoded (720 columns); null while it is looked for or where there is none.
  [[nodiscard]] const QImage& PictureNow() const { return picture_; }
  // Why there is none, or that only a picture before the frame can be shown ("picture 3 frames before").
  [[nodiscard]] QString PictureWords() const;

 signals:
  void StateMoved();       // another moment, view or stream; also another track
  void PicturesChanged();  // the list: another track, or its index is ready
  void PictureReady();     // `PictureNow` is that of the state

 private:
  class Private;
  std::unique_ptr<Private> private_;
  ViewerState state_;
  std::vector<ViewerPicture> pictures_;
  QImage picture_;
};

}  // namespace quorvelant
