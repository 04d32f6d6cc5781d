// What a simulated player did and holds, in words.
#pragma once

#include <QString>
#include <cstddef>
#include <string>
#include <vector>

#include "check/navigation_check.h"
#include "model/project.h"
#include "player/nav_machine.h"

namespace quorvelant {

// One thing that happened, with its place in the project.
struct SimulatedStep {
  std::string Place;  // for Selection::GoTo; empty for none
  QString Words;
  bool IsFault = false;
  bool IsPress = false;  // a key, from which what follows came
  bool IsStop = false;   // says why the disc stops
};

// The newest steps. They are counted from the insertion of the disc, so that a list follows without asking
// for all of them.
class SimulationLog {
 public:
  static constexpr std::size_t Most = 5000;

  void Clear();
  void Add(SimulatedStep step);
  // What one event made of a state. Commands that go round without an end are cut short.
  void Add(const Project& project, const NavDisc& disc, const NavOutcome& outcome);

  [[nodiscard]] std::size_t First() const { return first_; }
  [[nodiscard]] std::size_t End() const { return first_ + steps_.size(); }
  [[nodiscard]] const SimulatedStep& At(std::size_t number) const { return steps_.at(number - first_); }

 private:
  std::vector<SimulatedStep> steps_;
  std::size_t first_ = 0;
};

// A register with its value as people read it.
struct SimulatedRegister {
  QString Name;
  QString Value;
};
// General registers, then those of the system that have a meaning; always as many.
[[nodiscard]] std::vector<SimulatedRegister> RegistersInWords(const NavRegisters& registers);

// "audio 1 English": a stream of the titles that a chain is one of, by its number on the disc, from 0.
[[nodiscard]] QString AudioWords(const Project& project, const std::string& chain, std::size_t number);
[[nodiscard]] QString SubtitleWords(const Project& project, const std::string& chain, std::size_t number);

// "English" of two letters.
[[nodiscard]] QString LanguageWords(std::uint16_t language);

}  // namespace quorvelant
