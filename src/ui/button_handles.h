// What the chosen button is held by on the picture.
#pragma once

#include <QPointF>
#include <QRectF>
#include <array>
#include <optional>

#include "model/tracks.h"

namespace quorvelant {

// Which edges of a button a handle holds.
struct ButtonGrip {
  bool Left = false, Right = false, Top = false, Bottom = false;
};

// Two arrows along the way that the handle goes.
[[nodiscard]] Qt::CursorShape CursorOf(const ButtonGrip& grip);
// The area with its held edges at a pixel, and not turned over.
[[nodiscard]] HighlightArea PulledTo(HighlightArea area, const ButtonGrip& grip, const QPoint& pixel);

// Eight handles at the corners and the middles of a button's edges, which resize it, and a round knob at its
// right, from which links are drawn. Places of the space that the button's box is of.
class ButtonHandles {
 public:
  // A handle is a square with sides of `size`.
  ButtonHandles(const QRectF& box, double size) : box_(box), size_(size) {}

  [[nodiscard]] std::array<QRectF, 8> Squares() const;
  [[nodiscard]] QPointF Knob() const;
  [[nodiscard]] double KnobRadius() const { return size_ / 2; }

  // A mouse need not hit them exactly.
  [[nodiscard]] bool IsAtKnob(const QPointF& place) const;
  [[nodiscard]] std::optional<ButtonGrip> GripAt(const QPointF& place) const;

 private:
  QRectF box_;
  double size_;
};

}  // namespace quorvelant
