// The screen of a simulated player.
#pragma once

#include <QImage>
#include <QWidget>
#include <cstddef>
#include <optional>

#include "ui/simulation.h"

namespace quorvelant {

// What the disc shows, and black where it stops. The mouse points at buttons and presses them.
class PlayerScreen : public QWidget {
  Q_OBJECT
 public:
  explicit PlayerScreen(Simulation& player, QWidget* parent = nullptr);

  // The chosen button in the colours of one that is pressed.
  void ShowPressed(bool isPressed);
  [[nodiscard]] PictureGeometry Geometry() const;
  [[nodiscard]] QSize sizeHint() const override;

 signals:
  void Pointed(int button, bool isPressed);  // from 1

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void Refresh();
  [[nodiscard]] QString BlackWords() const;  // in place of a picture; empty where one shows
  [[nodiscard]] std::optional<int> ButtonUnder(const QPointF& place) const;

  Simulation& player_;
  QImage overlay_;
  bool isPressed_ = false;
};

}  // namespace quorvelant
