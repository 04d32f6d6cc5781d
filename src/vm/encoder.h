// A command as the eight bytes of the disc.
#pragma once

#include <string>
#include <string_view>

#include "disc/command_hex.h"
#include "vm/parsed_command.h"

namespace quorvelant {

// The eight bytes of a no-operation, as digits.
inline constexpr std::string_view NopHex = "0000000000000000";

// A command as 16 upper-case hexadecimal digits. Pure: a field the parser could not fill encodes as
// zero, a value too big for its byte is cut to its low bits, and an unknown word gives `NopHex`.
std::string EncodeCommand(const ParsedCommand& command);
CommandBytes EncodeCommandBytes(const ParsedCommand& command);

// The digits of eight bytes; `ParseCommandHex` is the way back.
std::string HexOfCommand(const CommandBytes& bytes);
// Whether a text is 16 hexadecimal digits.
bool IsCommandHex(std::string_view hex);

}  // namespace quorvelant
