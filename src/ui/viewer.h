// The moment that Picture and the tables of a track's overlays look at.
#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "edit/track_viewer.h"
#include "picture/picture_loader.h"
#include "subpicture/unit_reader.h"
#include "ui/document.h"
#include "ui/jobs.h"
#include "ui/selection.h"

namespace quorvelant {

// A track in the viewer: the state machine of edit/track_viewer.h with the pictures of ui/track_pictures.h
// and what ui/coded_subtitle.h makes of the entry. It follows the selection: a scene, a cell, a subtitle
// stream or an entry is gone to.
class Viewer : public QObject {
  Q_OBJECT
 public:
  // `pictures` is called from another thread.
  Viewer(Document& document, Selection& selection, Jobs& jobs, PictureLoader& pictures,
         QObject* parent = nullptr);
  ~Viewer() override;

  // Nothing while no track is shown.
  [[nodiscard]] const Track* Shown() const;
  [[nodiscard]] std::optional<std::size_t> TrackIndex() const;
  [[nodiscard]] const ViewerState& State() const { return state_; }
  [[nodiscard]] const std::vector<ViewerPicture>& Pictures() const;
  [[nodiscard]] std::int64_t FrameCount() const;  // of the track, 0 while it is not known, and for a still

  void Move(ViewerMove move);
  void ToFrame(std::int64_t frame);
  void ToView(ViewMode view);
  void LookAgain();  // for the pictures, where there was a hindrance: files come back
  // In the present view where that shows the stream, or else in the first that does.
  void ToStream(std::size_t stream);

  // The picture at the state, as decoded; null where there is none. While another one of the track is looked
  // for the last one stays.
  [[nodiscard]] const QImage& PictureNow() const;
  // Whether `PictureNow` is that of the state.
  [[nodiscard]] bool IsPictureReady() const;
  // Why there is none, or that only a picture before the frame can be shown ("picture 3 frames before").
  [[nodiscard]] QString PictureWords() const;
  // What a player makes of the subtitle of the moment, on or off the disc's subtitle streams; the last one
  // stays while another is coded.
  [[nodiscard]] const std::optional<ShownUnit>& UnitNow() const;
  [[nodiscard]] QString UnitWords() const;  // why there is none, although an entry is there

  // The buttons of the moment, and the one that is chosen among them; nothing for none.
  [[nodiscard]] std::optional<std::size_t> ButtonSet() const;
  [[nodiscard]] std::optional<std::size_t> Button() const;
  void ChooseButton(std::optional<std::size_t> button);

 signals:
  void ButtonChosen();
  void StateMoved();       // another moment, view or stream; also another track
  void PicturesChanged();  // the list: another track, or its index is ready
  void PictureReady();     // `PictureNow` is that of the state
  void UnitReady();        // `UnitNow` is that of the state

 private:
  class Private;
  void Show(std::optional<std::size_t> track);
  void Follow(const ChangeEvent& event);
  void FollowKey();
  void GoTo(const GoToPlace& place);
  void Put(const ViewerState& state);
  void TakeList();
  void TellList();
  void FindUnit();
  [[nodiscard]] ViewerMaterial Material() const;  // of the track that is shown

  std::unique_ptr<Private> private_;
  ViewerState state_;
};

}  // namespace quorvelant
