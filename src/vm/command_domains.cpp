#include "vm/command_domains.h"

#include <array>
#include <cstddef>

namespace quorvelant {

namespace {

constexpr auto Start = static_cast<unsigned>(CommandDomain::FirstPlay);
constexpr auto Manager = static_cast<unsigned>(CommandDomain::ManagerMenus);
constexpr auto SetMenus = static_cast<unsigned>(CommandDomain::SetMenus);
constexpr auto Titles = static_cast<unsigned>(CommandDomain::Titles);

// Entry i is of move i.
constexpr std::array Allowed{Start | Manager | SetMenus | Titles,  // None
                             Start | Manager,                      // JumpTitle
                             SetMenus | Titles,                    // JumpSetTitle
                             SetMenus | Titles,                    // JumpSetPart
                             Start | Manager,                      // JumpSetMenu
                             Start | Manager | SetMenus,           // JumpSystem
                             Titles,                               // Call
                             Manager | SetMenus,                   // Resume
                             Titles,                               // LinkPart
                             Manager | SetMenus | Titles};         // Link

Move MoveOfLink(const CommandTarget& target) {
  if (target.IsResume()) {
    return Move::Resume;
  }
  return target.IsLink(LinkKind::Part) ? Move::LinkPart : Move::Link;
}

}  // namespace

Move MoveOf(const CommandTarget& target) {
  switch (target.What) {
    case Instruction::JumpTt:
      return Move::JumpTitle;
    case Instruction::JumpVtsTt:
      return Move::JumpSetTitle;
    case Instruction::JumpVtsPtt:
      return Move::JumpSetPart;
    case Instruction::JumpSs:
      return target.Space == SystemSpace::SetMenu ? Move::JumpSetMenu : Move::JumpSystem;
    case Instruction::CallSs:
      return Move::Call;
    case Instruction::Link:
      return MoveOfLink(target);
    default:
      return Move::None;
  }
}

bool MayStandIn(CommandDomain domain, Move move) {
  return (Allowed.at(static_cast<std::size_t>(move)) & static_cast<unsigned>(domain)) != 0;
}

}  // namespace quorvelant
