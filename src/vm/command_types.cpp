#include "vm/command_types.h"

#include <algorithm>

namespace quorvelant {

namespace {

CommandType TypeOfLink(LinkKind kind) {
  switch (kind) {
    case LinkKind::Pgc:
      return CommandType::LinkPgc;
    case LinkKind::Part:
      return CommandType::LinkPart;
    case LinkKind::Program:
      return CommandType::LinkProgram;
    case LinkKind::Cell:
      return CommandType::LinkCell;
    default:
      return CommandType::SubInstruction;
  }
}

}  // namespace

CommandType TypeOf(const ParsedCommand& command) {
  switch (command.What) {
    case Instruction::None:
    case Instruction::Nop:
      return CommandType::NoOperation;
    case Instruction::GoTo:
      return CommandType::GoTo;
    case Instruction::Break:
      return CommandType::Break;
    case Instruction::SetTmpPml:
      return CommandType::SetParentalLevel;
    case Instruction::Link:
      return TypeOfLink(command.Link.Kind);
    case Instruction::Exit:
      return CommandType::Exit;
    case Instruction::JumpTt:
    case Instruction::JumpVtsTt:
      return CommandType::JumpTitle;
    case Instruction::JumpVtsPtt:
      return CommandType::JumpPart;
    case Instruction::JumpSs:
    case Instruction::CallSs:
      return CommandType::JumpSystemSpace;
    case Instruction::SetStn:
      return CommandType::SetStreams;
    case Instruction::SetNvtmr:
      return CommandType::SetTimer;
    case Instruction::SetGprmMd:
      return CommandType::ChangeGprmMode;
    case Instruction::SetAmxmd:
      return CommandType::SetMixing;
    case Instruction::SetHlBtnn:
      return CommandType::SetButton;
    case Instruction::Set:
      return CommandType::SetGprm;
    default:
      return CommandType::Compound;
  }
}

bool IsCompound(const ParsedCommand& command) {
  return command.What == Instruction::SetCompareLink || command.What == Instruction::CompareSetAndLink ||
         command.What == Instruction::CompareSetThenLink;
}

bool ComparesRegistersOnly(const ParsedCommand& command) {
  if (command.What == Instruction::CompareSetAndLink || command.What == Instruction::CompareSetThenLink) {
    return command.Source.Is(OperandKind::Number);
  }
  return command.What >= Instruction::Exit && command.What <= Instruction::SetHlBtnn;
}

OperandKinds SourceKindsOf(const ParsedCommand& command) {
  if (command.What == Instruction::Set || IsCompound(command)) {
    const auto* const row = std::ranges::find(ArithmeticRows, command.Operation, &ArithmeticRow::Operation);
    return row == ArithmeticRows.end() ? RegistersOnly : row->Sources;
  }
  return command.What == Instruction::SetAmxmd ? RegistersOnly : RegistersAndNumbers;
}

OperandKinds RightKindsOf(const ParsedCommand& command) {
  return {.Gprm = true, .Sprm = true, .Number = !ComparesRegistersOnly(command)};
}

std::optional<TargetKind> TargetKindOf(const ParsedCommand& command) {
  switch (command.What) {
    case Instruction::Link:
      return command.Link.Kind == LinkKind::SubInstruction || command.Link.Kind == LinkKind::None
                 ? std::nullopt
                 : std::optional(TargetOf(command.Link.Kind));
    case Instruction::JumpTt:
      return TargetKind::JumpTitle;
    case Instruction::JumpVtsTt:
      return TargetKind::JumpSetTitle;
    case Instruction::JumpVtsPtt:
      return TargetKind::JumpSetPart;
    case Instruction::JumpSs:
    case Instruction::CallSs:
      return command.Space == SystemSpace::VmgPgc ? std::optional(TargetKind::VmgPgc) : std::nullopt;
    case Instruction::SetNvtmr:
      return TargetKind::TimerPgc;
    default:
      return std::nullopt;
  }
}

}  // namespace quorvelant
