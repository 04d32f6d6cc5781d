// The command language: one line of text taken apart.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "vm/parsed_command.h"

namespace quorvelant {

// What a name after a command word denotes, and so where it is looked for.
enum class TargetKind {
  LinkPgc,
  LinkProgram,
  LinkPart,
  LinkCell,
  JumpTitle,
  JumpSetTitle,
  JumpSetPart,
  VmgPgc,
  ResumeCell,
  TimerPgc
};

// What the target of a link is, of a kind that names one.
constexpr TargetKind TargetOf(LinkKind kind) {
  switch (kind) {
    case LinkKind::Pgc:
      return TargetKind::LinkPgc;
    case LinkKind::Part:
      return TargetKind::LinkPart;
    case LinkKind::Program:
      return TargetKind::LinkProgram;
    default:
      return TargetKind::LinkCell;
  }
}

// A name in the text that must become a number.
struct CommandReference {
  TargetKind Kind = TargetKind::LinkPgc;
  std::string Name;  // lower case, trimmed
  // Where word and name stand in `CommandForm::Lowered`; empty where the text never follows a rename.
  std::size_t Begin = 0;
  std::size_t End = 0;
};

// Why the bytes of a text do not do what the text says.
enum class TextFault : unsigned {
  None = 0,
  UnknownText = 1U << 0U,            // no command at all: the bytes are a no-operation
  NameTakenForWord = 1U << 1U,       // a name holds a command word that is tested before the one meant
  NumberNotComparable = 1U << 2U,    // this command compares with registers only
  LinkNotCarried = 1U << 3U,         // a compound command carries sub-instructions only
  LeftNotTheSetRegister = 1U << 4U,  // set, compare, link compares the register just set
  NoOperator = 1U << 5U,             // a comparison without operator: the bytes lose the command
  MixedStreamValues = 1U << 6U,      // SetSTN takes registers or numbers, not both
  NoSetInCompound = 1U << 7U,        // a compound command sets registers only
  UnknownMenu = 1U << 9U,            // a title set's menu that there is not
  UnknownLink = 1U << 10U,           // no link after the set: the command cannot be resolved
  RegisterBeyondRange = 1U << 8U,    // GPRM0 to GPRM15, SPRM0 to SPRM23
  NumberBeyondField = 1U << 11U,     // a number that its bytes do not hold
  LeftNoRegister = 1U << 12U,        // the left side of a comparison is no general register
  NothingSet = 1U << 13U,            // a set without anything that it sets
  LinkLost = 1U << 14U,              // the command carries no link
  StreamBeyondDisc = 1U << 15U,      // a stream or angle that no disc has
};
constexpr TextFault operator|(TextFault a, TextFault b) {
  return static_cast<TextFault>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr TextFault& operator|=(TextFault& a, TextFault b) {
  return a = a | b;
}
constexpr bool Has(TextFault set, TextFault one) {
  return (static_cast<unsigned>(set) & static_cast<unsigned>(one)) != 0;
}

// A text taken apart, its names not yet numbers.
struct CommandForm {
  ParsedCommand Command;
  std::string Lowered;  // the text, lower-cased and trimmed, braces as they are
  std::optional<CommandReference> Target;
  std::optional<CommandReference> Resume;
  std::optional<CommandReference> Link;  // of the link part
  TextFault Faults = TextFault::None;
};

// Reads any bytes. An empty text is no instruction, which encodes as a no-operation; so is, with a fault, a
// text that is no command. The tests go by "holds" in a fixed order, which is part of the language.
CommandForm ParseCommand(std::string_view text);

}  // namespace quorvelant
