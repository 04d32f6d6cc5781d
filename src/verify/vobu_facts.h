// What the sectors of a VOB set came to: what its tables are measured by.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "verify/audio_framer.h"

namespace quorvelant {

// Sectors count through the VOB set, times are 90 kHz ticks.
struct VobuFacts {
  std::uint32_t Sector = 0;  // of its navigation pack
  std::uint32_t Last = 0;
  std::uint32_t StartPtm = 0;
  std::uint32_t EndPtm = 0;
  std::uint16_t VobId = 0;
  std::uint8_t CellId = 0;
  std::uint32_t UserOperations = 0;  // VOBU_UOP_CTL: bits that are set forbid
};

// A stream of a VOB.
struct StreamFacts {
  std::uint16_t VobId = 0;
  std::uint8_t Id = 0;  // a substream of private stream 1, or a stream from 0xC0 on
  std::uint32_t FirstSector = 0;
  SoundTraits Audio;
};

// Buttons that begin with a VOBU: its HLI.
struct HighlightFacts {
  std::uint32_t Sector = 0;
  std::uint16_t VobId = 0;
  std::uint8_t CellId = 0;
  Bytes Hli;
};

struct VobSetFacts {
  std::vector<VobuFacts> Vobus;  // by sector
  std::vector<StreamFacts> Streams;
  std::vector<HighlightFacts> Highlights;
};

inline constexpr std::size_t HliAt = 141;     // of the navigation pack
inline constexpr std::size_t HliBytes = 694;  // HLI_SS to the last button
inline constexpr std::size_t DsiAt = 1031;

// A navigation pack, as long as its VOB is under way.
struct NavRecord {
  VobuFacts Vobu;
  std::uint32_t SequenceEndPtm = 0;
  std::uint32_t Elapsed = 0;  // C_ELTM of the PCI
  std::array<std::uint8_t, 36> Angles{};
  std::array<std::uint8_t, 546> Dsi{};  // DSI_GI to SYNCI

  // By the offset of a row of disc/nav_layout.h.
  [[nodiscard]] std::uint64_t Get(std::size_t offset, unsigned width) const {
    return GetBytes(Dsi, offset - DsiAt, width);
  }
  [[nodiscard]] std::uint32_t Long(std::size_t offset) const {
    return static_cast<std::uint32_t>(Get(offset, 4));
  }
};

}  // namespace quorvelant
