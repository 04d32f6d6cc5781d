// The header of an AC3 frame (ATSC A/52 5.3, 5.4.1, 5.4.2).
#pragma once

#include <cstddef>
#include <cstdint>

#include "analysis/audio_channels.h"
#include "base/bytes.h"

namespace quorvelant {

inline constexpr std::size_t Ac3HeaderBytes = 7;  // as many of a frame as the reader looks at
inline constexpr std::size_t Ac3SizeBytes = 6;    // as many as tell a frame and its size

// Values of bsid. 9 and 10 are AC3 at half and quarter rates, which players don't read; 11 to 16 are
// Enhanced AC3.
inline constexpr std::int32_t MostDiscAc3Version = 8;
inline constexpr std::int32_t LastAc3Version = 10;

struct Ac3Header {
  bool Sync = false;           // both bytes of the sync word
  bool LooksLikeSync = false;  // either of them: the traditional test of a file's first bytes
  std::int32_t Kbps = 0;       // 0 for a code beyond the table
  std::int32_t SampleRateHz = 0;
  std::int32_t StreamVersion = 0;  // bsid
  std::int32_t ServiceMode = 0;    // bsmod

  std::int32_t SampleRate() const { return SampleRateHz == 48000 ? 48 : 0; }  // kHz: 48, else 0
  // A frame lasts 32 ms at 48 kHz, which is what a disc carries; at other rates this is not the frame's size.
  std::int32_t FrameBytes() const { return Kbps * 4; }
};

// Reads the first bytes of a frame; bytes that are missing count as 0.
Ac3Header ReadAc3Header(ByteView head);

// acmod and lfeon, which stand after what `ReadAc3Header` reads.
AudioChannels ReadAc3Channels(ByteView head);

}  // namespace quorvelant
