// A command as an editor shows it: its operands, and the text that they make.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vm/parsed_command.h"

namespace quorvelant {

// `Command` holds the operands but for what stands in the text as a name: those numbers stay 0. What a
// command does not use stays as it is in a new `ParsedCommand`.
struct CommandFields {
  ParsedCommand Command;
  std::string Target;  // that a link, jump, call or timer names; a number may stand in its place
  std::string Resume;  // CallSS: the cell to come back to; empty, or `DefaultChoice`, for where the call was
  std::string LinkTarget;  // that the link after a set names
  bool operator==(const CommandFields&) const = default;
};

// The text, always in the same spelling. A comparison and a link after a plain set exclude each other: the
// comparison is written. Fields beyond what command_types.h offers make a text whose faults the parser tells.
[[nodiscard]] std::string CommandText(const CommandFields& fields);

// The way back, from any spelling: what the bytes of the text do. An empty text is no operation. Nothing
// where fields cannot say it: a text that is no command, a comparison without operator, a menu or link that
// there is not, a compound that sets no register.
[[nodiscard]] std::optional<CommandFields> FieldsOf(std::string_view text);

}  // namespace quorvelant
