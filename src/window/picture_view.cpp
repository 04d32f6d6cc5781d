#include "window/picture_view.h"

#include <fmt/format.h>

#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "check/track_times.h"
#include "edit/button_aims.h"
#include "model/highlight_groups.h"
#include "subpicture/bitmap_window.h"
#include "ui/tree_model.h"

namespace quorvelant {

namespace {

constexpr int NewWidth = 160;
constexpr int NewHeight = 40;

QPoint CentreOf(const HighlightArea& area) {
  return {(area.X1 + area.X2) / 2, (area.Y1 + area.Y2) / 2};
}

// The direction in which one point lies from another.
LinkDirection DirectionOf(const QPoint& from, const QPoint& to) {
  const QPoint way = to - from;
  if (std::abs(way.x()) >= std::abs(way.y())) {
    return way.x() < 0 ? LinkDirection::Left : LinkDirection::Right;
  }
  return way.y() < 0 ? LinkDirection::Up : LinkDirection::Down;
}

const std::string& LinkOf(const HighlightButton& button, LinkDirection direction) {
  switch (direction) {
    case LinkDirection::Left:
      return button.Left;
    case LinkDirection::Right:
      return button.Right;
    case LinkDirection::Up:
      return button.Up;
    case LinkDirection::Down:
      break;
  }
  return button.Down;
}

std::optional<LinkDirection> DirectionOfKey(int key) {
  switch (key) {
    case Qt::Key_Left:
      return LinkDirection::Left;
    case Qt::Key_Right:
      return LinkDirection::Right;
    case Qt::Key_Up:
      return LinkDirection::Up;
    case Qt::Key_Down:
      return LinkDirection::Down;
    default:
      return std::nullopt;
  }
}

QPoint StepOf(LinkDirection direction) {
  switch (direction) {
    case LinkDirection::Left:
      return {-1, 0};
    case LinkDirection::Right:
      return {1, 0};
    case LinkDirection::Up:
      return {0, -1};
    case LinkDirection::Down:
      break;
  }
  return {0, 1};
}

// Moved, as far as the picture goes.
HighlightArea MovedBy(HighlightArea area, const QPoint& by, int lines) {
  const int across = std::clamp(by.x(), -area.X1, std::max(ScreenWidth - 1 - area.X2, -area.X1));
  const int down = std::clamp(by.y(), -area.Y1, std::max(lines - 1 - area.Y2, -area.Y1));
  area.X1 += across;
  area.X2 += across;
  area.Y1 += down;
  area.Y2 += down;
  return area;
}

// From one rectangle's side to the other's opposite one.
void PaintArrow(QPainter& painter, const QPointF& from, const QPointF& to, double head) {
  const QPointF way = to - from;
  const double length = std::hypot(way.x(), way.y());
  if (length < 1) {
    return;
  }
  const QPointF ahead = way / length * head;
  const QPointF aside(-ahead.y() / 2, ahead.x() / 2);
  painter.drawLine(from, to - ahead / 2);
  QPainterPath tip(to);
  tip.lineTo(to - ahead + aside);
  tip.lineTo(to - ahead - aside);
  tip.closeSubpath();
  painter.fillPath(tip, painter.pen().color());
}

// Where an arrow of a direction leaves a box, or enters it: those there and back run beside each other.
QPointF SideOf(const QRectF& box, LinkDirection direction, bool leaves) {
  const QPoint step = StepOf(direction);
  const QPointF aside(-step.y() * box.width() / 8, step.x() * box.height() / 8);
  const QPointF way(step.x() * box.width() / 2, step.y() * box.height() / 2);
  return box.center() + aside + (leaves ? way : -way);
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

QPointF PictureView::Knob(const HighlightArea& area) const {
  const QRectF box = Geometry().ToSpace(area);
  return {box.right() + 2 * HandleSize(), box.center().y()};
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), palette().color(QPalette::Dark));
  const PictureGeometry geometry = Geometry();
  PaintScreen(painter, geometry);
  if (parts_.View.Shown() == nullptr) {
    return;
  }
  if (showsSafeArea_) {
    PaintSafeArea(painter, geometry);
  }
  PaintButtons(painter, geometry);
  if (showsLinks_) {
    PaintLinks(painter, geometry);
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
  }
}

void PictureView::PaintScreen(QPainter& painter, const PictureGeometry& geometry) const {
  painter.fillRect(geometry.Screen(), Qt::black);
  const QImage& picture = parts_.View.PictureNow();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (!picture.isNull()) {
    painter.drawImage(geometry.PictureTarget(), picture, geometry.PictureSource(picture.size()));
  } else {
    painter.setPen(Qt::lightGray);
    painter.drawText(geometry.Screen(), Qt::AlignCenter | Qt::TextWordWrap, parts_.View.PictureWords());
  }
  if (!overlay_.isNull()) {
    painter.drawImage(geometry.Screen(), overlay_);
  }
}

void PictureView::PaintSafeArea(QPainter& painter, const PictureGeometry& geometry) const {
  const QRectF& screen = geometry.Screen();
  painter.setBrush(Qt::NoBrush);
  // Tubes hide up to a twentieth of the picture at each side; texts keep a tenth.
  for (const double part : {0.05, 0.1}) {
    const QRectF inner = screen.adjusted(screen.width() * part, screen.height() * part,
                                         -screen.width() * part, -screen.height() * part);
    painter.setPen(QPen(Qt::black, 2));
    painter.drawRect(inner);
    painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
    painter.drawRect(inner);
  }
}

void PictureView::PaintButtons(QPainter& painter, const PictureGeometry& geometry) const {
  const HighlightPlay* const set = board_.Set();
  const auto chosen = parts_.View.Button();
  const QColor accent = palette().color(QPalette::Highlight);
  for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
    const bool isHeld = (gesture_ == Gesture::Move || gesture_ == Gesture::Resize) && held_ == i;
    const HighlightArea area = isHeld ? Dragged(now_) : *board_.AreaOf(i);
    const QRectF box = geometry.ToSpace(area);
    const bool isChosen = chosen == i;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 3));
    painter.drawRect(box);
    painter.setPen(QPen(isChosen ? accent.lighter(140) : QColor(Qt::white), isChosen ? 2 : 1));
    painter.drawRect(box);
    const QString words =
        QStringLiteral("%1 %2").arg(i + 1).arg(QString::fromStdString(set->Buttons[i].Name));
    QRectF label(box.topLeft(), QSizeF(fontMetrics().horizontalAdvance(words) + 6, fontMetrics().height()));
    label.moveBottom(box.top() >= geometry.Screen().top() + label.height() ? box.top()
                                                                           : box.top() + label.height());
    painter.fillRect(label, isChosen ? accent : QColor(0, 0, 0, 160));
    painter.setPen(isChosen ? palette().color(QPalette::HighlightedText) : QColor(Qt::white));
    painter.drawText(label, Qt::AlignCenter, words);
    if (isChosen) {
      const double size = HandleSize();
      painter.setPen(QPen(Qt::black, 1));
      painter.setBrush(palette().color(QPalette::HighlightedText));
      for (const double x : {box.left(), box.center().x(), box.right()}) {
        for (const double y : {box.top(), box.center().y(), box.bottom()}) {
          if (QPointF(x, y) != box.center()) {
            painter.drawRect(QRectF(x - size / 2, y - size / 2, size, size));
          }
        }
      }
      painter.setBrush(accent);
      painter.drawEllipse(Knob(area), size / 2, size / 2);
    }
  }
  if (gesture_ == Gesture::Draw) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(accent, 2, Qt::DashLine));
    painter.drawRect(geometry.ToSpace(Dragged(now_)));
  }
  if (gesture_ == Gesture::Link) {
    painter.setPen(QPen(accent, 3));
    PaintArrow(painter, geometry.ToSpace(before_).center(), now_, 2 * HandleSize());
  }
}

