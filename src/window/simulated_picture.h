// The picture as a player's screen, while a disc is in.
#pragma once

#include <QObject>

#include "ui/simulation.h"
#include "window/picture_view.h"

namespace quorvelant {

// Takes the keys and the mouse of the picture while the simulation is on: keys are those of the remote, a
// click chooses a button and presses it. Escape takes the disc out.
class SimulatedPicture : public QObject {
  Q_OBJECT
 public:
  SimulatedPicture(PictureView& view, Simulation& player);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Press(const QKeyEvent& event);
  void Point(const QPointF& place, bool presses);

  PictureView& view_;
  Simulation& player_;
};

}  // namespace quorvelant
