#include "window/player_screen.h"

#include <QMouseEvent>
#include <QPainter>

#include "window/picture_painter.h"

namespace quorvelant {

PlayerScreen::PlayerScreen(Simulation& player, QWidget* parent) : QWidget(parent), player_(player) {
  setAccessibleName(tr("Screen of the player"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setMinimumSize(fontMetrics().averageCharWidth() * 24, fontMetrics().height() * 8);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(&player, &Simulation::LookChanged, this, &PlayerScreen::Refresh);
  connect(&player, &Simulation::StateChanged, this, &PlayerScreen::Refresh);
}

QSize PlayerScreen::sizeHint() const {
  const int height = fontMetrics().height() * 20;
  return {height * 16 / 9, height};
}

void PlayerScreen::ShowPressed(bool isPressed) {
  isPressed_ = isPressed;
  Refresh();
}

void PlayerScreen::Refresh() {
  const SimulatedLook* const look = player_.Look();
  overlay_ = look == nullptr || !BlackWords().isEmpty() ? QImage() : look->Overlay(isPressed_);
  const bool lacksPicture = look != nullptr && look->Picture().isNull() && !look->Words().isEmpty();
  setAccessibleDescription(!BlackWords().isEmpty() ? BlackWords()
                           : lacksPicture          ? tr("%1; %2").arg(player_.Words(), look->Words())
                                                   : player_.Words());
  update();
}

PictureGeometry PlayerScreen::Geometry() const {
  const SimulatedLook* const look = player_.Look();
  return look != nullptr ? look->Geometry(QRectF(rect()))
                         : PictureGeometry(ViewMode::Wide, false, QRectF(rect()));
}

QString PlayerScreen::BlackWords() const {
  const SimulatedLook* const look = player_.Look();
  if (look == nullptr) {
    return {};
  }
  if (player_.State().Phase == NavPhase::Stopped) {
    const std::size_t end = player_.Log().End();
    QString why;
    for (std::size_t at = end; at > player_.Log().First() && why.isEmpty(); --at) {
      const SimulatedStep& step = player_.Log().At(at - 1);
      why = step.IsStop ? step.Words : QString();
    }
    return tr("%1.\n\nHome or Start Anew puts the disc in again, Esc ends the simulation.").arg(why);
  }
  return look->HasPicture() ? QString() : look->Words();
}

void PlayerScreen::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::black);
  const SimulatedLook* const look = player_.Look();
  if (look == nullptr) {
    return;
  }
  const PictureGeometry geometry = Geometry();
  PicturePainter over(painter, geometry, {palette(), fontMetrics(), 0});
  const QString black = BlackWords();
  over.PaintScreen(black.isEmpty() ? look->Picture() : QImage(), black.isEmpty() ? look->Words() : black,
                   overlay_);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
  }
}

std::optional<int> PlayerScreen::ButtonUnder(const QPointF& place) const {
  const SimulatedLook* const look = player_.Look();
  const PictureGeometry geometry = Geometry();
  if (look == nullptr || player_.Page() == nullptr || !geometry.Screen().contains(place)) {
    return std::nullopt;
  }
  const auto button = look->ButtonAt(geometry.PixelAt(place));
  return button ? std::optional(static_cast<int>(*button) + 1) : std::nullopt;
}

void PlayerScreen::mouseMoveEvent(QMouseEvent* event) {
  const auto button = ButtonUnder(event->position());
  setCursor(button ? Qt::PointingHandCursor : Qt::ArrowCursor);
  if (button) {
    emit Pointed(*button, false);
  }
}

void PlayerScreen::mousePressEvent(QMouseEvent* event) {
  const auto button = ButtonUnder(event->position());
  if (button && event->button() == Qt::LeftButton) {
    emit Pointed(*button, true);
  }
}

}  // namespace quorvelant
