#include "ui/button_handles.h"

#include <QLineF>
#include <algorithm>
#include <cmath>

#include "ui/button_areas.h"

namespace quorvelant {

Qt::CursorShape CursorOf(const ButtonGrip& grip) {
  const bool isColumn = grip.Left || grip.Right;
  const bool isLine = grip.Top || grip.Bottom;
  const bool isFalling = (grip.Left && grip.Top) || (grip.Right && grip.Bottom);
  if (isColumn && isLine) {
    return isFalling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
  }
  return isColumn ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

HighlightArea PulledTo(HighlightArea area, const ButtonGrip& grip, const QPoint& pixel) {
  if (grip.Left) {
    area.X1 = std::min(pixel.x(), area.X2 - LeastButtonSpan);
  } else if (grip.Right) {
    area.X2 = std::max(pixel.x(), area.X1 + LeastButtonSpan);
  }
  if (grip.Top) {
    area.Y1 = std::min(pixel.y(), area.Y2 - LeastButtonSpan);
  } else if (grip.Bottom) {
    area.Y2 = std::max(pixel.y(), area.Y1 + LeastButtonSpan);
  }
  return area;
}

std::array<QRectF, 8> ButtonHandles::Squares() const {
  const QPointF middle = box_.center();
  const auto square = [this](double x, double y) {
    return QRectF(x - size_ / 2, y - size_ / 2, size_, size_);
  };
  return {square(box_.left(), box_.top()),    square(box_.left(), middle.y()),
          square(box_.left(), box_.bottom()), square(middle.x(), box_.top()),
          square(middle.x(), box_.bottom()),  square(box_.right(), box_.top()),
          square(box_.right(), middle.y()),   square(box_.right(), box_.bottom())};
}

QPointF ButtonHandles::Knob() const {
  return {box_.right() + 2 * size_, box_.center().y()};
}

bool ButtonHandles::IsAtKnob(const QPointF& place) const {
  return QLineF(place, Knob()).length() <= size_;
}

std::optional<ButtonGrip> ButtonHandles::GripAt(const QPointF& place) const {
  const auto near = [this](double a, double b) { return std::abs(a - b) <= size_ * 0.75; };
  const bool isAcross = near(place.x(), box_.center().x());
  const bool isDown = near(place.y(), box_.center().y());
  const ButtonGrip grip{.Left = near(place.x(), box_.left()),
                        .Right = near(place.x(), box_.right()),
                        .Top = near(place.y(), box_.top()),
                        .Bottom = near(place.y(), box_.bottom())};
  const bool holdsColumn = grip.Left || grip.Right;
  const bool holdsLine = grip.Top || grip.Bottom;
  return (holdsColumn && (holdsLine || isDown)) || (holdsLine && isAcross) ? std::optional(grip)
                                                                           : std::nullopt;
}

}  // namespace quorvelant
