// What every pack of the stream begins with, and the time stamps of its packets.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/bytes.h"
#include "base/rules.h"
#include "disc/clock.h"

namespace quorvelant {

inline constexpr std::size_t PackHeaderBytes = 14;
inline constexpr std::size_t TimeStampBytes = 5;

// What a pack carries: the fraction of its clock is rounded by it under the traditional rules.
enum class PackKind { Video, Navigation, AudioOrSubpicture };

// The system clock reference of a pack (ISO/IEC 13818-1 2.5.3.3).
struct SystemClockReference {
  std::uint64_t Base = 0;       // whole 90 kHz ticks
  std::uint32_t Extension = 0;  // 27 MHz ticks beyond it, 0 to 299
  bool operator==(const SystemClockReference&) const = default;
};

// The reference that stands for `clock` in a pack of this kind.
SystemClockReference ScrOf(Clock clock, PackKind kind, const Rules& rules);

// Fills bytes 0 to 13 of a sector: pack start code, SCR, mux rate 25200 (10.08 Mbit/s), no stuffing.
void PutPackHeader(ByteSpan sector, SystemClockReference scr);

// The four bits before a time stamp: a PTS that stands alone, a PTS that a DTS follows, that DTS.
enum class TimeStampKind : std::uint8_t { LonePts = 0b0010, PairedPts = 0b0011, Dts = 0b0001 };

// Stores the five bytes of a time stamp of 33 bits (ISO/IEC 13818-1 2.4.3.7).
void PutTimeStamp(ByteSpan sector, std::size_t offset, TimeStampKind kind, std::int64_t ticks);

}  // namespace quorvelant
