#include "mux/pack_header.h"

#include <algorithm>
#include <array>

#include "disc/start_codes.h"

namespace quorvelant {
namespace {

// One fourteenth of a tick a row: the clock's fraction in thousandths, and the 27 MHz ticks it becomes.
struct FractionRow {
  std::int64_t Thousandths;
  std::uint32_t Extension;
};
constexpr std::array<FractionRow, 14> FractionRows{{{71, 21},
                                                    {143, 43},
                                                    {214, 64},
                                                    {286, 86},
                                                    {357, 107},
                                                    {429, 129},
                                                    {500, 150},
                                                    {571, 172},
                                                    {643, 193},
                                                    {714, 215},
                                                    {786, 236},
                                                    {857, 258},
                                                    {929, 279},
                                                    {1000, 300}}};

constexpr std::uint32_t ExtensionsPerTick = 300;  // 27 MHz / 90 kHz
constexpr std::uint64_t ProgramMuxRate = 25200;   // units of 50 bytes a second

// The extension of a fraction of `fourteenths`. Video looks half a thousandth further, which rounds to
// the nearest row; audio takes the row at or above, navigation the exact row or the one before.
std::uint32_t ExtensionOf(std::int64_t fourteenths, PackKind kind) {
  const std::int64_t half = kind == PackKind::Video ? Clock::UnitsPerTick / 2 : 0;
  const std::int64_t sought = fourteenths * 1000 + half;  // in 1/14 of a thousandth
  const auto* row = std::ranges::lower_bound(
      FractionRows, sought, {}, [](const FractionRow& r) { return r.Thousandths * Clock::UnitsPerTick; });
  const bool exact = row->Thousandths * Clock::UnitsPerTick == sought;
  if (exact || kind == PackKind::AudioOrSubpicture) {
    return row->Extension;
  }
  return row == FractionRows.begin() ? 0 : (row - 1)->Extension;
}

}  // namespace

SystemClockReference ScrOf(Clock clock, PackKind kind, const Rules& rules) {
  const PackKind rounding = rules.OneScrRounding ? PackKind::Video : kind;
  SystemClockReference scr{static_cast<std::uint64_t>(clock.WholeTicks()),
                           ExtensionOf(clock.Fraction(), rounding)};
  if (scr.Extension == ExtensionsPerTick) {
    ++scr.Base;
    scr.Extension = 0;
  }
  return scr;
}

void PutPackHeader(ByteSpan sector, SystemClockReference scr) {
  const std::uint64_t high = (scr.Base >> 30) & 0x7;
  const std::uint64_t middle = (scr.Base >> 15) & 0x7FFF;
  const std::uint64_t low = scr.Base & 0x7FFF;
  const std::uint64_t bits = std::uint64_t{1} << 46               // "01"
                             | high << 43                         // base 32 to 30
                             | std::uint64_t{1} << 42             // marker
                             | middle << 27                       // base 29 to 15
                             | std::uint64_t{1} << 26             // marker
                             | low << 11                          // base 14 to 0
                             | std::uint64_t{1} << 10             // marker
                             | std::uint64_t{scr.Extension} << 1  // extension
                             | 1;                                 // marker
  PutBytes(sector, 0, 4, StartCodePrefix | start_code::Pack);
  PutBytes(sector, 4, 6, bits);
  PutBytes(sector, 10, 3, ProgramMuxRate << 2 | 0b11);  // program_mux_rate, two markers
  PutBytes(sector, 13, 1, 0xF8);                        // reserved bits, pack_stuffing_length 0
}

void PutTimeStamp(ByteSpan sector, std::size_t offset, TimeStampKind kind, std::int64_t ticks) {
  const auto stamp = static_cast<std::uint64_t>(ticks);
  const std::uint64_t bits = static_cast<std::uint64_t>(kind) << 36  // four bits of the kind
                             | ((stamp >> 30) & 0x7) << 33           // 32 to 30
                             | std::uint64_t{1} << 32                // marker
                             | ((stamp >> 15) & 0x7FFF) << 17        // 29 to 15
                             | std::uint64_t{1} << 16                // marker
                             | (stamp & 0x7FFF) << 1                 // 14 to 0
                             | 1;                                    // marker
  PutBytes(sector, offset, TimeStampBytes, bits);
}

}  // namespace quorvelant
