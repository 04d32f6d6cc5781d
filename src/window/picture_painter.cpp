#include "window/picture_painter.h"

#include <QPainterPath>
#include <cmath>

#include "model/highlight_groups.h"
#include "ui/button_areas.h"
#include "ui/button_handles.h"
#include "ui/button_links.h"

namespace quorvelant {

namespace {

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

void PicturePainter::PaintScreen(const QImage& picture, const QString& words, const QImage& overlay) {
  painter_.fillRect(geometry_.Screen(), Qt::black);
  painter_.setRenderHint(QPainter::SmoothPixmapTransform);
  if (!picture.isNull()) {
    painter_.drawImage(geometry_.PictureTarget(), picture, geometry_.PictureSource(picture.size()));
  } else {
    painter_.setPen(Qt::lightGray);
    painter_.drawText(geometry_.Screen(), Qt::AlignCenter | Qt::TextWordWrap, words);
  }
  if (!overlay.isNull()) {
    painter_.drawImage(geometry_.Screen(), overlay);
  }
}

void PicturePainter::PaintSafeArea() {
  const QRectF& screen = geometry_.Screen();
  painter_.setBrush(Qt::NoBrush);
  // Tubes hide up to a twentieth of the picture at each side; texts keep a tenth.
  for (const double part : {0.05, 0.1}) {
    const QRectF inner = screen.adjusted(screen.width() * part, screen.height() * part,
                                         -screen.width() * part, -screen.height() * part);
    painter_.setPen(QPen(Qt::black, 2));
    painter_.drawRect(inner);
    painter_.setPen(QPen(Qt::white, 1, Qt::DashLine));
    painter_.drawRect(inner);
  }
}

void PicturePainter::PaintButtons(const ButtonBoard& board, std::optional<std::size_t> chosen,
                                  const ButtonDrag& drag) {
  const HighlightPlay* const set = board.Set();
  for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
    const QRectF box = geometry_.ToSpace(drag.Carries(i) ? drag.Area(geometry_) : *board.AreaOf(i));
    const bool isChosen = chosen == i;
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(Qt::black, 3));
    painter_.drawRect(box);
    painter_.setPen(QPen(isChosen ? Accent().lighter(140) : QColor(Qt::white), isChosen ? 2 : 1));
    painter_.drawRect(box);
    PaintLabel(box, QStringLiteral("%1 %2").arg(i + 1).arg(QString::fromStdString(set->Buttons[i].Name)),
               isChosen);
    if (isChosen) {
      PaintHandles(box);
    }
  }
  PaintDrag(drag);
}

// Above the box, or within it where the screen ends.
void PicturePainter::PaintLabel(const QRectF& box, const QString& words, bool isChosen) {
  const QFontMetrics& letters = style_.Letters;
  QRectF label(box.topLeft(), QSizeF(letters.horizontalAdvance(words) + 6, letters.height()));
  label.moveBottom(box.top() >= geometry_.Screen().top() + label.height() ? box.top()
                                                                          : box.top() + label.height());
  painter_.fillRect(label, isChosen ? Accent() : QColor(0, 0, 0, 160));
  painter_.setPen(isChosen ? OnAccent() : QColor(Qt::white));
  painter_.drawText(label, Qt::AlignCenter, words);
}

void PicturePainter::PaintHandles(const QRectF& box) {
  const ButtonHandles handles(box, style_.HandleSize);
  painter_.setPen(QPen(Qt::black, 1));
  painter_.setBrush(OnAccent());
  for (const QRectF& square : handles.Squares()) {
    painter_.drawRect(square);
  }
  painter_.setBrush(Accent());
  painter_.drawEllipse(handles.Knob(), handles.KnobRadius(), handles.KnobRadius());
}

// What a new button or a link would be.
void PicturePainter::PaintDrag(const ButtonDrag& drag) {
  if (drag.Kind() == DragKind::Draw) {
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(Accent(), 2, Qt::DashLine));
    painter_.drawRect(geometry_.ToSpace(drag.Area(geometry_)));
  }
  if (drag.Kind() == DragKind::Link) {
    painter_.setPen(QPen(Accent(), 3));
    PaintArrow(painter_, geometry_.ToSpace(drag.Held().Area).center(), drag.Place(), 2 * style_.HandleSize);
  }
}

void PicturePainter::PaintLinks(const ButtonBoard& board, std::optional<std::size_t> chosen) {
  using enum LinkDirection;
  const HighlightPlay* const set = board.Set();
  for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
    if (chosen && *chosen != i) {
      continue;
    }
    for (const LinkDirection direction : {Left, Right, Up, Down}) {
      const auto to = FindButton(set->Buttons, set->Buttons[i].*LinkTowards(direction));
      if (!to || *to == i) {
        continue;
      }
      const QPointF from = SideOf(geometry_.ToSpace(*board.AreaOf(i)), direction, true);
      const QPointF end = SideOf(geometry_.ToSpace(*board.AreaOf(*to)), direction, false);
      painter_.setPen(QPen(QColor(0, 0, 0, 160), 4));
      PaintArrow(painter_, from, end, style_.HandleSize);
      painter_.setPen(QPen(Accent().lighter(150), 2));
      PaintArrow(painter_, from, end, style_.HandleSize);
    }
  }
}

}  // namespace quorvelant
