// The eight bytes of a navigation command, held in the model as 16 hexadecimal digits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quorvelant {

using CommandBytes = std::array<std::uint8_t, 8>;

// Eight pairs of digits. A pair that is missing or holds another character counts as 00, so that an
// empty text is a NOP.
constexpr CommandBytes ParseCommandHex(std::string_view digits) {
  const auto nibble = [](char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                  : -1;
  };
  CommandBytes bytes{};
  for (std::size_t i = 0; i < bytes.size() && 2 * i + 1 < digits.size(); ++i) {
    const int high = nibble(digits[2 * i]);
    const int low = nibble(digits[2 * i + 1]);
    bytes[i] = high < 0 || low < 0 ? std::uint8_t{0} : static_cast<std::uint8_t>(high * 16 + low);
  }
  return bytes;
}

}  // namespace quorvelant
