// The player in place of the picture: its screen and its remote.
#pragma once

#include <QComboBox>
#include <QGridLayout>
#include <QTimer>
#include <QToolButton>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <vector>

#include "window/player_keys.h"
#include "window/player_screen.h"
#include "window/short_label.h"
#include "window/window_parts.h"

namespace quorvelant {

// Keys do what the remote does anywhere in the pane; Escape ends the simulation. A button that is pressed
// shows so for a moment before it acts. Digits are one number while a longer one is possible.
class PlayerPane : public QWidget {
  Q_OBJECT
 public:
  explicit PlayerPane(WindowParts& parts, QWidget* parent = nullptr);

  [[nodiscard]] PlayerScreen& Screen() { return *screen_; }

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QLayout* Remote();
  void AddDigits(QGridLayout& grid);
  void AddChoices(QGridLayout& grid);
  QToolButton* Button(const QString& name, const QString& sign, const QString& keys);
  void GiveKeysBack();
  void Order(const RemoteKey& key);
  void Press(const NavEvent& event);
  void Digit(int digit);
  void Point(int button, bool isPressed);
  void Finish();  // what is under way: a press that shows, digits that wait
  void Forget();
  void PutPlayer();
  void Follow();
  void FollowLook();  // how long a film is may be known now
  void ShowPlayer();  // its settings
  void Wait();        // for what comes by itself, where time runs

  WindowParts& parts_;
  Simulation& player_;
  PlayerScreen* screen_;
  ShortLabel* words_;
  QToolButton* play_ = nullptr;
  QComboBox* screens_;
  QComboBox* languages_;
  QTimer clock_;
  QTimer flash_;
  QTimer digits_;
  std::optional<NavEvent> pressed_;
  int number_ = 0;
  std::vector<std::uint16_t> offered_;  // languages
};

}  // namespace quorvelant
