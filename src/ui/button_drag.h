// A gesture of the mouse on the picture, from the press to the release.
#pragma once

#include <QPointF>
#include <cstddef>
#include <cstdint>

#include "model/tracks.h"
#include "ui/button_handles.h"
#include "ui/picture_geometry.h"

namespace quorvelant {

enum class DragKind : std::uint8_t { None, Draw, Move, Resize, Link };

// The button that a gesture began on.
struct HeldButton {
  std::size_t Index = 0;
  HighlightArea Area;  // as it was at the press
};

// Remembers what is held and where the mouse is, and tells what would come of a release. Changes nothing.
// Places are of the space that the geometry maps.
class ButtonDrag {
 public:
  // One of them begins a gesture, at the place of the press.
  void Draw(const QPointF& place);
  void Move(const HeldButton& held, const QPointF& place);
  void Resize(const HeldButton& held, const ButtonGrip& grip, const QPointF& place);
  void Link(const HeldButton& held, const QPointF& place);

  void GoTo(const QPointF& place) { now_ = place; }
  void End() { kind_ = DragKind::None; }

  [[nodiscard]] DragKind Kind() const { return kind_; }
  [[nodiscard]] bool IsOn() const { return kind_ != DragKind::None; }
  // Whether this button's rectangle is in the hand.
  [[nodiscard]] bool Carries(std::size_t button) const;
  // Of moves, resizings and links.
  [[nodiscard]] const HeldButton& Held() const { return held_; }
  [[nodiscard]] const QPointF& Place() const { return now_; }
  // The rectangle that the button, or a new one, would get here.
  [[nodiscard]] HighlightArea Area(const PictureGeometry& geometry) const;

 private:
  void Begin(DragKind kind, const HeldButton& held, const QPointF& place);

  DragKind kind_ = DragKind::None;
  HeldButton held_;
  ButtonGrip grip_;
  QPointF pressed_;
  QPointF now_;
};

}  // namespace quorvelant
