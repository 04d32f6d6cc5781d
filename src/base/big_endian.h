// Big-endian numbers in one load each, for what looks at every sector of a disc: GetBytes takes a byte at a
// time.
#pragma once

#include <bit>
#include <cassert>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/bytes.h"

namespace quorvelant {

// The number of 4 or 8 bytes at `offset`.
template <class Number>
requires std::same_as<Number, std::uint32_t> || std::same_as<Number, std::uint64_t> Number
BigEndian(ByteView buffer, std::size_t offset) {
  assert(offset + sizeof(Number) <= buffer.size());
  Number value = 0;
  std::memcpy(&value, buffer.data() + offset, sizeof(Number));
  if constexpr (std::endian::native == std::endian::big) {
    return value;
  } else if constexpr (sizeof(Number) == 4) {
    return __builtin_bswap32(value);
  } else {
    return __builtin_bswap64(value);
  }
}

}  // namespace quorvelant
