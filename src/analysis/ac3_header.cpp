#include "analysis/ac3_header.h"

#include <array>

namespace quorvelant {
namespace {

// Table 5.18: kbit/s by frmsizecod / 2, since each rate stands twice.
constexpr std::array<std::int32_t, 19> KbpsOfCode{32,  40,  48,  56,  64,  80,  96,  112, 128, 160,
                                                  192, 224, 256, 320, 384, 448, 512, 576, 640};
// Table 5.6: Hz by fscod; 3 is reserved.
constexpr std::array<std::int32_t, 4> HertzOfCode{48000, 44100, 32000, 0};

// Table 5.8: channels by acmod, and the bits that stand between acmod and lfeon (5.3.2).
struct Mode {
  AudioChannels Channels;
  unsigned BitsBetween;
};
using enum Channel;
constexpr std::array<Mode, 8> Modes{{{ChannelsOf({Left, Right}), 0},
                                     {ChannelsOf({Centre}), 0},
                                     {ChannelsOf({Left, Right}), 2},
                                     {ChannelsOf({Left, Right, Centre}), 2},
                                     {ChannelsOf({Left, Right, SingleRear}), 2},
                                     {ChannelsOf({Left, Right, Centre, SingleRear}), 4},
                                     {ChannelsOf({Left, Right, LeftSurround, RightSurround}), 2},
                                     {ChannelsOf({Left, Right, Centre, LeftSurround, RightSurround}), 4}}};

std::uint8_t At(ByteView head, std::size_t offset) {
  return offset < head.size() ? head[offset] : 0;
}

}  // namespace

// syncword (16 bits), crc1 (16), fscod (2), frmsizecod (6), bsid (5), bsmod (3).
Ac3Header ReadAc3Header(ByteView head) {
  const bool first = At(head, 0) == 0x0B;
  const bool second = At(head, 1) == 0x77;
  const std::size_t rate = (At(head, 4) & 0x3FU) / 2;
  return {.Sync = first && second,
          .LooksLikeSync = first || second,
          .Kbps = rate < KbpsOfCode.size() ? KbpsOfCode[rate] : 0,
          .SampleRateHz = HertzOfCode[At(head, 4) >> 6U],
          .StreamVersion = At(head, 5) >> 3,
          .ServiceMode = At(head, 5) & 7};
}

AudioChannels ReadAc3Channels(ByteView head) {
  const unsigned modeByte = At(head, 6);
  const Mode& mode = Modes[modeByte >> 5U];
  AudioChannels channels = mode.Channels;
  if (((modeByte >> (4 - mode.BitsBetween)) & 1) != 0) {
    AddLowFrequency(channels);
  }
  return channels;
}

}  // namespace quorvelant
