// A pack and its packet, as the scan hands them on: what can be said of a sector alone.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "base/bytes.h"
#include "base/message.h"

namespace quorvelant {

struct ScannedPacket {
  std::uint32_t Sector = 0;  // of the VOB set
  ByteView Payload = {};     // of the stream alone
  std::uint32_t At = 0;      // of the payload in the sector
  std::optional<std::uint32_t> Pts = {};
  std::optional<std::uint32_t> Dts = {};
  std::int64_t Begin = 0;  // when its first byte arrives, 27 MHz
  std::int64_t End = 0;    // ... and its last
  std::int32_t PStd = 0;   // the buffer that it declares, bytes; 0 for none
  // Of video: offsets in the payload of the headers that have `VideoHeaders::LeastBytes` in it, without
  // slices.
  std::span<const std::uint16_t> Headers = {};
  bool CarriesOn = true;  // of video: whether a header may begin in its last bytes and go on in the next
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
  bool IsRead = true;                        // the disc gave the sector
  bool IsPack = false;                       // by its start code; else nothing more is known
  std::uint8_t HeadFaults = 0;               // of the pack header
  std::uint8_t PacketFaults = 0;             // ... and of what follows it
  std::uint32_t Code = 0;                    // start code of what follows the pack header
  std::uint32_t PacketAt = 0;                // in the sector
  std::int64_t Scr = 0;                      // 27 MHz
  std::optional<ScannedPacket> Packet = {};  // of a stream, where its header is one
};

}  // namespace quorvelant
