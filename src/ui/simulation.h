// A disc played before it is made.
#pragma once

#include <QObject>
#include <QString>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "check/navigation_check.h"
#include "player/nav_machine.h"
#include "ui/document.h"
#include "ui/selection.h"
#include "ui/viewer.h"

namespace quorvelant {

// What the player did, in words, with the place in the project that it did it at.
struct SimulatedStep {
  std::string Place;  // for Selection::GoTo; empty for none
  QString Words;
  bool IsFault = false;
};

// A register that holds something.
struct SimulatedRegister {
  QString Name;
  std::uint16_t Value = 0;
};

// The navigation machine over the project as it was when the disc was put in; the viewer shows what it plays,
// and titles are stills that move on by `NavKey::Wait`. A change of the project takes the disc out.
class Simulation : public QObject {
  Q_OBJECT
 public:
  Simulation(Document& document, Selection& selection, Viewer& viewer, QObject* parent = nullptr);

  [[nodiscard]] bool IsOn() const { return disc_.has_value(); }
  void Insert();
  void Eject();
  void Press(const NavEvent& event);
  void PressNext(NavKey key);  // the next audio or subtitle stream that the title has

  [[nodiscard]] const NavState& State() const { return state_; }
  [[nodiscard]] const NavPage* Page() const;  // the buttons that show; null for none
  // How long the cell plays, and its still with it; nothing where only a key goes on.
  [[nodiscard]] std::optional<double> Seconds() const;
  [[nodiscard]] QString Words() const;  // "title menu, button 1"
  [[nodiscard]] std::vector<SimulatedRegister> Registers() const;
  [[nodiscard]] const std::vector<SimulatedStep>& Steps() const { return steps_; }

 signals:
  void StateChanged();  // on, off, or something happened

 private:
  void Take(NavOutcome outcome);
  void Log(const NavHappening& happening, const NavState& before);
  [[nodiscard]] NavCommandWords CommandOf(const NavHappening& happening, const NavState& before) const;
  [[nodiscard]] NavRandom Draw();
  void Show();
  [[nodiscard]] const NavChain* Chain() const;

  Document& document_;
  Selection& selection_;
  Viewer& viewer_;
  std::optional<NavDisc> disc_;
  NavState state_;
  std::vector<SimulatedStep> steps_;
  std::mt19937 dice_{std::random_device()()};
};

}  // namespace quorvelant
