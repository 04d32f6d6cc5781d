#include "analysis/audio_headers.h"

#include <algorithm>
#include <array>

#include "analysis/ac3_header.h"
#include "analysis/messages.h"
#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"

namespace quorvelant {

namespace {

using enum Channel;

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
    ui.Tell(MessageOf(message::SourceReadFailed, fileName, error.OneLine()));
    return std::nullopt;
  }
}

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
      channels = ChannelsOf({Centre});
      break;
    case 1:
    case 2:
    case 3:
    case 4:
      channels = ChannelsOf({Left, Right});
      break;
    case 5:
      channels = ChannelsOf({Left, Right, Centre});
      break;
    case 6:
      channels = ChannelsOf({Left, Right, SingleRear});
      break;
    case 7:
      channels = ChannelsOf({Left, Right, Centre, SingleRear});
      break;
    case 8:
      channels = ChannelsOf({Left, Right, LeftSurround, RightSurround});
      break;
    default:
      channels = ChannelsOf({Left, Right, Centre, LeftSurround, RightSurround});
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
  // ETSI TS 102 114 table 5-7; the codes after them are open, variable and lossless
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
  const Ac3Header header = ReadAc3Header(head.value_or(Bytes{}));
  return header.LooksLikeSync ? header.FrameBytes() : 0;
}

std::int32_t GetAudioSampleRate(const std::string& fileName, bool isDts, UserInterface& ui) {
  const auto head = ReadAudioHead(fileName, ui);
  if (!head) {
    return 0;
  }
  return isDts ? dts::SampleRate(*head) : ReadAc3Header(*head).SampleRate();
}

AudioChannels GetAc3Channels(const std::string& fileName, UserInterface& ui) {
  const auto head = ReadAudioHead(fileName, ui);
  return head ? ReadAc3Channels(*head) : AudioChannels{};
}

AudioChannels GetDtsChannels(const std::string& fileName, UserInterface& ui) {
  const auto head = ReadAudioHead(fileName, ui);
  return head ? dts::Channels(*head) : AudioChannels{};
}

std::int32_t GetAc3ServiceMode(const std::string& fileName, UserInterface& ui) {
  const auto head = ReadAudioHead(fileName, ui);
  return ReadAc3Header(head.value_or(Bytes{})).ServiceMode;
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
      channels = ChannelsOf({Centre});
      break;
    case 2:
      channels = ChannelsOf({Left, Right});
      break;
    case 3:
      channels = ChannelsOf({Left, Right, Centre});
      break;
    default:
      channels = ChannelsOf({Left, Right, Centre, LeftSurround, RightSurround});
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

}  // namespace quorvelant
