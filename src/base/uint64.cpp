#include "base/uint64.h"

#include <fmt/format.h>

namespace quorvelant {

std::uint64_t cUInt64::Value() const {
  return (std::uint64_t{static_cast<std::uint32_t>(Upper)} << 32) | static_cast<std::uint32_t>(Lower);
}

void cUInt64::SetValue(std::uint64_t value) {
  Upper = static_cast<std::int32_t>(static_cast<std::uint32_t>(value >> 32));
  Lower = static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

std::string cUInt64::ToString(bool asHex) const {
  return asHex ? fmt::format("{:X}", Value()) : fmt::format("{}", Value());
}

}  // namespace quorvelant
