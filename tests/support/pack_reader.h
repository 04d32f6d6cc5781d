// Packs as a demultiplexer sees them, read without the multiplexer's help.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"

namespace quorvelant {

inline constexpr int NavigationPack = 0xBB;
inline constexpr int VideoPack = 0xE0;

struct ReadPack {
  std::int64_t Scr = 0;  // 27 MHz ticks
  int StreamId = 0;      // of the packet; NavigationPack for the system header
  int Substream = -1;    // of private stream 1
  std::optional<std::int64_t> Pts = {};
  std::optional<std::int64_t> Dts = {};
  int BufferKib = 0;
  int Frames = 0;  // of the header of sound
  int Pointer = 0;
  Bytes AudioBits = {};  // of an LPCM header
  Bytes Payload = {};    // behind all headers

  // The substream of private stream 1, otherwise the packet's stream.
  int Stream() const { return Substream >= 0 ? Substream : StreamId; }
};

// Fails the test on a sector that is no pack.
ReadPack ReadPackOf(ByteView sector);
// The sectors of VOB files in a row.
Bytes SectorsOf(const std::vector<std::string>& files);

}  // namespace quorvelant
