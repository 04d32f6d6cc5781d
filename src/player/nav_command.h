// One navigation command run: what it does to registers, and where it leads.
#pragma once

#include <cstdint>
#include <functional>

#include "player/nav_disc.h"
#include "player/nav_registers.h"
#include "player/nav_state.h"

namespace quorvelant {

// Where a command leads; the numbers are those of the command.
struct NavLead {
  enum class Kind : std::uint8_t {
    None,   // the next command of the list
    GoTo,   // command `Number` of the list
    Break,  // the end of the list
    Exit,
    // Links within the domain. A button other than 0 is selected then.
    NoLink,
    TopCell,
    NextCell,
    PreviousCell,
    TopProgram,
    NextProgram,
    PreviousProgram,
    TopChain,
    NextChain,
    PreviousChain,
    GoUpChain,
    TailChain,
    Resume,
    Chain,
    Part,
    Program,
    Cell,
    // Jumps and calls
    JumpTitle,
    JumpTitleOfSet,
    JumpPart,
    JumpFirstPlay,
    JumpManagerMenu,
    JumpSetMenu,
    JumpManagerChain,
    CallFirstPlay,
    CallManagerMenu,
    CallSetMenu,
    CallManagerChain,
    Unknown,  // bytes that are no command: players pass over them
  };
  Kind What = Kind::None;
  std::uint16_t Number = 0;  // of the line, chain, part, program, cell, title, or menu kind
  std::uint8_t Button = 0;
  std::uint8_t Set = 0;         // JumpSetMenu
  std::uint8_t Title = 0;       // JumpPart, JumpSetMenu: of the set
  std::uint8_t ResumeCell = 0;  // calls; 0 for where it was

  [[nodiscard]] bool LeavesList() const { return What > Kind::Break; }
  // To a place of the disc, or out of it.
  [[nodiscard]] bool Leads() const { return LeavesList() && What != Kind::NoLink && What != Kind::Unknown; }
  bool operator==(const NavLead&) const = default;
};

// A number from 1 to the bound, which is at least 1.
using NavRandom = std::function<std::uint16_t(std::uint16_t bound)>;

// Where the command leads where its condition holds.
[[nodiscard]] NavLead LeadOf(const NavCommand& command);

// Registers as a set of bits: the general ones, then the system ones.
using NavRegisterSet = std::uint64_t;
[[nodiscard]] constexpr NavRegisterSet BitOf(Sprm number) {
  return NavRegisterSet{1} << (16U + static_cast<unsigned>(number));
}

// What can be said of a command before it runs.
struct NavFacts {
  NavRegisterSet Reads = 0;
  NavRegisterSet Writes = 0;
  bool WritesAlways = false;  // whatever the registers are
  bool LeadsAlways = false;
  bool SetsByNumber = false;
  std::uint16_t TimerChain = 0;  // of the set's titles, where a timer that it starts leads
  NavLead Lead;
};
[[nodiscard]] NavFacts FactsOf(const NavCommand& command);

// Whether the format lets a command that leads so stand there.
[[nodiscard]] bool MayRunIn(NavDomain domain, NavLead::Kind lead);

// Takes any bytes.
NavLead RunNavCommand(const NavCommand& command, NavRegisters& registers, const NavRandom& random);

}  // namespace quorvelant
