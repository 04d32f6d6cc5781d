// Where a player stands.
#pragma once

#include <bitset>
#include <cstdint>
#include <optional>

#include "player/nav_registers.h"

namespace quorvelant {

enum class NavDomain : std::uint8_t { FirstPlay, ManagerMenu, SetMenu, Title };

// What the player is doing there.
enum class NavPhase : std::uint8_t {
  Playing,     // a cell
  CellStill,   // its last picture stands
  ChainStill,  // the same, after the chain's last cell
  Stopped,     // black: an Exit, an end that leads nowhere, or a loop of commands
};

// Why it stopped.
enum class NavStop : std::uint8_t { None, Exit, NoWay, Loop, Missing };

// Numbers count from 1.
struct NavPoint {
  NavDomain Domain = NavDomain::FirstPlay;
  std::uint8_t Set = 0;  // of a set's menu or title
  std::uint16_t Chain = 0;
  std::uint8_t Program = 0;
  std::uint8_t Cell = 0;
  auto operator<=>(const NavPoint&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};

// Of the chain alone.
[[nodiscard]] constexpr NavPoint ChainPoint(NavPoint at) {
  at.Program = at.Cell = 0;
  return at;
}

// Where a call or a menu key left a title, with the registers that come back: title, part, button.
struct NavResume {
  NavPoint At;
  std::array<std::uint16_t, 5> Registers{};  // 4 to 8
  bool operator==(const NavResume&) const = default;
};

struct NavState {
  NavPoint At;
  std::uint16_t Page = 0;  // of the cell, from 1; 0 while no buttons show
  NavPhase Phase = NavPhase::Stopped;
  NavStop Stop = NavStop::None;
  std::uint16_t Repeats = 0;  // programs that random playback has still to choose
  std::bitset<128> Drawn;     // programs that a shuffle has chosen already, from 0; a walk forgets them
  NavRegisters Registers;
  std::optional<NavResume> Resume;
  bool operator==(const NavState&) const = default;
};

}  // namespace quorvelant
