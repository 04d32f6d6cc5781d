#include "ui/picture_geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "subpicture/bitmap_window.h"

namespace quorvelant {

namespace {

// The largest rectangle of the shape in the middle of the space.
QRectF Fitted(const QRectF& space, double shape) {
  const double width = std::max(1.0, std::min(space.width(), space.height() * shape));
  const double height = std::max(1.0, width / shape);
  return {space.center().x() - width / 2, space.center().y() - height / 2, width, height};
}

// Nearest whole number of value * numerator / denominator.
int Scaled(int value, int numerator, int denominator) {
  return static_cast<int>(std::lround(static_cast<double>(value) * numerator / denominator));
}

constexpr int PanColumns = ScreenWidth * 3 / 4;
constexpr int PanStart = ScreenWidth / 8;

}  // namespace

PictureGeometry::PictureGeometry(ViewMode view, bool ntsc, const QRectF& space)
    : view_(view),
      lines_(ScreenHeight(ntsc)),
      screen_(Fitted(space, view == ViewMode::Wide ? 16.0 / 9 : 4.0 / 3)) {}

QRectF PictureGeometry::PictureTarget() const {
  return view_ == ViewMode::LetterBox ? screen_.adjusted(0, screen_.height() / 8, 0, -screen_.height() / 8)
                                      : screen_;
}

QRectF PictureGeometry::PictureSource(QSize picture) const {
  const QRectF whole(QPointF(0, 0), QSizeF(picture));
  return view_ == ViewMode::Pan ? whole.adjusted(whole.width() / 8, 0, -whole.width() / 8, 0) : whole;
}

QPointF PictureGeometry::ToSpace(const QPointF& disc) const {
  return {screen_.left() + disc.x() * screen_.width() / ScreenWidth,
          screen_.top() + disc.y() * screen_.height() / lines_};
}

QPointF PictureGeometry::ToDisc(const QPointF& space) const {
  return {(space.x() - screen_.left()) * ScreenWidth / screen_.width(),
          (space.y() - screen_.top()) * lines_ / screen_.height()};
}

QRectF PictureGeometry::ToSpace(const HighlightArea& area) const {
  return {ToSpace(QPointF(area.X1, area.Y1)), ToSpace(QPointF(area.X2 + 1, area.Y2 + 1))};
}

QPoint PictureGeometry::PixelAt(const QPointF& space) const {
  const QPointF disc = ToDisc(space);
  return {std::clamp(static_cast<int>(std::floor(disc.x())), 0, ScreenWidth - 1),
          std::clamp(static_cast<int>(std::floor(disc.y())), 0, lines_ - 1)};
}

HighlightArea PictureGeometry::AreaBetween(const QPointF& from, const QPointF& to) const {
  const QPoint first = PixelAt(from);
  const QPoint second = PixelAt(to);
  return {.X1 = std::min(first.x(), second.x()),
          .X2 = std::max(first.x(), second.x()),
          .Y1 = std::min(first.y(), second.y()),
          .Y2 = std::max(first.y(), second.y())};
}

HighlightArea AreaInView(const HighlightArea& whole, ViewMode view, bool ntsc) {
  HighlightArea area = whole;
  const int lines = ScreenHeight(ntsc);
  if (view == ViewMode::LetterBox) {
    area.Y1 = lines / 8 + Scaled(whole.Y1, 3, 4);
    area.Y2 = lines / 8 + Scaled(whole.Y2, 3, 4);
  } else if (view == ViewMode::Pan) {
    area.X1 = std::clamp(Scaled(whole.X1 - PanStart, ScreenWidth, PanColumns), 0, ScreenWidth - 1);
    area.X2 = std::clamp(Scaled(whole.X2 - PanStart, ScreenWidth, PanColumns), 0, ScreenWidth - 1);
  }
  return area;
}

HighlightArea AreaFromView(const HighlightArea& area, ViewMode view, bool ntsc) {
  HighlightArea whole = area;
  const int lines = ScreenHeight(ntsc);
  if (view == ViewMode::LetterBox) {
    whole.Y1 = std::clamp(Scaled(area.Y1 - lines / 8, 4, 3), 0, lines - 1);
    whole.Y2 = std::clamp(Scaled(area.Y2 - lines / 8, 4, 3), 0, lines - 1);
  } else if (view == ViewMode::Pan) {
    whole.X1 = PanStart + Scaled(area.X1, PanColumns, ScreenWidth);
    whole.X2 = PanStart + Scaled(area.X2, PanColumns, ScreenWidth);
  }
  return whole;
}

}  // namespace quorvelant
