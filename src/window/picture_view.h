// The picture of the moment with what lies over it, and the buttons under the mouse and the keys.
#pragma once

#include <QImage>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "ui/button_board.h"
#include "ui/button_drag.h"
#include "ui/button_handles.h"
#include "ui/picture_geometry.h"
#include "window/window_parts.h"

namespace quorvelant {

// Mouse: a drag on the picture makes a button where they are likely meant (elsewhere the status says how one
// is made), one on a button moves it, on a handle resizes it, with Alt or from its knob links it. Keys: Tab
// chooses, arrows move (with Ctrl by ten), with Shift resize, with Alt link; F2 renames, Delete removes,
// Escape lets go. Elements of the disc that are dropped become buttons.
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
  void Refresh();     // what lies over the picture has changed
  void TellChosen();  // to the status line and to screen readers
  [[nodiscard]] bool IsOwnKey(const QKeyEvent& event) const;
  [[nodiscard]] double HandleSize() const;
  [[nodiscard]] std::optional<ButtonHandles> Handles() const;  // of the chosen button
  [[nodiscard]] std::optional<std::size_t> ButtonUnder(const QPointF& place) const;
  [[nodiscard]] std::vector<HighlightArea> Areas() const;  // of all buttons
  void EndGesture();
  // Whether a drag may make a button: on a film nobody expects one.
  [[nodiscard]] bool TakesDrawing() const;
  bool ArrowKey(const QKeyEvent& event);

  WindowParts& parts_;
  ButtonBoard& board_;
  QImage overlay_;
  bool showsSafeArea_ = false;
  bool showsLinks_ = true;
  bool picks_ = false;
  ButtonDrag drag_;
  std::optional<QPointF> refused_;  // where a drag began that makes nothing
};

}  // namespace quorvelant