void PictureView::PaintLinks(QPainter& painter, const PictureGeometry& geometry) const {
  using enum LinkDirection;
  const HighlightPlay* const set = board_.Set();
  const auto chosen = parts_.View.Button();
  for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
    if (chosen && *chosen != i) {
      continue;
    }
    for (const LinkDirection direction : {Left, Right, Up, Down}) {
      const auto to = FindButton(set->Buttons, LinkOf(set->Buttons[i], direction));
      if (!to || *to == i) {
        continue;
      }
      const QPointF from = SideOf(geometry.ToSpace(*board_.AreaOf(i)), direction, true);
      const QPointF end = SideOf(geometry.ToSpace(*board_.AreaOf(*to)), direction, false);
      painter.setPen(QPen(QColor(0, 0, 0, 160), 4));
      PaintArrow(painter, from, end, HandleSize());
      painter.setPen(QPen(palette().color(QPalette::Highlight).lighter(150), 2));
      PaintArrow(painter, from, end, HandleSize());
    }
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

std::optional<PictureView::Grip> PictureView::GripAt(const QPointF& place) const {
  const auto chosen = parts_.View.Button();
  if (!chosen) {
    return std::nullopt;
  }
  const QRectF box = Geometry().ToSpace(*board_.AreaOf(*chosen));
  const double reach = HandleSize();
  const auto near = [reach](double a, double b) { return std::abs(a - b) <= reach * 0.75; };
  const bool isAcross = near(place.x(), box.center().x());
  const bool isDown = near(place.y(), box.center().y());
  const Grip grip{.Left = near(place.x(), box.left()),
                  .Right = near(place.x(), box.right()),
                  .Top = near(place.y(), box.top()),
                  .Bottom = near(place.y(), box.bottom())};
  const bool holdsColumn = grip.Left || grip.Right;
  const bool holdsLine = grip.Top || grip.Bottom;
  return (holdsColumn && (holdsLine || isDown)) || (holdsLine && isAcross) ? std::optional(grip)
                                                                           : std::nullopt;
}

HighlightArea PictureView::Dragged(const QPointF& place) const {
  const PictureGeometry geometry = Geometry();
  if (gesture_ == Gesture::Draw) {
    return geometry.AreaBetween(pressed_, place);
  }
  const QPoint pixel = geometry.PixelAt(place);
  if (gesture_ == Gesture::Move) {
    return MovedBy(before_, pixel - geometry.PixelAt(pressed_), geometry.Lines());
  }
  HighlightArea area = before_;
  constexpr int Least = 3;
  if (grip_.Left) {
    area.X1 = std::min(pixel.x(), area.X2 - Least);
  } else if (grip_.Right) {
    area.X2 = std::max(pixel.x(), area.X1 + Least);
  }
  if (grip_.Top) {
    area.Y1 = std::min(pixel.y(), area.Y2 - Least);
  } else if (grip_.Bottom) {
    area.Y2 = std::max(pixel.y(), area.Y1 + Least);
  }
  return area;
}

void PictureView::EndGesture() {
  gesture_ = Gesture::None;
  update();
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
  pressed_ = place;
  now_ = place;
  const auto chosen = parts_.View.Button();
  const bool isKnob = chosen && QLineF(place, Knob(*board_.AreaOf(*chosen))).length() <= HandleSize();
  const auto under = ButtonUnder(place);
  if (isKnob || ((event->modifiers() & Qt::AltModifier) != 0 && under)) {
    gesture_ = Gesture::Link;
    held_ = isKnob ? *chosen : *under;
  } else if (const auto grip = GripAt(place)) {
    gesture_ = Gesture::Resize;
    held_ = *chosen;
    grip_ = *grip;
  } else if (under) {
    gesture_ = Gesture::Move;
    held_ = *under;
  } else {
    parts_.View.ChooseButton({});
    gesture_ = geometry.Screen().contains(place) ? Gesture::Draw : Gesture::None;
    return;
  }
  before_ = *board_.AreaOf(held_);
  parts_.View.ChooseButton(held_);
  update();
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
  now_ = event->position();
  if (gesture_ != Gesture::None) {
    update();
    return;
  }
  if (picks_) {
    return;
  }
  const auto grip = GripAt(now_);
  if (grip) {
    const bool isColumn = grip->Left || grip->Right;
    const bool isLine = grip->Top || grip->Bottom;
    const bool isFalling = (grip->Left && grip->Top) || (grip->Right && grip->Bottom);
    setCursor(isColumn && isLine ? (isFalling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor)
              : isColumn         ? Qt::SizeHorCursor
                                 : Qt::SizeVerCursor);
  } else {
    setCursor(ButtonUnder(now_) ? Qt::SizeAllCursor : Qt::ArrowCursor);
  }
}

void PictureView::mouseReleaseEvent(QMouseEvent* event) {
  const Gesture gesture = gesture_;
  if (event->button() != Qt::LeftButton || gesture == Gesture::None) {
    return;
  }
  now_ = event->position();
  const HighlightArea area = Dragged(now_);
  EndGesture();
  if (gesture == Gesture::Draw) {
    board_.Add(area);
  } else if (gesture == Gesture::Link) {
    if (const auto to = ButtonUnder(now_); to && *to != held_) {
      board_.Link(held_, *to, DirectionOf(CentreOf(before_), CentreOf(*board_.AreaOf(*to))));
    }
  } else if (area != before_) {
    board_.Put(held_, area);
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

// The next nearest button that lies in a direction, or any where none does.
void PictureView::LinkTowards(LinkDirection direction) {
  const HighlightPlay& set = *board_.Set();
  const std::size_t from = *parts_.View.Button();
  const QPoint centre = CentreOf(*board_.AreaOf(from));
  std::vector<std::size_t> others;
  for (std::size_t i = 0; i < set.Buttons.size(); ++i) {
    if (i != from) {
      others.push_back(i);
    }
  }
  if (others.empty()) {
    return;
  }
  const auto rank = [&](std::size_t one) {
    const QPoint to = CentreOf(*board_.AreaOf(one));
    const bool isAside = DirectionOf(centre, to) != direction;
    return std::pair(isAside, (to - centre).manhattanLength());
  };
  std::ranges::stable_sort(others, {}, rank);
  const std::string& link = LinkOf(set.Buttons[from], direction);
  const auto linked =
      std::ranges::find_if(others, [&](std::size_t one) { return set.Buttons[one].Name == link; });
  const bool isLast = linked == others.end() || std::next(linked) == others.end();
  board_.Link(from, isLast ? others.front() : *std::next(linked), direction);
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
    LinkTowards(*direction);
    return true;
  }
  constexpr int Large = 10;
  const QPoint step = StepOf(*direction) * ((event.modifiers() & Qt::ControlModifier) != 0 ? Large : 1);
  const int lines = Geometry().Lines();
  HighlightArea area = *board_.AreaOf(*button);
  if ((event.modifiers() & Qt::ShiftModifier) != 0) {
    area.X2 = std::clamp(area.X2 + step.x(), area.X1 + 3, ScreenWidth - 1);
    area.Y2 = std::clamp(area.Y2 + step.y(), area.Y1 + 3, lines - 1);
  } else {
    area = MovedBy(area, step, lines);
  }
  if (area != *board_.AreaOf(*button)) {
    board_.Put(*button, area);
    TellChosen();
  }
  return true;
}

void PictureView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && (gesture_ != Gesture::None || picks_)) {
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

HighlightArea PictureView::AreaAround(const QPoint& pixel) const {
  const int lines = Geometry().Lines();
  const int left = std::clamp(pixel.x() - NewWidth / 2, 0, ScreenWidth - NewWidth);
  const int top = std::clamp(pixel.y() - NewHeight / 2, 0, lines - NewHeight);
  return {.X1 = left, .X2 = left + NewWidth - 1, .Y1 = top, .Y2 = top + NewHeight - 1};
}

// Rows from the top, in columns, until nothing is in the way.
void PictureView::AddButton(const std::string& aim) {
  const int lines = Geometry().Lines();
  const HighlightPlay* const set = board_.Set();
  const auto isFree = [&](const HighlightArea& area) {
    for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
      const HighlightArea other = *board_.AreaOf(i);
      if (area.X1 <= other.X2 && other.X1 <= area.X2 && area.Y1 <= other.Y2 && other.Y1 <= area.Y2) {
        return false;
      }
    }
    return true;
  };
  HighlightArea area = AreaAround({ScreenWidth / 2, lines / 2});
  for (int x = 80 + NewWidth / 2; x < ScreenWidth - 80; x += NewWidth + 20) {
    for (int y = 80 + NewHeight / 2; y < lines - 80; y += NewHeight + 20) {
      if (const HighlightArea at = AreaAround({x, y}); isFree(at)) {
        board_.Add(at, aim);
        setFocus();
        return;
      }
    }
  }
  board_.Add(area, aim);
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
    if (!board_.Add(AreaAround(pixel), key)) {
      break;  // why was told
    }
    pixel.ry() += NewHeight + 20;
  }
  event->setDropAction(Qt::CopyAction);
  event->accept();
  setFocus();
  TellChosen();
}

}  // namespace quorvelant
