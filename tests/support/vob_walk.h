// Finished VOB files as a demultiplexer sees them, knowing nothing of who wrote them: their packs, and the
// places that tables and navigation packs must name.
#pragma once

#include <cstddef>
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
  Bytes Payload = {};    // after all headers

  // The substream of private stream 1, otherwise the packet's stream.
  int Stream() const { return Substream >= 0 ? Substream : StreamId; }
};

// Fails the test on a sector that is no pack.
ReadPack ReadPackOf(ByteView sector);
// The sectors of VOB files in a row.
Bytes SectorsOf(const std::vector<std::string>& files);

// A pack of sound or subtitles. `Pts` is that of the first frame or unit that starts in it, -1 without one.
struct WalkedPack {
  std::uint32_t Sector = 0;  // through all files
  int Stream = 0;            // substream id: 0x20 to 0x3F, 0x80 to 0x87, 0xA0 to 0xA7
  std::int64_t Pts = -1;
};

struct WalkedVobu {
  std::uint32_t Sector = 0;  // of the navigation pack, through all files
  std::uint32_t Last = 0;    // its last sector
  Bytes Nav;                 // the whole sector
  std::int64_t ScrBase = 0;
  bool HasVideo = false;
  std::int64_t FirstPackPts = -1;  // time stamp of the first video pack: of the first picture in coded order
  // When its first picture in the order of display is shown, and for how long all are; in fields.
  int FieldsBeforeFirst = 0;  // shown before the picture that the first pack stamps
  int Fields = 0;
  // Last sectors of the reference pictures, in coded order.
  std::vector<std::uint32_t> ReferenceEnds;
  bool EndCode = false;  // the video ends with a sequence end code
  std::vector<WalkedPack> Packs;

  // In half ticks, so that the fields of NTSC are exact.
  std::int64_t StartHalfTicks(std::int64_t frameTicks) const {
    return 2 * FirstPackPts - FieldsBeforeFirst * frameTicks;
  }
  std::int64_t EndHalfTicks(std::int64_t frameTicks) const {
    return StartHalfTicks(frameTicks) + Fields * frameTicks;
  }

  std::uint64_t Field(std::size_t offset, unsigned width) const { return GetBytes(Nav, offset, width); }
};

// The files of one VOB set in order. Fails the test on a sector that is no pack.
std::vector<WalkedVobu> WalkVobs(const std::vector<std::string>& files);

}  // namespace quorvelant
