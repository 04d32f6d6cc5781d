// What a project knows about a source from its first bytes: the facade of loading and importing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/audio_headers.h"
#include "analysis/video_info.h"
#include "base/rules.h"

namespace quorvelant {

struct VideoAttributes {
  VideoInfo Info;          // standard, aspect, coding, rate, size and flags
  std::string Resolution;  // "720x576"
  bool Still = false;      // the file holds a single picture
  bool Bitmap = false;     // a bitmap: the attributes are those of the still it becomes, in 4:3
};

// Nothing when the file is missing, cannot be read or holds neither video nor a bitmap of a size that becomes
// a still; none of that is told. `pulldownHandled` as with GetVideoInfo.
std::optional<VideoAttributes> QuickScanVideo(const std::string& file, UserInterface& ui,
                                              bool pulldownHandled = false);

struct AudioAttributes {
  std::string Format;             // "AC3", "PCM" or "DTS"
  std::int32_t FrameBytes = 0;    // AC3: kbit/s times 4; DTS: the core's frame; PCM: 1/600 second
  std::int32_t BitRate = 0;       // kbit/s; PCM: channels times bits times kHz
  std::int32_t SampleRate = 0;    // kHz; 0 for an AC3 or DTS rate that no disc carries
  std::int32_t SampleRateHz = 0;  // exact, whatever the rate
  AudioChannels Channels{};
  std::int32_t Quantisation = 0;  // bits, PCM only
  std::int32_t ServiceMode = 0;   // AC3 bit stream mode
  std::uint64_t FileBytes = 0;
  std::uint64_t DataOffset = 0;  // of the first byte of sound
  std::uint64_t DataBytes = 0;   // of sound
  bool HasExtension = false;     // DTS: an HD extension follows the core, which is what is described here
  // Why the file is not what its name says, one sentence such as "it is no WAV file"; empty when it is.
  std::string Problem = {};

  std::int32_t ChannelCount() const { return Channels[ChannelTotal]; }
  double Seconds() const;  // from the sizes; 0 when unknown, as with an HD extension
};

// `format` is "AC3", "PCM" or "DTS", or empty to go by the file's name. Nothing when the file is missing or
// cannot be read, or its name says no known kind; none of that is told.
std::optional<AudioAttributes> QuickScanAudio(const std::string& file, std::string_view format,
                                              const Rules& rules, UserInterface& ui);

}  // namespace quorvelant
