// An unsigned 64-bit value as two signed 32-bit words.
#pragma once

#include <cstdint>
#include <string>

namespace quorvelant {

// The helper of file positions beyond 32 bits. A word above 7FFFFFFF is held less 2^32.
class cUInt64 {  // NOLINT(readability-identifier-naming): the name callers know it by
 public:
  cUInt64() = default;
  explicit cUInt64(std::uint64_t value) { SetValue(value); }
  cUInt64(std::int32_t upper, std::int32_t lower) : Upper(upper), Lower(lower) {}

  std::uint64_t Value() const;
  void SetValue(std::uint64_t value);
  void Zero() { SetValue(0); }
  // Decimal; or hexadecimal with `Lower` as 8 digits after `Upper` where `Upper` is not 0.
  std::string ToString(bool asHex = false) const;

  bool operator==(const cUInt64&) const = default;

  std::int32_t Upper = 0;
  std::int32_t Lower = 0;
};

}  // namespace quorvelant
