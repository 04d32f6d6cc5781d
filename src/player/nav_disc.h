// What there is to play on a disc, as navigation sees it: chains, cells, buttons and commands, without a
// sector or a picture. Two sources fill it: a project in memory, and the tables and navigation packs of a
// finished disc. Numbers count from 1 as commands count them; 0 is none.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "disc/command_hex.h"

namespace quorvelant {

using NavCommand = CommandBytes;

inline constexpr std::uint8_t StillForEver = 255;

struct NavButton {
  NavCommand Command{};
  std::uint8_t Up = 0;  // numbers of the neighbours; a button that leads to itself or to 0 stays
  std::uint8_t Down = 0;
  std::uint8_t Left = 0;
  std::uint8_t Right = 0;
  bool ActsWhenSelected = false;  // auto_action_mode
  std::string Name = {};          // for people, as that of a cell
  bool operator==(const NavButton&) const = default;
};

// Buttons that show from a moment of a cell up to its next page, or to its end and through its still. Without
// buttons: those before have ended.
struct NavPage {
  std::uint32_t Start = 0;  // 90 kHz ticks from the start of the cell
  std::vector<NavButton> Buttons = {};
  std::uint8_t Offset = 0;        // BTN_OFN: added to a button's place for the number keys
  std::uint8_t ByNumber = 0;      // NSL_BTN_NS: so many can be chosen by number
  std::uint8_t ForcedSelect = 0;  // FOSL_BTN; 63 keeps what was selected
  std::uint8_t ForcedAction = 0;  // FOAC_BTN: runs when the page ends
  bool Shows = true;              // some button can be seen when it is chosen
  bool operator==(const NavPage&) const = default;
};

struct NavCell {
  std::string Name;  // for people: a key of the project, or table and number
  std::uint32_t Ticks = 0;
  std::uint8_t StillTime = 0;        // seconds
  std::uint8_t Command = 0;          // number among the chain's cell commands
  std::uint8_t Angle = 0;            // of a block of cells for one time, each an angle: from 1; else 0
  std::uint32_t UserOperations = 0;  // of its VOBUs, as that of a chain
  std::vector<NavPage> Pages = {};   // by start
  bool operator==(const NavCell&) const = default;
};

struct NavChain {
  std::string Name;
  std::vector<NavCommand> Pre;
  std::vector<NavCommand> Post;
  std::vector<NavCommand> CellCommands;
  std::vector<std::uint8_t> Programs;  // the first cell of each, rising
  std::vector<NavCell> Cells;
  std::uint16_t Next = 0;
  std::uint16_t Previous = 0;
  std::uint16_t GoUp = 0;     // 0xFFFF: resumes
  std::uint8_t Playback = 0;  // PGC_PB_MODE: 0 in a row, else random (bit 7: shuffle) and the count, less one
  std::uint8_t StillTime = 0;
  std::uint32_t UserOperations = 0;  // PGC_UOP_CTL: bits that are set forbid
  std::array<std::uint16_t, 8> Audio{};
  std::array<std::uint32_t, 32> Subpictures{};
  std::uint8_t MenuId =
      0;  // of an entry chain of menus: 2 title, 3 root, 4 subpicture, 5 audio, 6 angle, 7 part
  std::uint8_t Title = 0;  // of a title's chain: its number within the set
  bool IsEntry = false;
  bool operator==(const NavChain&) const = default;
};

struct NavMenus {
  std::uint16_t Language = 0;  // two letters
  std::vector<NavChain> Chains = {};
  bool operator==(const NavMenus&) const = default;
};

// Where a part of a title begins.
struct NavPart {
  std::uint16_t Chain = 0;
  std::uint8_t Program = 0;
  bool operator==(const NavPart&) const = default;
};

struct NavSet {
  std::vector<NavMenus> Menus;
  std::vector<NavChain> Titles;             // the chains of all titles
  std::vector<std::vector<NavPart>> Parts;  // by title of the set
  bool operator==(const NavSet&) const = default;
};

// A row of the disc's title list.
struct NavTitle {
  std::string Name;
  std::uint8_t Set = 0;
  std::uint8_t Number = 0;        // within the set
  std::uint8_t Restrictions = 0;  // TT_PB_TY: bit 1 no part play or search, bit 0 no time play or search
  bool operator==(const NavTitle&) const = default;
};

struct NavDisc {
  std::optional<NavChain> FirstPlay;
  std::vector<NavMenus> Menus;  // of the manager
  std::vector<NavTitle> Titles;
  std::vector<NavSet> Sets;
  std::uint8_t Region = 1;  // a bit: the first of those in which the disc plays
  bool operator==(const NavDisc&) const = default;
};

}  // namespace quorvelant
