// What the mouse does on the picture: gestures on buttons, and elements of the disc dropped on it.
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineF>
#include <QMimeData>
#include <QMouseEvent>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "model/walk.h"
#include "ui/button_areas.h"
#include "ui/button_links.h"
#include "ui/tree_model.h"
#include "window/buttons_pane.h"
#include "window/picture_view.h"

namespace quorvelant {

namespace {

bool IsInMenu(const Project& project, std::size_t track) {
  return std::ranges::any_of(LivePgcs(project), [track](const auto& at) {
    return at.Language != nullptr && std::ranges::any_of(LiveCells(*at.Chain), [track](const Cell_P* cell) {
             return std::cmp_equal(cell->SegmentUsed, track);
           });
  });
}

}  // namespace

bool PictureView::TakesDrawing() const {
  const Track* const track = parts_.View.Shown();
  const auto* const pane = window()->findChild<ButtonsPane*>();
  return track != nullptr && (!EqualNoCase(track->TrackType, "Motion") || !track->HighlightPlays.empty() ||
                              (pane != nullptr && !pane->visibleRegion().isEmpty()) ||
                              IsInMenu(parts_.Doc.Work(), *parts_.View.TrackIndex()));
}

void PictureView::mousePressEvent(QMouseEvent* event) {
  const QPointF place = event->position();
  if (parts_.View.Shown() == nullptr || event->button() != Qt::LeftButton) {
    return;
  }
  const PictureGeometry geometry = Geometry();
  if (picks_) {
    const QPoint pixel = geometry.PixelAt(place);
    PickColor(false);
    emit PickEnded();
    emit ColorPicked(pixel.x(), pixel.y());
    return;
  }
  const auto chosen = parts_.View.Button();
  const auto handles = Handles();
  const bool isKnob = handles && handles->IsAtKnob(place);
  const auto under = ButtonUnder(place);
  const auto held = [this](std::size_t button) { return HeldButton{button, *board_.AreaOf(button)}; };
  if (isKnob || ((event->modifiers() & Qt::AltModifier) != 0 && under)) {
    drag_.Link(held(isKnob ? *chosen : *under), place);
  } else if (const auto grip = handles ? handles->GripAt(place) : std::nullopt) {
    drag_.Resize(held(*chosen), *grip, place);
  } else if (under) {
    drag_.Move(held(*under), place);
  } else {
    parts_.View.ChooseButton({});
    drag_.End();
    refused_.reset();
    if (!geometry.Screen().contains(place)) {
      return;
    }
    if (TakesDrawing()) {
      drag_.Draw(place);
    } else {
      refused_ = place;
    }
    return;
  }
  parts_.View.ChooseButton(drag_.Held().Index);
  update();
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF place = event->position();
  if (drag_.IsOn()) {
    drag_.GoTo(place);
    update();
    return;
  }
  if (picks_) {
    return;
  }
  const auto handles = Handles();
  if (const auto grip = handles ? handles->GripAt(place) : std::nullopt) {
    setCursor(CursorOf(*grip));
  } else {
    setCursor(ButtonUnder(place) ? Qt::SizeAllCursor : Qt::ArrowCursor);
  }
}

void PictureView::mouseReleaseEvent(QMouseEvent* event) {
  if (const auto began = std::exchange(refused_, std::nullopt);
      began && QLineF(*began, event->position()).length() >= QApplication::startDragDistance()) {
    parts_.Doc.Speaks().Status("Nothing was made on this film: New Button in the menu Track makes a button");
  }
  if (event->button() != Qt::LeftButton || !drag_.IsOn()) {
    return;
  }
  drag_.GoTo(event->position());
  const ButtonDrag ended = drag_;
  EndGesture();
  const HighlightArea area = ended.Area(Geometry());
  const auto& [held, before] = ended.Held();
  if (ended.Kind() == DragKind::Draw) {
    board_.Add(area);
  } else if (ended.Kind() == DragKind::Link) {
    if (const auto to = ButtonUnder(ended.Place()); to && *to != held) {
      board_.Link(held, *to, DirectionOf(CentreOf(before), CentreOf(*board_.AreaOf(*to))));
    }
  } else if (area != before) {
    board_.Put(held, area);
  }
  TellChosen();
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (ButtonUnder(event->position())) {
    EndGesture();
    RenameChosen();
  }
}

void PictureView::dragEnterEvent(QDragEnterEvent* event) {
  dragMoveEvent(event);
}

void PictureView::dragMoveEvent(QDragMoveEvent* event) {
  const bool fits = parts_.View.Shown() != nullptr &&
                    event->mimeData()->hasFormat(QString::fromLatin1(KeysMimeType)) &&
                    Geometry().Screen().contains(event->position());
  event->setDropAction(Qt::CopyAction);
  event->setAccepted(fits);
}

void PictureView::dropEvent(QDropEvent* event) {
  const PictureGeometry geometry = Geometry();
  QPoint pixel = geometry.PixelAt(event->position());
  const auto keys = KeysIn(*event->mimeData());
  for (const std::string& key : keys) {
    if (!board_.Add(NewAreaAround(pixel, geometry.Lines()), key)) {
      break;  // why was told
    }
    pixel.ry() += NewButtonStep();
  }
  event->setDropAction(Qt::CopyAction);
  event->accept();
  setFocus();
  TellChosen();
}

}  // namespace quorvelant
