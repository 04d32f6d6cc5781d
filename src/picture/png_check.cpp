#include "picture/png_check.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quorvelant {

namespace {

constexpr std::array<std::uint8_t, 8> Signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::size_t LengthBytes = 4;
constexpr std::size_t TypeBytes = 4;
constexpr std::size_t ChecksumBytes = 4;
constexpr std::uint32_t EndType = 0x49454E44;        // "IEND"
constexpr std::uint32_t AncillaryType = 0x20000000;  // the bit that tells lower case in the first letter

constexpr std::array<std::uint32_t, 256> ChecksumTable = [] {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) {
      value = (value & 1U) != 0 ? value >> 1U ^ 0xEDB88320U : value >> 1U;
    }
    table.at(i) = value;
  }
  return table;
}();

// ISO/IEC 15948, annex D.
std::uint32_t Checksum(ByteView bytes) {
  std::uint32_t value = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    value = ChecksumTable.at((value ^ byte) & 0xFFU) ^ value >> 8U;
  }
  return ~value;
}

}  // namespace

bool IsPng(ByteView file) {
  return file.size() >= Signature.size() && std::ranges::equal(file.first(Signature.size()), Signature);
}

bool IsWholePng(ByteView file) {
  if (!IsPng(file)) {
    return false;
  }
  file = file.subspan(Signature.size());
  while (file.size() >= LengthBytes + TypeBytes) {
    const std::size_t length = GetBytes(file, 0, LengthBytes);
    const std::uint64_t type = GetBytes(file, LengthBytes, TypeBytes);
    if (type == EndType) {
      return true;  // some writers leave its checksum out
    }
    file = file.subspan(LengthBytes);
    if (length + TypeBytes + ChecksumBytes > file.size()) {
      return false;
    }
    const std::uint64_t checksum = GetBytes(file, TypeBytes + length, ChecksumBytes);
    if ((type & AncillaryType) == 0 && Checksum(file.first(TypeBytes + length)) != checksum) {
      return false;
    }
    file = file.subspan(TypeBytes + length + ChecksumBytes);
  }
  return false;
}

}  // namespace quorvelant
