#include "ui/button_drag.h"

#include "ui/button_areas.h"

namespace quorvelant {

void ButtonDrag::Begin(DragKind kind, const HeldButton& held, const QPointF& place) {
  kind_ = kind;
  held_ = held;
  pressed_ = place;
  now_ = place;
}

void ButtonDrag::Draw(const QPointF& place) {
  Begin(DragKind::Draw, {}, place);
}

void ButtonDrag::Move(const HeldButton& held, const QPointF& place) {
  Begin(DragKind::Move, held, place);
}

void ButtonDrag::Resize(const HeldButton& held, const ButtonGrip& grip, const QPointF& place) {
  Begin(DragKind::Resize, held, place);
  grip_ = grip;
}

void ButtonDrag::Link(const HeldButton& held, const QPointF& place) {
  Begin(DragKind::Link, held, place);
}

bool ButtonDrag::Carries(std::size_t button) const {
  return (kind_ == DragKind::Move || kind_ == DragKind::Resize) && held_.Index == button;
}

HighlightArea ButtonDrag::Area(const PictureGeometry& geometry) const {
  const QPoint pixel = geometry.PixelAt(now_);
  switch (kind_) {
    case DragKind::Draw:
      return geometry.AreaBetween(pressed_, now_);
    case DragKind::Move:
      return MovedBy(held_.Area, pixel - geometry.PixelAt(pressed_), geometry.Lines());
    case DragKind::Resize:
      return PulledTo(held_.Area, grip_, pixel);
    default:
      return held_.Area;
  }
}

}  // namespace quorvelant
