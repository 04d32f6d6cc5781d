#include "window/simulated_picture.h"

#include <QMouseEvent>

#include "window/player_keys.h"

namespace quorvelant {

SimulatedPicture::SimulatedPicture(PictureView& view, Simulation& player)
    : QObject(&view), view_(view), player_(player) {
  view.installEventFilter(this);
  connect(&player, &Simulation::StateChanged, this, [this] { view_.ShowAsPlayer(player_.IsOn()); });
}

bool SimulatedPicture::eventFilter(QObject* watched, QEvent* event) {
  if (!player_.IsOn()) {
    return QObject::eventFilter(watched, event);
  }
  switch (event->type()) {
    case QEvent::ShortcutOverride: {
      const auto& key = *static_cast<QKeyEvent*>(event);
      if (RemoteKeyOf(key) || key.key() == Qt::Key_Escape) {
        event->accept();
        return true;
      }
      return false;
    }
    case QEvent::KeyPress:
      return Press(*static_cast<QKeyEvent*>(event));
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress: {
      const auto& mouse = *static_cast<QMouseEvent*>(event);
      Point(mouse.position(), event->type() == QEvent::MouseButtonPress && mouse.button() == Qt::LeftButton);
      return true;
    }
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
      return true;
    default:
      return false;
  }
}

bool SimulatedPicture::Press(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape) {
    player_.Eject();
    return true;
  }
  const auto key = RemoteKeyOf(event);
  if (!key) {
    return false;
  }
  if (key->Key == NavKey::Audio || key->Key == NavKey::Subpicture) {
    player_.PressNext(key->Key);
  } else {
    player_.Press(*key);
  }
  return true;
}

void SimulatedPicture::Point(const QPointF& place, bool presses) {
  const auto button = view_.ButtonUnder(place);
  if (!button || player_.Page() == nullptr) {
    return;
  }
  const auto number = static_cast<std::uint16_t>(*button + 1);
  if (player_.State().Registers.Button() != number) {
    player_.Press({NavKey::Select, number});
  }
  if (presses) {
    player_.Press({NavKey::Activate, 0});
  }
}

}  // namespace quorvelant
