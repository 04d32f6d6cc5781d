// The core of a command: one word and its operands, comparison and link part cut off.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "vm/command_parser.h"

namespace quorvelant {

// Reads a core into `form.Command` and notes the names it holds. `core` is a part of `whole`, which is
// as long as `form.Lowered`, so that places in the one are places in the other.
void ReadCoreCommand(CommandForm& form, std::string_view whole, std::string_view core);

// Reads register arithmetic, "mov GPRM1, 5"; false, and nothing read, where the text begins with no
// arithmetic word.
bool ReadArithmetic(ParsedCommand& command, std::string_view text);

// A text whose "button=" is taken out: the button's number, the rest without commas and trimmed, and where in
// the text the name before the button ends. Without "button=" the text stays as it is.
struct ButtonText {
  std::int32_t Number = 0;
  std::string Rest;
  std::size_t NameEnd = 0;
};
ButtonText TakeButton(std::string_view text);

// The number in a text, the word in front of it ("gprm", "parental:") removed.
std::int32_t NumberWithout(std::string_view text, std::string_view word);

// A text that holds "gprm" or "sprm" as that register, any other as the number it begins with.
Operand ReadOperand(std::string_view text);
// The same where only general registers are known; "sprm" is no word there.
Operand ReadGeneralOperand(std::string_view text);

}  // namespace quorvelant
