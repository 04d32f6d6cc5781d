// The packet that fills a sector's rest.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>

#include "base/bytes.h"
#include "disc/start_codes.h"

namespace quorvelant {

inline constexpr std::size_t LeastPaddingBytes = 7;  // start code, length and one byte

// Fills the sector from `used` on with a padding packet (ISO/IEC 13818-1 2.4.3.7, padding_stream). The
// room is 0 or at least LeastPaddingBytes.
inline void PutPaddingPacket(ByteSpan sector, std::size_t used) {
  const std::size_t room = SectorBytes - used;
  if (room == 0) {
    return;
  }
  assert(room >= LeastPaddingBytes);
  PutBytes(sector, used, 4, StartCodePrefix | start_code::PaddingStream);
  PutBytes(sector, used + 4, 2, room - 6);
  std::ranges::fill(sector.subspan(used + 6, room - 6), std::uint8_t{0xFF});
}

}  // namespace quorvelant
