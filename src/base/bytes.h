// Big-endian stores and loads, and the writer that appends a run of items.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvelant {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;
using ByteSpan = std::span<std::uint8_t>;

inline constexpr std::size_t SectorBytes = 2048;

// Stores the low `width` bytes of `value`, big-endian, at `offset`.
inline void PutBytes(ByteSpan buffer, std::size_t offset, unsigned width, std::uint64_t value) {
  assert(offset + width <= buffer.size() && width <= 8);
  for (unsigned i = 0; i < width; ++i) {
    buffer[offset + i] = static_cast<std::uint8_t>(value >> (8 * (width - 1 - i)));
  }
}

// The big-endian value of `width` bytes at `offset`.
inline std::uint64_t GetBytes(ByteView buffer, std::size_t offset, unsigned width) {
  assert(offset + width <= buffer.size() && width <= 8);
  std::uint64_t value = 0;
  for (unsigned i = 0; i < width; ++i) {
    value = (value << 8) | buffer[offset + i];
  }
  return value;
}

// Appends big-endian items to a growing array. A value known only later is reserved as a `Slot` and
// patched through it.
class ByteWriter {
 public:
  struct Slot {
    std::size_t Offset;
    unsigned Width;
  };

  void U8(std::uint64_t value) { Put(1, value); }
  void U16(std::uint64_t value) { Put(2, value); }
  void U32(std::uint64_t value) { Put(4, value); }
  void Put(unsigned width, std::uint64_t value) {
    assert(width <= 8);
    for (unsigned i = width; i-- > 0;) {
      bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
  }
  void Raw(ByteView bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }
  void Text(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }
  void Zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }
  void PadToSector() { bytes_.resize((bytes_.size() + SectorBytes - 1) / SectorBytes * SectorBytes); }

  Slot Reserve(unsigned width) {
    const Slot slot{bytes_.size(), width};
    Zeros(width);
    ++open_;
    return slot;
  }
  void Patch(Slot slot, std::uint64_t value) {
    assert(open_ > 0);
    --open_;
    PutBytes(bytes_, slot.Offset, slot.Width, value);
  }

  std::size_t Size() const { return bytes_.size(); }
  // The finished array. Every reserved slot must have been patched.
  Bytes Take() {
    assert(open_ == 0);
    return std::move(bytes_);
  }

 private:
  Bytes bytes_;
  int open_ = 0;
};

}  // namespace quorvelant
