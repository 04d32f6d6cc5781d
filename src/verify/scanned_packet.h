// A packet of an elementary stream, as the scan hands it on.
#pragma once

#include <cstdint>
#include <optional>

#include "base/bytes.h"

namespace quorvelant {

struct ScannedPacket {
  std::uint32_t Sector = 0;  // of the VOB set
  ByteView Payload = {};     // of the stream alone
  std::size_t At = 0;        // of the payload in the sector
  std::optional<std::uint32_t> Pts = {};
  std::optional<std::uint32_t> Dts = {};
  std::int64_t Begin = 0;  // when its first byte arrives, 27 MHz
  std::int64_t End = 0;    // ... and its last
  std::int64_t PStd = 0;   // the buffer that it declares, bytes; 0 for none
};

}  // namespace quorvelant
