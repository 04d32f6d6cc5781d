// Writes a bit string, most significant bit first.
#pragma once

#include <cstdint>
#include <utility>

#include "base/bytes.h"

namespace quorvelant {

class BitWriter {
 public:
  // Appends the low `count` bits (0 to 32) of `value`; the bits above must be 0.
  void Put(unsigned count, std::uint32_t value) {
    pending_ = (pending_ << count) | value;
    pendingBits_ += count;
    while (pendingBits_ >= 8) {
      pendingBits_ -= 8;
      bytes_.push_back(static_cast<std::uint8_t>(pending_ >> pendingBits_));
    }
  }
  // Fills up to a whole byte with zeros.
  void Align() { Put((8 - pendingBits_) & 7, 0); }
  // Appends a start code, 00 00 01 `code`, at a whole byte.
  void StartCode(std::uint8_t code) {
    Align();
    Put(32, 0x100U | code);
  }

  // The whole bytes written so far; bits of an open byte are not among them.
  Bytes Take() { return std::move(bytes_); }

 private:
  Bytes bytes_;
  std::uint64_t pending_ = 0;  // the low `pendingBits_` bits are not written yet
  unsigned pendingBits_ = 0;
};

}  // namespace quorvelant
