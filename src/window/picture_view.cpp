#include "window/picture_view.h"

#include <fmt/format.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLineF>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "check/track_times.h"
#include "model/walk.h"
#include "ui/button_areas.h"
#include "ui/button_links.h"
#include "ui/tree_model.h"
#include "window/buttons_pane.h"
#include "window/picture_painter.h"

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

PictureView::PictureView(WindowParts& parts, ButtonBoard& board, QWidget* parent)
    : QWidget(parent), parts_(parts), board_(board) {
  setAccessibleName(tr("Picture and buttons"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAcceptDrops(true);
  setMinimumSize(fontMetrics().averageCharWidth() * 24, fontMetrics().height() * 8);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  Viewer& viewer = parts.View;
  connect(&viewer, &Viewer::PictureReady, this, qOverload<>(&QWidget::update));
  connect(&viewer, &Viewer::PicturesChanged, this, qOverload<>(&QWidget::update));
  connect(&viewer, &Viewer::UnitReady, this, &PictureView::Refresh);
  connect(&viewer, &Viewer::StateMoved, this, &PictureView::Refresh);
  connect(&viewer, &Viewer::ButtonChosen, this, [this] {
    Refresh();
    TellChosen();
  });
  connect(&board, &ButtonBoard::StateChanged, this, &PictureView::Refresh);
  connect(&parts.Chosen, &Selection::KeyChanged, this, &PictureView::Refresh);  // the palette may be another
  connect(&parts.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this, [this] {
    EndGesture();
    Refresh();
  });
  Refresh();
}

QSize PictureView::sizeHint() const {
  const int height = fontMetrics().height() * 20;
  return {height * 16 / 9, height};
}

PictureGeometry PictureView::Geometry() const {
  const Track* const track = parts_.View.Shown();
  const double rim = HandleSize();
  return {parts_.View.State().View, track != nullptr && TrackTimes(*track).IsNtsc(),
          QRectF(rect()).adjusted(rim, rim, -rim, -rim)};
}

void PictureView::ShowSafeArea(bool shown) {
  showsSafeArea_ = shown;
  update();
}

void PictureView::ShowLinks(bool shown) {
  showsLinks_ = shown;
  update();
}

void PictureView::PickColor(bool wanted) {
  picks_ = wanted;
  setCursor(wanted ? Qt::CrossCursor : Qt::ArrowCursor);
}

void PictureView::Refresh() {
  overlay_ = {};
  const auto track = parts_.View.TrackIndex();
  if (const auto& unit = parts_.View.UnitNow(); track && unit && parts_.View.State().Entry) {
    const Project& project = parts_.Doc.Work();
    overlay_ = OverlayImage(
        *unit, ShownPalette(project, *track, parts_.View.State().Frame, parts_.Chosen.Structure()),
        TrackTimes(project.Tracks[*track]).IsNtsc(), board_.Looks());
  }
  parts_.Commands.Refresh();
  update();
}

void PictureView::TellChosen() {
  const auto button = parts_.View.Button();
  const HighlightPlay* const set = board_.Set();
  if (!button || set == nullptr) {
    setAccessibleDescription({});
    return;
  }
  const HighlightArea area = *board_.AreaOf(*button);
  const std::string hidden = board_.WordsOfChosen();
  const std::string words =
      fmt::format("Button# {} {}: {}, {} to {}, {}{}{}", *button + 1, set->Buttons[*button].Name, area.X1,
                  area.Y1, area.X2, area.Y2, hidden.empty() ? "" : "; ", hidden);
  setAccessibleDescription(QString::fromStdString(words));
  parts_.Doc.Speaks().Status(words);
}

// --- drawing ---

double PictureView::HandleSize() const {
  return std::max(6.0, fontMetrics().height() / 2.0);
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), palette().color(QPalette::Dark));
  const PictureGeometry geometry = Geometry();
  PicturePainter over(painter, geometry, {palette(), fontMetrics(), HandleSize()});
  over.PaintScreen(parts_.View.PictureNow(), parts_.View.PictureWords(), overlay_);
  if (parts_.View.Shown() == nullptr) {
    return;
  }
  const auto chosen = parts_.View.Button();
  if (showsSafeArea_) {
    over.PaintSafeArea();
  }
  over.PaintButtons(board_, chosen, drag_);
  if (showsLinks_) {
    over.PaintLinks(board_, chosen);
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
  }
}

// --- the mouse ---

std::optional<std::size_t> PictureView::ButtonUnder(const QPointF& place) const {
  const PictureGeometry geometry = Geometry();
  if (!geometry.Screen().contains(place)) {
    return std::nullopt;
  }
  const QPoint pixel = geometry.PixelAt(place);
  return board_.ButtonAt(pixel.x(), pixel.y());
}

