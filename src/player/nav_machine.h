// A player's navigation: a state and an event in, a state out. No file is opened here, and no clock runs.
#pragma once

#include <cstdint>
#include <vector>

#include "player/nav_command.h"
#include "player/nav_disc.h"
#include "player/nav_state.h"

namespace quorvelant {

enum class NavKey : std::uint8_t {
  Up,
  Down,
  Left,
  Right,
  Activate,
  Number,  // chooses and activates the button of a number
  Select,  // chooses the button of a number, as a pointer does
  Wait,    // until the next thing happens by itself: a page begins, the cell, a still or the chain ends
  TitleMenu,
  RootMenu,
  SubpictureMenu,
  AudioMenu,
  AngleMenu,
  PartMenu,
  Return,  // to the chain above
  Resume,
  NextPart,
  PreviousPart,
  TopPart,
  Title,  // of the disc, by number
  Part,   // of the title, by number
  Audio,
  Subpicture,
  Angle,      // by number
  StopStill,  // a still of any length ends
  TimeOver,   // the navigation timer
};

struct NavEvent {
  NavKey Key = NavKey::Wait;
  std::uint16_t Number = 0;
  bool operator==(const NavEvent&) const = default;
};

enum class NavList : std::uint8_t { Pre, Post, Cell, Button };

// What happened on the way, in its order.
struct NavHappening {
  enum class Kind : std::uint8_t {
    Ran,      // a command
    Entered,  // a chain
    Plays,    // a cell
    Refused,  // a user operation that is forbidden here, or leads nowhere
    Missing,  // a command leads to what is not there, or what its domain forbids
    Stopped,
  };
  Kind What = Kind::Ran;
  NavPoint At;
  NavList List = NavList::Pre;
  std::uint16_t Number = 0;  // of the command in its list; of the button
  NavLead Lead;              // Ran and Missing: where it led
  std::uint16_t Page = 0;    // that showed
};

struct NavOutcome {
  NavState State;
  std::vector<NavHappening> Happened;
  bool IsRedrawn = false;  // cut short, as `NavRedraws` asks
};

// What a number that is drawn again is: a draw with the registers as they were at one before, or one of very
// many since the key. A player draws on. Who tries every number has tried what comes of it.
enum class NavRedraws : std::uint8_t { GoOn, Stop };
inline constexpr std::size_t MostNavDraws = 64;

// Values that a fresh player has: no menu language of its own beyond the one given, first stream of
// everything. Without a region: it takes on that of the disc.
[[nodiscard]] NavRegisters FreshRegisters(std::uint16_t language);

// The disc is put in.
[[nodiscard]] NavOutcome InsertDisc(const NavDisc& disc, const NavRegisters& registers,
                                    const NavRandom& random, NavRedraws redraws = NavRedraws::GoOn);
// An event that nothing answers leaves the state as it was. Commands that come back to where they were with
// the registers as they were, or run `NavBudget` long, without playing anything, stop the player.
[[nodiscard]] NavOutcome NavStep(const NavDisc& disc, const NavState& state, const NavEvent& event,
                                 const NavRandom& random, NavRedraws redraws = NavRedraws::GoOn);

inline constexpr int NavBudget = 20000;

}  // namespace quorvelant
