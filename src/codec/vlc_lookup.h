// The code tables turned round for decoding: the next bits of the stream give the code at once.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "codec/bit_reader.h"
#include "codec/tables.h"

namespace quorvelant {

// A DCT coefficient code, found by the next 16 bits.
class DctLookup {
 public:
  enum class Kind : std::uint8_t { Invalid, Coefficient, EndOfBlock, Escape };
  struct Entry {
    Kind What = Kind::Invalid;
    std::uint8_t Bits = 0;  // without the sign
    std::uint8_t Run = 0;
    std::uint8_t Level = 0;
  };

  static const DctLookup& B14();
  static const DctLookup& B15();

  // Codes above 10 bits all begin with seven zeros, so two small tables hold everything.
  const Entry& Find(std::uint32_t next16) const {
    return next16 >= LongCodes ? short_[next16 >> ShortShift] : long_[next16];
  }

 private:
  explicit DctLookup(const DctTable& table);
  void Enter(Vlc word, Entry entry);

  static constexpr unsigned ShortShift = 6;
  static constexpr std::uint32_t LongCodes = 0x200;
  std::array<Entry, 1024> short_;
  std::array<Entry, LongCodes> long_;
};

// A table of at most 11 bits: the number of the entry whose code comes next.
class IndexLookup {
 public:
  explicit IndexLookup(std::span<const Vlc> codes);

  // Reads one code. An unknown one fails the reader and gives 0.
  unsigned Read(BitReader& reader) const {
    const Entry entry = entries_[reader.Peek(IndexBits)];
    if (entry.Bits == 0) {
      reader.Fail();
    }
    reader.Skip(entry.Bits);
    return entry.Index;
  }

 private:
  static constexpr unsigned IndexBits = 11;
  struct Entry {
    std::uint8_t Index = 0;
    std::uint8_t Bits = 0;
  };
  std::array<Entry, std::size_t{1} << IndexBits> entries_;
};

// dct_dc_size of luminance (0) and colour (1), macroblock_address_increment less 1, and motion_code.
const IndexLookup& DcSizeLookup(bool colour);
const IndexLookup& AddressIncrementLookup();
const IndexLookup& MotionCodeLookup();

}  // namespace quorvelant
