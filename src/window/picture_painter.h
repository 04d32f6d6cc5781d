// Draws the picture of the moment and what lies over it.
#pragma once

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <cstddef>
#include <optional>

#include "ui/button_board.h"
#include "ui/button_drag.h"
#include "ui/picture_geometry.h"

namespace quorvelant {

// The colours and letters of the widget that is drawn on.
struct PictureStyle {
  QPalette Colors;
  QFontMetrics Letters;
  double HandleSize = 0;
};

// For one repaint.
class PicturePainter {
 public:
  PicturePainter(QPainter& painter, const PictureGeometry& geometry, PictureStyle style)
      : painter_(painter), geometry_(geometry), style_(std::move(style)) {}

  // The screen of the player: black, with the picture or the words why there is none, and the overlay.
  void PaintScreen(const QImage& picture, const QString& words, const QImage& overlay);
  void PaintSafeArea();
  // Their frames and names, handles at the chosen one, and where a gesture takes one of them.
  void PaintButtons(const ButtonBoard& board, std::optional<std::size_t> chosen, const ButtonDrag& drag);
  // Of the chosen button, or of all where none is chosen.
  void PaintLinks(const ButtonBoard& board, std::optional<std::size_t> chosen);

 private:
  void PaintLabel(const QRectF& box, const QString& words, bool isChosen);
  void PaintHandles(const QRectF& box);
  void PaintDrag(const ButtonDrag& drag);
  [[nodiscard]] QColor Accent() const { return style_.Colors.color(QPalette::Highlight); }
  [[nodiscard]] QColor OnAccent() const { return style_.Colors.color(QPalette::HighlightedText); }

  QPainter& painter_;
  const PictureGeometry& geometry_;
  PictureStyle style_;
};

}  // namespace quorvelant
