#include "ui/button_areas.h"

#include <algorithm>
#include <cstdlib>

#include "subpicture/bitmap_window.h"

namespace quorvelant {

namespace {

constexpr int NewWidth = 160;
constexpr int NewHeight = 40;
constexpr int Gap = 20;   // between new buttons
constexpr int Edge = 80;  // of the picture, that new ones keep clear

bool Meets(const HighlightArea& one, const HighlightArea& other) {
  return one.X1 <= other.X2 && other.X1 <= one.X2 && one.Y1 <= other.Y2 && other.Y1 <= one.Y2;
}

}  // namespace

QPoint CentreOf(const HighlightArea& area) {
  return {(area.X1 + area.X2) / 2, (area.Y1 + area.Y2) / 2};
}

LinkDirection DirectionOf(const QPoint& from, const QPoint& to) {
  const QPoint way = to - from;
  if (std::abs(way.x()) >= std::abs(way.y())) {
    return way.x() < 0 ? LinkDirection::Left : LinkDirection::Right;
  }
  return way.y() < 0 ? LinkDirection::Up : LinkDirection::Down;
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

HighlightArea MovedBy(HighlightArea area, const QPoint& by, int lines) {
  const int across = std::clamp(by.x(), -area.X1, std::max(ScreenWidth - 1 - area.X2, -area.X1));
  const int down = std::clamp(by.y(), -area.Y1, std::max(lines - 1 - area.Y2, -area.Y1));
  area.X1 += across;
  area.X2 += across;
  area.Y1 += down;
  area.Y2 += down;
  return area;
}

HighlightArea ResizedBy(HighlightArea area, const QPoint& by, int lines) {
  area.X2 = std::min(std::max(area.X2 + by.x(), area.X1 + LeastButtonSpan), ScreenWidth - 1);
  area.Y2 = std::min(std::max(area.Y2 + by.y(), area.Y1 + LeastButtonSpan), lines - 1);
  return area;
}

int NewButtonStep() {
  return NewHeight + Gap;
}

HighlightArea NewAreaAround(const QPoint& pixel, int lines) {
  const int left = std::clamp(pixel.x() - NewWidth / 2, 0, ScreenWidth - NewWidth);
  const int top = std::clamp(pixel.y() - NewHeight / 2, 0, lines - NewHeight);
  return {.X1 = left, .X2 = left + NewWidth - 1, .Y1 = top, .Y2 = top + NewHeight - 1};
}

HighlightArea FreeArea(std::span<const HighlightArea> taken, int lines) {
  for (int x = Edge + NewWidth / 2; x < ScreenWidth - Edge; x += NewWidth + Gap) {
    for (int y = Edge + NewHeight / 2; y < lines - Edge; y += NewButtonStep()) {
      const HighlightArea area = NewAreaAround({x, y}, lines);
      if (std::ranges::none_of(taken, [&area](const HighlightArea& other) { return Meets(area, other); })) {
        return area;
      }
    }
  }
  return NewAreaAround({ScreenWidth / 2, lines / 2}, lines);
}

}  // namespace quorvelant
