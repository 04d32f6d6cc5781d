// Which commands move, and in which of the format's four domains each may stand.
#pragma once

#include <cstdint>

#include "vm/command_target.h"

namespace quorvelant {

enum class CommandDomain : std::uint8_t { FirstPlay = 1, ManagerMenus = 2, SetMenus = 4, Titles = 8 };

// What a command does, as far as its domain matters.
enum class Move : std::uint8_t {
  None,  // it stays in its list, or only sets
  JumpTitle,
  JumpSetTitle,
  JumpSetPart,
  JumpSetMenu,  // of any title set
  JumpSystem,   // to First Play, the title menu or a PGC of the Video Manager
  Call,
  Resume,
  LinkPart,
  Link
};
[[nodiscard]] Move MoveOf(const CommandTarget& target);

// Elsewhere players stop at the command or pass over it.
[[nodiscard]] bool MayStandIn(CommandDomain domain, Move move);

}  // namespace quorvelant
