#include "analysis/audio_headers.h"

#include <cmath>
#include <cstring>

#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"

namespace quorvelant {

namespace {

constexpr std::string_view ReadTitle = "Read Error";

enum Channel : std::uint8_t { Left, Right, Centre, LeftSurround, RightSurround, SingleRear, LowFrequency };

AudioChannels Present(std::initializer_list<Channel> list) {
  AudioChannels channels{};
  for (const Channel channel : list) {
    channels[channel] = 1;
  }
  channels[ChannelTotal] = static_cast<std::uint8_t>(list.size());
  return channels;
}

void AddLowFrequency(AudioChannels& channels) {
  channels[LowFrequency] = 1;
  ++channels[ChannelTotal];
}

std::uint8_t At(ByteView head, std::size_t offset) {
  return offset < head.size() ? head[offset] : 0;
}

}  // namespace

std::optional<Bytes> ReadAudioHead(const std::string& fileName, UserInterface& ui) {
  Random files(ui);
  files.DimFiles(0);
  try {
    if (!files.OpenSource(fileName, 0)) {
      return std::nullopt;
    }
    return files.ReadBytes(AudioHeadBytes, 0);
  } catch (const FileError& error) {
    TellError(ui, ReadTitle, error.OneLine(), fileName);
    return std::nullopt;
  }
}

namespace ac3 {

bool LooksLikeSync(ByteView head) {
  return At(head, 0) == 0x0B || At(head, 1) == 0x77;
}

// A/52 table 5.18: each rate stands twice.
std::int32_t Kbps(unsigned frmsizecod) {
  constexpr std::array<std::int32_t, 19> Rates{32,  40,  48,  56,  64,  80,  96,  112, 128, 160,
                                               192, 224, 256, 320, 384, 448, 512, 576, 640};
  return frmsizecod / 2 < Rates.size() ? Rates[frmsizecod / 2] : 0;
}

std::int32_t FrameBytes(ByteView head) {
  return LooksLikeSync(head) ? Kbps(At(head, 4) & 0x3FU) * 4 : 0;
}

std::int32_t SampleRate(ByteView head) {
  return At(head, 4) >> 6 == 0 ? 48 : 0;
}

std::int32_t SampleRateHz(ByteView head) {
  constexpr std::array<std::int32_t, 4> Rates{48000, 44100, 32000, 0};
  return Rates[At(head, 4) >> 6];
}

AudioChannels Channels(ByteView head) {
  // A/52 table 5.8, and the bits that stand between acmod and lfeon (5.3.2)
  struct Mode {
    AudioChannels Flags;
    unsigned BitsBetween;
  };
  const std::array<Mode, 8> modes{{{Present({Left, Right}), 0},
                                   {Present({Centre}), 0},
                                   {Present({Left, Right}), 2},
                                   {Present({Left, Right, Centre}), 2},
                                   {Present({Left, Right, SingleRear}), 2},
                                   {Present({Left, Right, Centre, SingleRear}), 4},
                                   {Present({Left, Right, LeftSurround, RightSurround}), 2},
                                   {Present({Left, Right, Centre, LeftSurround, RightSurround}), 4}}};
  const unsigned modeByte = At(head, 6);
  const Mode& mode = modes[modeByte >> 5];
  AudioChannels channels = mode.Flags;
  if (((modeByte >> (4 - mode.BitsBetween)) & 1) != 0) {
    AddLowFrequency(channels);
  }
  return channels;
}

std::int32_t ServiceMode(ByteView head) {
  return At(head, 5) & 7;
}

std::int32_t StreamVersion(ByteView head) {
  return At(head, 5) >> 3;
}

}  // namespace ac3

namespace dts {

bool LooksLikeSync(ByteView head) {
  return head.size() >= 4 && GetBytes(head, 0, 4) == CoreSync;
}

std::int32_t SampleRate(ByteView head) {
  return ((At(head, 8) >> 2) & 0xF) == 13 ? 48 : 0;
}

AudioChannels Channels(ByteView head) {
  const unsigned mode = ((At(head, 7) & 0xFU) << 2) | (At(head, 8) >> 6U);
  AudioChannels channels{};
  switch (mode) {
    case 0:
      channels = Present({Centre});
      break;
    case 1:
    case 2:
    case 3:
    case 4:
      channels = Present({Left, Right});
      break;
    case 5:
      channels = Present({Left, Right, Centre});
      break;
    case 6:
      channels = Present({Left, Right, SingleRear});
      break;
    case 7:
      channels = Present({Left, Right, Centre, SingleRear});
      break;
    case 8:
      channels = Present({Left, Right, LeftSurround, RightSurround});
      break;
    default:
      channels = Present({Left, Right, Centre, LeftSurround, RightSurround});
      break;
  }
  const unsigned lowFrequency = (At(head, 10) >> 1) & 3U;
  if (lowFrequency == 1 || lowFrequency == 2) {
    AddLowFrequency(channels);
  }
  return channels;
}

std::int32_t FrameBytes(ByteView head) {
  // FSIZE: 14 bits from the seventh bit of byte 5, the frame's bytes less one
  return (((At(head, 5) & 3) << 12) | (At(head, 6) << 4) | (At(head, 7) >> 4)) + 1;
}

double Kbps(ByteView head) {
  // ETSI TS 102 114 table 5-7; the codes behind are open, variable and lossless
  constexpr std::array<double, 29> Rates{32,   56,   64,     96,   112,  128,  192,  224,  256,  320,
                                         384,  448,  512,    576,  640,  768,  960,  1024, 1152, 1280,
                                         1344, 1408, 1411.2, 1472, 1536, 1920, 2048, 3072, 3840};
  const unsigned code = ((At(head, 8) & 3U) << 3) | (At(head, 9) >> 5U);
  return code < Rates.size() ? Rates[code] : 0;
}

}  // namespace dts

std::int32_t GetAc3FrameSize(const std::string& fileName, UserInterface& ui) {
  if (!Lower(fileName).ends_with("ac3")) {
    return 0;
  }
  const auto head = ReadAudioHead(fileName, ui);
  return head ? ac3::FrameBytes(*head) : 0;
}

std::int32_t GetAudioSampleRate(const std::string& fileName, bool isDts, UserInterface& ui) {
  const auto head = ReadAudioHead(fileName, ui);
  if (!head) {
    return 0;
  }
  return isDts ? dts::SampleRate(*head) : ac3::SampleRate(*head);
}

AudioChannels GetAc3Channels(const std::string& fileName, UserInterface& ui) {
  const auto head = ReadAudioHead(fileName, ui);
  return head ? ac3::Channels(*head) : AudioChannels{};
}

AudioChannels GetDtsChannels(const std::string& fileName, UserInterface& ui) {
  const auto head = ReadAudioHead(fileName, ui);
  return head ? dts::Channels(*head) : AudioChannels{};
}

std::int32_t GetAc3ServiceMode(const std::string& fileName, UserInterface& ui) {
  const auto head = ReadAudioHead(fileName, ui);
  return head ? ac3::ServiceMode(*head) : 0;
}

bool CheckPcmRate(std::int32_t kHz, std::int32_t channels, std::int32_t bits, std::int32_t product) {
  struct Row {
    std::int32_t KHz, Bits, MostChannels;
  };
  constexpr std::array<Row, 6> Allowed{
      {{48, 16, 8}, {48, 20, 6}, {48, 24, 5}, {96, 16, 4}, {96, 20, 3}, {96, 24, 2}}};
  for (const Row& row : Allowed) {
    if (row.KHz == kHz && row.Bits == bits) {
      return channels >= 1 && channels <= row.MostChannels && product == kHz * channels * bits;
    }
  }
  return false;
}

AudioChannels PcmChannels(std::int32_t count) {
  AudioChannels channels{};
  switch (count) {
    case 0:
      break;
    case 1:
      channels = Present({Centre});
      break;
    case 2:
      channels = Present({Left, Right});
      break;
    case 3:
      channels = Present({Left, Right, Centre});
      break;
    default:
      channels = Present({Left, Right, Centre, LeftSurround, RightSurround});
      break;
  }
  channels[ChannelTotal] = static_cast<std::uint8_t>(std::min(count, 255));
  return channels;
}

std::string FormatDuration(std::int64_t frames, int framesPerSecond, std::optional<std::string_view> standard,
                           bool projectIsNtsc) {
  if (framesPerSecond <= 0) {
    const int projectRate = projectIsNtsc ? 30 : 25;
    framesPerSecond = standard ? FramesPerSecond(*standard) : projectRate;
  }
  return FramesToTimecode(frames, framesPerSecond);
}

Ac3Frames ScanAc3Frames(ByteView buffer, std::int32_t expectedKbps, std::int32_t& expectedServiceMode) {
  Ac3Frames found;
  // The byte at offset 5 must be in the buffer.
  for (std::size_t at = 0; at + 5 < buffer.size(); ++at) {
    const void* hit = std::memchr(buffer.data() + at, 0x0B, buffer.size() - 5 - at);
    if (hit == nullptr) {
      break;
    }
    at = static_cast<std::size_t>(static_cast<const std::uint8_t*>(hit) - buffer.data());
    const ByteView frame = buffer.subspan(at);
    const unsigned sizeCode = frame[4] & 0x3FU;
    const bool rateFits = expectedKbps == 0 ? sizeCode < 38 : ac3::Kbps(sizeCode) == expectedKbps;
    if (frame[1] != 0x77 || ac3::StreamVersion(frame) > 8 || frame[4] >> 6 != 0 || !rateFits) {
      continue;
    }
    const std::int32_t mode = ac3::ServiceMode(frame);
    if (expectedKbps < 1) {
      expectedServiceMode = mode;
    } else if (mode != expectedServiceMode) {
      continue;
    }
    ++found.Count;
    found.First = found.First == 0 ? at + 1 : found.First;
  }
  return found;
}

}  // namespace quorvelant
