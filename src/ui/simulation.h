// A disc played before it is made.
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "player/nav_machine.h"
#include "ui/document.h"
#include "ui/jobs.h"
#include "ui/player_words.h"
#include "ui/simulated_look.h"

namespace quorvelant {

// The player that a disc is tried on.
struct SimulatedPlayer {
  std::uint16_t Language = 0x656E;  // two letters: of menus, audio and subtitles
  PlayerScreenKind Screen = PlayerScreenKind::Wide;
  bool operator==(const SimulatedPlayer&) const = default;
};

// The navigation machine over the project as it was when the disc was put in. Films are stills: they move on
// by `GoOn`. A change of the project takes the disc out and says so, since the disc would be another.
class Simulation : public QObject {
  Q_OBJECT
 public:
  Simulation(Document& document, Jobs& jobs, PictureLoader& pictures, QObject* parent = nullptr);

  [[nodiscard]] bool IsOn() const { return disc_.has_value(); }
  // From the beginning, also while one is in. Told where there is nothing to play.
  void Insert();
  void Eject();
  void Press(const NavEvent& event);
  // The next audio or subtitle stream of the title; after the last one subtitles hide. In menus, and where
  // there is none, the key does nothing.
  void PressNext(NavKey key);
  // Until something happens by itself: a page, the end of a cell or of its still, the timer. A still without
  // an end goes on where no button waits.
  void GoOn();
  void PassTime();  // the same, where nobody pressed a key

  [[nodiscard]] const SimulatedPlayer& Player() const { return player_; }
  // Another language puts the disc in anew.
  void SetPlayer(const SimulatedPlayer& player);
  // Of the disc's menus; the player's own where it has none.
  [[nodiscard]] std::vector<std::uint16_t> Languages() const;

  [[nodiscard]] const NavState& State() const { return state_; }
  [[nodiscard]] const NavPage* Page() const;  // the buttons that show; null for none
  [[nodiscard]] std::size_t Parts() const;    // chapters of the title that plays
  [[nodiscard]] const SimulatedLook* Look() const { return look_.get(); }  // null while no disc is in
  // How long it takes until something happens by itself; nothing where only a key goes on.
  [[nodiscard]] std::optional<double> Seconds() const;
  [[nodiscard]] QString Words() const;      // "title menu, button 1"
  [[nodiscard]] std::string Place() const;  // the key of what plays; empty for none
  [[nodiscard]] const SimulationLog& Log() const { return log_; }

 signals:
  void Inserted();      // it plays from the beginning
  void StateChanged();  // on, off, or something happened
  void LookChanged();   // the picture, or what lies over it

 private:
  void Take(const NavOutcome& outcome);
  void EndByChange(const ChangeEvent& event);
  void Carry(const NavEvent& event, const QString& words);
  void Refuse(const QString& words);
  void Advance(const QString& words);
  void LetPass(double seconds);
  [[nodiscard]] NavRandom Draw();
  [[nodiscard]] const NavChain* Chain() const;
  [[nodiscard]] std::optional<double> CellSeconds() const;
  [[nodiscard]] std::uint16_t TimerSeconds() const;  // 0 where it does not run
  [[nodiscard]] bool EndsInStill() const;            // of no end, and no page comes before
  [[nodiscard]] QString PressedWords(const NavEvent& event) const;

  Document& document_;
  Jobs& jobs_;
  PictureLoader& pictures_;
  SimulatedPlayer player_;
  std::optional<NavDisc> disc_;
  NavState state_;
  SimulationLog log_;
  std::unique_ptr<SimulatedLook> look_;
  std::mt19937 dice_{std::random_device()()};
};

}  // namespace quorvelant
