// The picture of the moment with what lies over it, and the buttons under the mouse and the keys.
#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <optional>

#include "ui/button_board.h"
#include "ui/picture_geometry.h"
#include "window/window_parts.h"

namespace quorvelant {

// Mouse: a drag on the picture makes a button, one on a button moves it, on a handle resizes it, with Alt or
// from its knob links it. Keys: Tab chooses, arrows move (with Ctrl by ten), with Shift resize, with Alt
// link; F2 renames, Delete removes, Escape lets go. Elements of the disc that are dropped become buttons.
class PictureView : public QWidget {
  Q_OBJECT
 public:
  PictureView(WindowParts& parts, ButtonBoard& board, QWidget* parent = nullptr);

  [[nodiscard]] PictureGeometry Geometry() const;
  void ShowSafeArea(bool shown);
  void ShowLinks(bool shown);
  // The next click gives the colour of the subtitle's bitmap there.
  void PickColor(bool wanted);

  // A button at a free place.
  void AddButton(const std::string& aim);
  void RenameChosen();
  void RemoveChosen();

  [[nodiscard]] QSize sizeHint() const override;

 signals:
  void ColorPicked(int column, int line);  // of the disc's picture
  void PickEnded();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  enum class Gesture : std::uint8_t { None, Draw, Move, Resize, Link };
  struct Grip {  // which edges a handle holds
    bool Left = false, Right = false, Top = false, Bottom = false;
  };

  void Refresh();     // what lies over the picture has changed
  void TellChosen();  // to the status line and to screen readers
  [[nodiscard]] bool IsOwnKey(const QKeyEvent& event) const;
  [[nodiscard]] double HandleSize() const;
  [[nodiscard]] std::optional<Grip> GripAt(const QPointF& place) const;
  [[nodiscard]] QPointF Knob(const HighlightArea& area) const;
  [[nodiscard]] std::optional<std::size_t> ButtonUnder(const QPointF& place) const;
  [[nodiscard]] HighlightArea Dragged(const QPointF& place) const;
  [[nodiscard]] HighlightArea AreaAround(const QPoint& pixel) const;
  void EndGesture();
  bool ArrowKey(const QKeyEvent& event);
  void LinkTowards(LinkDirection direction);
  void PaintScreen(QPainter& painter, const PictureGeometry& geometry) const;
  void PaintButtons(QPainter& painter, const PictureGeometry& geometry) const;
  void PaintLinks(QPainter& painter, const PictureGeometry& geometry) const;
  void PaintSafeArea(QPainter& painter, const PictureGeometry& geometry) const;

  WindowParts& parts_;
  ButtonBoard& board_;
  QImage overlay_;
  bool showsSafeArea_ = false;
  bool showsLinks_ = true;
  bool picks_ = false;

  Gesture gesture_ = Gesture::None;
  std::size_t held_ = 0;  // the button of the gesture
  Grip grip_;
  QPointF pressed_;
  QPointF now_;
  HighlightArea before_;
};

}  // namespace quorvelant
