#include "mux/pcm_format.h"

#include <algorithm>

namespace quorvelant {
namespace {

constexpr std::size_t ContainerBytes = 3;  // a file holds 20 and 24 bits in three bytes

void SwapPairs(ByteView source, ByteSpan disc) {
  for (std::size_t i = 0; i + 1 < disc.size(); i += 2) {
    disc[i] = source[i + 1];
    disc[i + 1] = source[i];
  }
  if (disc.size() % 2 != 0) {
    disc.back() = source[disc.size() - 1];
  }
}

// Little-endian values of three bytes, the sample in their upper bits: their upper words, then the rest.
void GroupValues(ByteView source, ByteSpan disc, int bits) {
  const std::size_t values = source.size() / ContainerBytes;
  for (std::size_t v = 0; v < values; ++v) {
    disc[2 * v] = source[ContainerBytes * v + 2];
    disc[2 * v + 1] = source[ContainerBytes * v + 1];
  }
  for (std::size_t v = 0; v < values; ++v) {
    const std::uint8_t low = source[ContainerBytes * v];
    if (bits == 24) {
      disc[2 * values + v] = low;
    } else if (v % 2 == 0) {
      disc[2 * values + v / 2] =
          static_cast<std::uint8_t>((low & 0xF0) | source[ContainerBytes * (v + 1)] >> 4);
    }
  }
}

}  // namespace

std::size_t PcmFormat::DiscBytes(int samples) const {
  return static_cast<std::size_t>(samples / 2 * Channels * Bits / 4);
}

std::size_t PcmFormat::SourceBytes(int samples) const {
  return Grouped ? static_cast<std::size_t>(samples * Channels) * ContainerBytes : DiscBytes(samples);
}

std::size_t PcmFormat::SourceSampleBytes() const {
  return std::max(SourceBytes(2) / 2, std::size_t{1});
}

bool PcmFormatOf(const AudioTraits& traits, const Rules& rules, PcmFormat& format) {
  format = {traits.ChannelCount, traits.Quantisation, traits.SampleRate,
            rules.PcmGroupsSamples && traits.Quantisation > 16};
  const bool bits = format.Bits == 16 || format.Bits == 20 || format.Bits == 24;
  const bool rate = format.KiloHertz == 48 || format.KiloHertz == 96;
  return bits && rate && format.Channels >= 1 && format.Channels <= 8;
}

void ConvertPcm(const PcmFormat& format, ByteView source, ByteSpan disc) {
  if (!format.Grouped) {
    SwapPairs(source, disc);
    return;
  }
  const std::size_t values = format.Channels == 1 ? 2 : 4;
  const std::size_t sourceGroup = values * ContainerBytes;
  const std::size_t discGroup = values * static_cast<std::size_t>(format.Bits) / 8;
  for (std::size_t i = 0; i < disc.size() / discGroup; ++i) {
    GroupValues(source.subspan(i * sourceGroup, sourceGroup), disc.subspan(i * discGroup, discGroup),
                format.Bits);
  }
}

}  // namespace quorvelant
