// The fields of a navigation command, by the places where types of commands have them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "player/nav_disc.h"

namespace quorvelant {

// Bytes count from the command's start.
struct CommandView {
  const NavCommand& Bytes;

  [[nodiscard]] std::uint8_t Byte(std::size_t at) const { return Bytes.at(at); }
  [[nodiscard]] std::uint16_t Word(std::size_t at) const {
    return static_cast<std::uint16_t>(Bytes.at(at) << 8U | Bytes.at(at + 1));
  }
  [[nodiscard]] unsigned Type() const { return Byte(0) >> 5U; }
  [[nodiscard]] bool SetsByNumber() const { return (Byte(0) & 0x10U) != 0; }
  [[nodiscard]] unsigned SetOperation() const { return Byte(0) & 0x0FU; }
  [[nodiscard]] bool ComparesNumber() const { return (Byte(1) & 0x80U) != 0; }
  [[nodiscard]] unsigned CompareOperation() const { return (Byte(1) >> 4U) & 0x07U; }
  [[nodiscard]] unsigned Branch() const { return Byte(1) & 0x0FU; }
  // Where a general register's new value stands, or the register that has it: types 3 to 6.
  [[nodiscard]] std::size_t SourceAt() const { return Type() == 3 ? 5 : Type() == 4 ? 3 : 2; }
};

}  // namespace quorvelant
