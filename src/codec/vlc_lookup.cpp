#include "codec/vlc_lookup.h"

#include <algorithm>

namespace quorvelant {

DctLookup::DctLookup(const DctTable& table) {
  for (const RunLevelVlc& code : table.Codes) {
    Enter(code.Word, {Kind::Coefficient, code.Word.Bits, code.Run, code.Level});
  }
  Enter(table.EndOfBlock, {Kind::EndOfBlock, table.EndOfBlock.Bits});
  Enter(DctEscape, {Kind::Escape, DctEscape.Bits});
}

void DctLookup::Enter(Vlc word, Entry entry) {
  const std::uint32_t first = std::uint32_t{word.Code} << (16 - word.Bits);
  const std::uint32_t count = 1U << (16 - word.Bits);
  if (first >= LongCodes) {
    std::fill_n(short_.begin() + (first >> ShortShift), count >> ShortShift, entry);
  } else {
    std::fill_n(long_.begin() + first, count, entry);
  }
}

const DctLookup& DctLookup::B14() {
  static const DctLookup lookup(DctTableB14);
  return lookup;
}

const DctLookup& DctLookup::B15() {
  static const DctLookup lookup(DctTableB15);
  return lookup;
}

IndexLookup::IndexLookup(std::span<const Vlc> codes) {
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const unsigned spareBits = IndexBits - codes[i].Bits;
    std::fill_n(entries_.begin() + (codes[i].Code << spareBits), std::size_t{1} << spareBits,
                Entry{static_cast<std::uint8_t>(i), codes[i].Bits});
  }
}

const IndexLookup& DcSizeLookup(bool colour) {
  static const IndexLookup luma(DcSizeLuma);
  static const IndexLookup chroma(DcSizeChroma);
  return colour ? chroma : luma;
}

const IndexLookup& AddressIncrementLookup() {
  static const IndexLookup lookup(AddressIncrement);
  return lookup;
}

const IndexLookup& MotionCodeLookup() {
  static const IndexLookup lookup(MotionCode);
  return lookup;
}

}  // namespace quorvelant
