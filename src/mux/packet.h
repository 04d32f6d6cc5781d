// A pack with one packet in it: what video, audio and subpicture packs share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/bytes.h"
#include "disc/start_codes.h"
#include "mux/pack_header.h"

namespace quorvelant {

inline constexpr std::uint16_t VideoBufferKib = 232;  // decoder buffers, as packets declare them
inline constexpr std::uint16_t PrivateBufferKib = 58;

// The header of a packet (ISO/IEC 13818-1 2.4.3.6).
struct PacketHeader {
  std::uint8_t StreamId = start_code::VideoStream;
  std::optional<std::int64_t> Pts = std::nullopt;  // ticks
  std::optional<std::int64_t> Dts = std::nullopt;  // only with a PTS
  std::uint16_t BufferKib = 0;                     // declared in a stream's first packet; 0: not
};

// Bytes of a sector after the header, when the packet fills it.
std::size_t RoomAfter(const PacketHeader& header);

// Writes pack header, packet header and whatever fills the sector after `dataBytes`: up to seven bytes become
// stuffing at the header's end, more a padding packet. Returns where the data goes.
std::size_t PutPacket(ByteSpan sector, SystemClockReference scr, const PacketHeader& header,
                      std::size_t dataBytes);

}  // namespace quorvelant
