// Reads a bit string, most significant bit first.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/bytes.h"

namespace quorvelant {

// Past the end every bit reads as 0. The error is sticky: a parser reads straight on and asks
// `Failed` once where it matters.
class BitReader {
 public:
  explicit BitReader(ByteView bytes) : bytes_(bytes) {}

  // The next `count` bits (1 to 32) without using them.
  std::uint32_t Peek(unsigned count) const { return static_cast<std::uint32_t>(Ahead() >> (64 - count)); }
  // What comes next, the first bit highest: `AheadBits` are there, those below are 0.
  static constexpr unsigned AheadBits = 57;
  std::uint64_t Ahead() const { return Window() << (bit_ & 7); }
  void Skip(std::size_t count) { bit_ += count; }
  std::uint32_t Get(unsigned count) {
    const std::uint32_t value = Peek(count);
    Skip(count);
    return value;
  }
  bool GetFlag() { return Get(1) != 0; }

  void Fail() { failed_ = true; }
  // Whether a code was invalid or the reader went past the end.
  bool Failed() const { return failed_ || bit_ > bytes_.size() * 8; }

 private:
  // The 8 bytes that begin with the one that holds the next bit.
  std::uint64_t Window() const {
    const std::size_t at = bit_ / 8;
    if (at + 8 <= bytes_.size()) {
      // One expression, which compilers turn into one load.
      const std::uint8_t* next = bytes_.data() + at;
      return std::uint64_t{next[0]} << 56 | std::uint64_t{next[1]} << 48 | std::uint64_t{next[2]} << 40 |
             std::uint64_t{next[3]} << 32 | std::uint64_t{next[4]} << 24 | std::uint64_t{next[5]} << 16 |
             std::uint64_t{next[6]} << 8 | next[7];
    }
    std::uint64_t window = 0;
    for (std::size_t i = at; i < at + 8; ++i) {
      window = (window << 8) | (i < bytes_.size() ? bytes_[i] : 0U);
    }
    return window;
  }

  ByteView bytes_;
  std::size_t bit_ = 0;
  bool failed_ = false;
};

}  // namespace quorvelant
