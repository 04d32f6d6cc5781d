#include "vm/command_target.h"

#include <cstddef>

#include "disc/command_hex.h"

namespace quorvelant {
namespace {

// The low bits of a byte, and of two.
std::int32_t Bits(const CommandBytes& bytes, std::size_t at, unsigned mask) {
  return static_cast<std::int32_t>(bytes.at(at) & mask);
}
std::int32_t WideBits(const CommandBytes& bytes, std::size_t at, unsigned mask) {
  const unsigned word = static_cast<unsigned>(bytes.at(at) << 8U) | bytes.at(at + 1);
  return static_cast<std::int32_t>(word & mask);
}

// The link in the last two bytes; a sub-instruction that goes nowhere is none.
void ReadLink(const CommandBytes& bytes, LinkKind kind, CommandTarget& target) {
  LinkTarget link{.Kind = kind, .Number = 0, .Button = Bits(bytes, 6, 0xFF) >> 2};
  switch (kind) {
    case LinkKind::SubInstruction:
      link.Number = Bits(bytes, 7, 0x1F);
      break;
    case LinkKind::Pgc:
      link.Number = WideBits(bytes, 6, 0x7FFF);
      link.Button = 0;
      break;
    case LinkKind::Part:
      link.Number = WideBits(bytes, 6, 0x3FF);
      break;
    case LinkKind::Program:
      link.Number = Bits(bytes, 7, 0x7F);
      break;
    case LinkKind::Cell:
      link.Number = Bits(bytes, 7, 0xFF);
      break;
    default:
      return;
  }
  target.Link = link;
  const bool goesNowhere = kind == LinkKind::SubInstruction && link.Number == NoLinkCode;
  target.What = goesNowhere ? Instruction::None : Instruction::Link;
}

void ReadSystemSpace(const CommandBytes& bytes, CommandTarget& target) {
  constexpr unsigned MenuBits = 0x0F;
  target.MenuId = Bits(bytes, 5, MenuBits);
  switch (Bits(bytes, 5, 0xC0) >> 6) {
    case 0:
      target.Space = SystemSpace::FirstPlay;
      break;
    case 1:
      target.Space = SystemSpace::TitleMenu;
      break;
    case 2:
      target.Space = SystemSpace::SetMenu;
      break;
    default:
      target.Space = SystemSpace::VmgPgc;
      target.Pgc = WideBits(bytes, 2, 0x7FFF);
      break;
  }
  if (target.What == Instruction::CallSs) {
    target.ResumeCell = Bits(bytes, 4, 0xFF);
  } else if (target.Space == SystemSpace::SetMenu) {
    target.TitleSet = Bits(bytes, 4, 0x7F);
    target.Title = Bits(bytes, 3, 0x7F);
  }
}

void ReadJump(const CommandBytes& bytes, CommandTarget& target) {
  switch (Bits(bytes, 1, 0x0F)) {
    case 1:
      target.What = Instruction::Exit;
      break;
    case 2:
      target.What = Instruction::JumpTt;
      target.Title = Bits(bytes, 5, 0x7F);
      break;
    case 3:
      target.What = Instruction::JumpVtsTt;
      target.Title = Bits(bytes, 5, 0x7F);
      break;
    case 5:
      target.What = Instruction::JumpVtsPtt;
      target.Title = Bits(bytes, 5, 0x7F);
      target.Part = WideBits(bytes, 2, 0x3FF);
      break;
    case 6:
      target.What = Instruction::JumpSs;
      ReadSystemSpace(bytes, target);
      break;
    case 8:
      target.What = Instruction::CallSs;
      ReadSystemSpace(bytes, target);
      break;
    default:
      break;
  }
}

bool GoesToLine(const CommandBytes& bytes) {
  constexpr std::int32_t GoTo = 1;
  constexpr std::int32_t SetTmpPml = 3;
  const std::int32_t sub = Bits(bytes, 1, 0x0F);
  return Bits(bytes, 0, 0xFF) == 0 && (sub == GoTo || sub == SetTmpPml);
}

bool LeavesLine(const CommandBytes& bytes) {
  constexpr std::int32_t GoTo = 1;
  constexpr std::int32_t Break = 2;
  constexpr std::int32_t Jumps = 0x30;
  constexpr std::int32_t Exit = 1;
  const std::int32_t sub = Bits(bytes, 1, 0x0F);
  const std::int32_t kind = Bits(bytes, 0, 0xFF);
  const bool leaves = kind == 0 ? sub == GoTo || sub == Break : kind == Jumps && sub == Exit;
  return leaves && Bits(bytes, 1, 0x70) == 0;
}

}  // namespace

CommandTarget TargetOf(const CommandBytes& bytes) {
  constexpr int TimerSet = 2;
  CommandTarget target;
  target.LeavesLine = LeavesLine(bytes);
  const bool bit4 = Bits(bytes, 0, 0x10) != 0;
  const auto link = static_cast<LinkKind>(Bits(bytes, 1, 0x0F));
  switch (Bits(bytes, 0, 0xE0) >> 5) {
    case 0:
      target.Line = GoesToLine(bytes) ? Bits(bytes, 7, 0xFF) : 0;
      break;
    case 1:
      bit4 ? ReadJump(bytes, target) : ReadLink(bytes, link, target);
      break;
    case 2:
      target.TimerPgc = Bits(bytes, 0, 0x0F) == TimerSet ? WideBits(bytes, 4, 0x7FFF) : 0;
      ReadLink(bytes, link, target);
      break;
    case 3:
      ReadLink(bytes, link, target);
      break;
    case 4:
    case 5:
    case 6:
      ReadLink(bytes, LinkKind::SubInstruction, target);
      break;
    default:
      break;
  }
  return target;
}

CommandTarget TargetOf(const VMICommand_P& command) {
  return TargetOf(ParseCommandHex(command.CommandHex));
}

}  // namespace quorvelant
