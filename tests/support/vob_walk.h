// Walks finished VOB files sector by sector, knowing nothing of who wrote them: the places that tables and
// navigation packs must name are found here.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "base/bytes.h"

namespace quorvelant {

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
  // When its first picture in the order of display is shown, and for how long all are; in half frames.
  int HalvesAheadOfFirst = 0;  // shown ahead of the picture that the first pack stamps
  int Halves = 0;
  // Last sectors of the reference pictures, in coded order.
  std::vector<std::uint32_t> ReferenceEnds;
  bool EndCode = false;  // the video ends with a sequence end code
  std::vector<WalkedPack> Packs;

  // In half ticks, so that the half frames of NTSC are exact.
  std::int64_t StartHalfTicks(std::int64_t frameTicks) const {
    return 2 * FirstPackPts - HalvesAheadOfFirst * frameTicks;
  }
  std::int64_t EndHalfTicks(std::int64_t frameTicks) const {
    return StartHalfTicks(frameTicks) + Halves * frameTicks;
  }

  std::uint64_t Field(std::size_t offset, unsigned width) const { return GetBytes(Nav, offset, width); }
};

// The files of one VOB set in order. Fails the test on a sector that is no pack.
std::vector<WalkedVobu> WalkVobs(const std::vector<std::string>& files);

}  // namespace quorvelant
