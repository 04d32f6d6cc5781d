// How PCM samples of a source file become those of the disc.
#pragma once

#include <cstddef>

#include "base/bytes.h"
#include "base/rules.h"
#include "model/tracks.h"

namespace quorvelant {

// Samples go onto the disc in groups: what the format orders as a whole. 16 bits: big-endian words in
// order. 20 and 24 bits: the upper 16 bits of four values in a row, then their lower 4 (8) bits; of two
// values where there is one channel. A pack holds whole groups, of an even number of samples.
struct PcmFormat {
  int Channels = 2;
  int Bits = 16;
  int KiloHertz = 48;
  bool Grouped = false;  // 20 or 24 bits in the order of the disc; otherwise byte pairs are swapped

  int SamplesPerFrame() const { return KiloHertz * 1000 / 600; }
  int GroupSamples() const { return Grouped && Channels % 2 != 0 && Channels > 1 ? 4 : 2; }
  std::size_t DiscBytes(int samples) const;    // of an even number of samples
  std::size_t SourceBytes(int samples) const;  // of an even number of samples
  std::size_t SourceSampleBytes() const;       // of all channels of one sample; files end on a multiple
};

// The format of a stream's sound; nothing when no disc can carry it.
bool PcmFormatOf(const AudioTraits& traits, const Rules& rules, PcmFormat& format);

// Converts whole groups. `disc` has exactly the bytes that `source` becomes.
void ConvertPcm(const PcmFormat& format, ByteView source, ByteSpan disc);

}  // namespace quorvelant
