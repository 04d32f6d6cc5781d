// Where the disc's picture and what lies over it show on a part of the screen.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>

#include "edit/button_rules.h"
#include "model/tracks.h"

namespace quorvelant {

// One viewing mode in a space of any size. Overlays, 720 columns and 480 or 576 lines, fill the whole screen
// of a player in its true shape, 4:3 or 16:9. The picture fills it too, or by letterbox its middle three
// quarters of the height; by pan-scan its middle three quarters fill it.
class PictureGeometry {
 public:
  PictureGeometry(ViewMode view, bool ntsc, const QRectF& space);

  [[nodiscard]] const QRectF& Screen() const { return screen_; }
  [[nodiscard]] QRectF PictureTarget() const;
  [[nodiscard]] QRectF PictureSource(QSize picture) const;

  // Between places of the space and columns and lines of overlays.
  [[nodiscard]] QPointF ToSpace(const QPointF& disc) const;
  [[nodiscard]] QPointF ToDisc(const QPointF& space) const;
  // The pixels of an area, edges included.
  [[nodiscard]] QRectF ToSpace(const HighlightArea& area) const;
  // The whole pixel of overlays under a place, within the picture.
  [[nodiscard]] QPoint PixelAt(const QPointF& space) const;
  // Both corners' pixels, sorted.
  [[nodiscard]] HighlightArea AreaBetween(const QPointF& from, const QPointF& to) const;
  [[nodiscard]] int Lines() const { return lines_; }

 private:
  ViewMode view_;
  int lines_;
  QRectF screen_;
};

// The part of the screen of a viewing mode that an area covers on the whole picture shows on: by letterbox
// lower and less high, by pan-scan wider, cut where it hangs over.
[[nodiscard]] HighlightArea AreaInView(const HighlightArea& whole, ViewMode view, bool ntsc);
// The way back. What is beyond the screen by pan-scan is lost.
[[nodiscard]] HighlightArea AreaFromView(const HighlightArea& area, ViewMode view, bool ntsc);

}  // namespace quorvelant
