// What the first bytes of a sound file say: AC3, DTS (ETSI TS 102 114 5.3), and the numbers of PCM.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/audio_channels.h"
#include "base/bytes.h"
#include "base/user_interface.h"
#include "disc/audio_format.h"

namespace quorvelant {

// Bytes of a first frame that the readers below look at; fewer count as 0.
inline constexpr std::size_t AudioHeadBytes = 16;

// The first `AudioHeadBytes` bytes of a file, 0 after its end. Nothing if it cannot be opened, which was
// told.
std::optional<Bytes> ReadAudioHead(const std::string& fileName, UserInterface& ui);

// On the first bytes of a file.
namespace dts {
inline constexpr std::uint32_t CoreSync = 0x7FFE8001;
inline constexpr std::uint32_t ExtensionSync = 0x64582025;  // of the substream that HD streams add

bool LooksLikeSync(ByteView head);
std::int32_t SampleRate(ByteView head);  // kHz: 48, else 0
AudioChannels Channels(ByteView head);
std::int32_t FrameBytes(ByteView head);  // of the core
double Kbps(ByteView head);              // 0 for open, variable and lossless
}  // namespace dts

// On a file. Each answers 0 (no channels) where the file cannot be opened.
// 0 as well when the name does not end in "ac3" or the first bytes do not look like a sync word.
std::int32_t GetAc3FrameSize(const std::string& fileName, UserInterface& ui);
std::int32_t GetAudioSampleRate(const std::string& fileName, bool isDts, UserInterface& ui);
AudioChannels GetAc3Channels(const std::string& fileName, UserInterface& ui);
AudioChannels GetDtsChannels(const std::string& fileName, UserInterface& ui);
std::int32_t GetAc3ServiceMode(const std::string& fileName, UserInterface& ui);

// Whether a disc can carry this PCM; `product` is kHz times channels times bits as the caller has it, and
// a product that differs fails.
bool CheckPcmRate(std::int32_t kHz, std::int32_t channels, std::int32_t bits, std::int32_t product);
// Left and right, centre, surrounds by the number of channels.
AudioChannels PcmChannels(std::int32_t count);

// "hh:mm:ss:ff". With 0 frames a second the rate is that of `standard` ("ntsc" in any case 30, else 25);
// without a standard that of the project.
std::string FormatDuration(std::int64_t frames, int framesPerSecond, std::optional<std::string_view> standard,
                           bool projectIsNtsc = false);

}  // namespace quorvelant
