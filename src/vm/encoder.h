// A command as the eight bytes of the disc.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "vm/parsed_command.h"

namespace quorvelant {

using CommandBytes = std::array<std::uint8_t, 8>;

// The eight bytes of a no-operation, as digits.
inline constexpr std::string_view NopHex = "0000000000000000";

// A command as 16 upper-case hexadecimal digits. Pure: a field the parser could not fill encodes as
// zero, a value too big for its byte is cut to its low bits, and an unknown word gives `NopHex`.
std::string EncodeCommand(const ParsedCommand& command);
CommandBytes EncodeCommandBytes(const ParsedCommand& command);

// Digits and bytes, back and forth. Text that is not 16 hexadecimal digits stands for a no-operation, so
// that a command never resolved does nothing on the disc; `IsCommandHex` tells it apart.
std::string HexOfCommand(const CommandBytes& bytes);
CommandBytes BytesOfCommand(std::string_view hex);
bool IsCommandHex(std::string_view hex);

}  // namespace quorvelant