std::optional<ButtonHandles> PictureView::Handles() const {
  const auto chosen = parts_.View.Button();
  return chosen ? std::optional(ButtonHandles(Geometry().ToSpace(*board_.AreaOf(*chosen)), HandleSize()))
                : std::nullopt;
}

void PictureView::EndGesture() {
  drag_.End();
  update();
}

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

void PictureView::contextMenuEvent(QContextMenuEvent* event) {
  const auto under =
      event->reason() == QContextMenuEvent::Mouse ? ButtonUnder(event->pos()) : parts_.View.Button();
  parts_.View.ChooseButton(under);
  QMenu menu(this);
  if (under) {
    menu.addAction(tr("Rename Button…"), this, &PictureView::RenameChosen);
    menu.addAction(tr("Remove Button"), this, &PictureView::RemoveChosen);
    menu.addSeparator();
  }
  using enum ActionId;
  for (const ActionId id : {NewButton, RouteButtons, NextView, ActionId::SafeArea, SaveFrame}) {
    menu.addAction(parts_.Commands.Of(id));
  }
  menu.exec(event->globalPos());
}

// --- keys ---

// Keys that the window has actions for go to the chosen button.
bool PictureView::IsOwnKey(const QKeyEvent& event) const {
  const bool isArrow = DirectionOfKey(event.key()).has_value();
  const bool isForButton =
      isArrow || event.key() == Qt::Key_F2 || event.key() == Qt::Key_Delete || event.key() == Qt::Key_Escape;
  return isForButton && parts_.View.Button();
}

bool PictureView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsOwnKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

std::vector<HighlightArea> PictureView::Areas() const {
  const HighlightPlay* const set = board_.Set();
  std::vector<HighlightArea> areas;
  for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
    areas.push_back(*board_.AreaOf(i));
  }
  return areas;
}

bool PictureView::ArrowKey(const QKeyEvent& event) {
  const auto direction = DirectionOfKey(event.key());
  const auto button = parts_.View.Button();
  if (!direction) {
    return false;
  }
  if (!button) {
    if (event.modifiers() == Qt::NoModifier && StepOf(*direction).x() != 0) {
      parts_.View.Move(*direction == LinkDirection::Left ? ViewerMove::PrevGop : ViewerMove::NextGop);
      return true;
    }
    return false;
  }
  if ((event.modifiers() & Qt::AltModifier) != 0) {
    if (const auto to = NextLinkTarget(board_.Set()->Buttons, Areas(), *button, *direction)) {
      board_.Link(*button, *to, *direction);
    }
    return true;
  }
  constexpr int Large = 10;
  const QPoint step = StepOf(*direction) * ((event.modifiers() & Qt::ControlModifier) != 0 ? Large : 1);
  const int lines = Geometry().Lines();
  const HighlightArea before = *board_.AreaOf(*button);
  const HighlightArea area = (event.modifiers() & Qt::ShiftModifier) != 0 ? ResizedBy(before, step, lines)
                                                                          : MovedBy(before, step, lines);
  if (area != before) {
    board_.Put(*button, area);
    TellChosen();
  }
  return true;
}

void PictureView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && (drag_.IsOn() || picks_)) {
    EndGesture();
    PickColor(false);
    emit PickEnded();
  } else if (event->key() == Qt::Key_Escape && parts_.View.Button()) {
    parts_.View.ChooseButton({});
  } else if (event->key() == Qt::Key_F2 && parts_.View.Button()) {
    RenameChosen();
  } else if (event->key() == Qt::Key_Delete && parts_.View.Button()) {
    RemoveChosen();
  } else if (!ArrowKey(*event)) {
    QWidget::keyPressEvent(event);
  }
}

// Tab goes through the buttons, then on to the next control.
bool PictureView::focusNextPrevChild(bool next) {
  const HighlightPlay* const set = board_.Set();
  const std::size_t count = set != nullptr ? set->Buttons.size() : 0;
  const auto chosen = parts_.View.Button();
  const bool isAtEnd = chosen && (next ? *chosen + 1 >= count : *chosen == 0);
  if (count == 0 || isAtEnd) {
    return QWidget::focusNextPrevChild(next);
  }
  parts_.View.ChooseButton(!chosen ? (next ? 0 : count - 1) : next ? *chosen + 1 : *chosen - 1);
  return true;
}

void PictureView::RenameChosen() {
  const auto button = parts_.View.Button();
  if (!button) {
    return;
  }
  const std::string former = board_.Set()->Buttons[*button].Name;
  if (const auto name =
          parts_.Answers.AskText("Rename Button", "The name by which other buttons link to it", former)) {
    board_.Rename(*button, *name);
  }
}

void PictureView::RemoveChosen() {
  if (const auto button = parts_.View.Button()) {
    board_.Remove(*button);
  }
}

// --- elements of the disc that become buttons ---

void PictureView::AddButton(const std::string& aim) {
  board_.Add(FreeArea(Areas(), Geometry().Lines()), aim);
  setFocus();
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
