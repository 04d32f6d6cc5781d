// A pack and its packet, as the scan hands them on: what can be said of a sector alone.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/message.h"

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
  // Of video: offsets in the payload of the headers that have `VideoHeaders::LeastBytes` in it, without
  // slices.
  std::span<const std::uint16_t> Headers = {};
};

// What is wrong with a pack. The offset counts bytes of the sector.
struct PackFault {
  const MessageKind* Kind;
  std::size_t Offset;
  const char* Table;
  const char* Field;
  std::string Expected;
  std::string Seen;
};

struct ScannedPack {
  bool IsPack = false;                       // by its start code; else nothing more is known
  std::int64_t Scr = 0;                      // 27 MHz
  std::size_t PacketAt = 0;                  // in the sector
  std::uint32_t Code = 0;                    // start code of what follows the pack header
  std::optional<ScannedPacket> Packet = {};  // of a stream, where its header is one
  std::vector<PackFault> Faults = {};
  std::size_t HeadFaults = 0;  // how many of them, from the first, are the pack header's
};

}  // namespace quorvelant
