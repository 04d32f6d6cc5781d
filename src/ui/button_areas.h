// Rectangles of buttons within the picture: moved, resized, and placed where there is room.
#pragma once

#include <QPoint>
#include <optional>
#include <span>

#include "edit/button_rules.h"
#include "model/tracks.h"

namespace quorvelant {

// Columns and lines of the disc throughout; `lines` are those of the picture, 480 or 576.

// The fewest columns and lines between the edges of a button that is resized.
inline constexpr int LeastButtonSpan = 3;

[[nodiscard]] QPoint CentreOf(const HighlightArea& area);
// The side on which one point lies of another.
[[nodiscard]] LinkDirection DirectionOf(const QPoint& from, const QPoint& to);
// Of an arrow key; nothing for another key.
[[nodiscard]] std::optional<LinkDirection> DirectionOfKey(int key);
// By one pixel.
[[nodiscard]] QPoint StepOf(LinkDirection direction);

// Moved, as far as the picture goes.
[[nodiscard]] HighlightArea MovedBy(HighlightArea area, const QPoint& by, int lines);
// Its right and lower edges moved, as far as the picture goes, also where that leaves less than the span.
[[nodiscard]] HighlightArea ResizedBy(HighlightArea area, const QPoint& by, int lines);

// The distance from the top of a new button to that of the next one below it.
[[nodiscard]] int NewButtonStep();
// Of a new button around a pixel.
[[nodiscard]] HighlightArea NewAreaAround(const QPoint& pixel, int lines);
// Of a new button that covers none of those: rows from the top, in columns; in the middle of a full picture.
[[nodiscard]] HighlightArea FreeArea(std::span<const HighlightArea> taken, int lines);

}  // namespace quorvelant
