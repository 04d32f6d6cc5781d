#include "analysis/quick_scan.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

#include "analysis/ac3_header.h"
#include "analysis/wave_file.h"
#include "disc/video_standard.h"
#include "picture/bitmap_size.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoAc3 = "it is no AC3 stream";
constexpr std::string_view EnhancedAc3 = "it is Enhanced AC3, which players don't read";
constexpr std::string_view NoDts = "it is no DTS stream";

bool IsPlainFile(const std::string& file) {
  std::error_code missing;
  return std::filesystem::is_regular_file(file, missing);
}

void ScanAc3(ByteView head, AudioAttributes& audio) {
  const Ac3Header header = ReadAc3Header(head);
  if (!header.LooksLikeSync) {
    audio.Problem = NoAc3;
    return;
  }
  if (header.StreamVersion > LastAc3Version) {
    audio.Problem = EnhancedAc3;
    return;
  }
  audio.FrameBytes = header.FrameBytes();
  audio.BitRate = header.Kbps;
  audio.SampleRate = header.StreamVersion > MostDiscAc3Version ? 0 : header.SampleRate();
  audio.SampleRateHz = header.SampleRateHz;
  audio.Channels = ReadAc3Channels(head);
  audio.ServiceMode = header.ServiceMode;
  if (audio.FrameBytes == 0) {
    audio.Problem = NoAc3;
  }
}

void ScanDts(ByteView head, AudioAttributes& audio) {
  if (!dts::LooksLikeSync(head)) {
    audio.Problem = NoDts;
    return;
  }
  audio.FrameBytes = dts::FrameBytes(head);
  audio.BitRate = static_cast<std::int32_t>(std::lround(dts::Kbps(head)));
  audio.SampleRate = dts::SampleRate(head);
  audio.SampleRateHz = audio.SampleRate * 1000;
  audio.Channels = dts::Channels(head);
}

// Whether an extension substream follows the core frame, which may be padded to four bytes.
bool DtsExtensionFollows(const std::string& file, std::int32_t coreBytes, UserInterface& ui) {
  Random files(ui);
  files.DimFiles(0);
  try {
    if (!files.OpenSource(file, 0)) {
      return false;
    }
    files.SeekAbsolute((static_cast<std::uint64_t>(coreBytes) + 3) / 4 * 4, 0);
    return GetBytes(files.ReadBytes(4, 0), 0, 4) == dts::ExtensionSync;
  } catch (const FileError&) {
    return false;  // the head was read: the stream is described without the extension
  }
}

void ScanWave(const WaveFile& wave, AudioAttributes& audio) {
  audio.Problem = FaultText(wave.Fault);
  audio.SampleRate = wave.Format.KHz();
  audio.SampleRateHz =
      static_cast<std::int32_t>(std::min<std::uint32_t>(wave.Format.SamplesPerSecond, 1U << 30));
  audio.Quantisation = wave.Format.BitsPerSample;
  audio.Channels = PcmChannels(wave.Format.Channels);
  // A head may claim anything: each factor has up to 32 bits.
  const std::int64_t product = std::int64_t{audio.SampleRate} * audio.Quantisation * audio.ChannelCount();
  audio.BitRate =
      static_cast<std::int32_t>(std::min<std::int64_t>(product, std::numeric_limits<std::int32_t>::max()));
  audio.FrameBytes = static_cast<std::int32_t>(std::lround(audio.BitRate / 4.8));
  audio.DataOffset = wave.DataOffset;
  audio.DataBytes = wave.DataBytes;
}

// The attributes of the still that a bitmap becomes; nothing for a size that does not.
std::optional<VideoAttributes> StillOf(const BitmapSize& bitmap) {
  if (!IsBitmapSize(bitmap.Width, bitmap.Height)) {
    return std::nullopt;
  }
  const bool ntsc = bitmap.Height == FullHeight(true) || bitmap.Height == FullHeight(true) / 2;
  VideoInfo info;
  info.FrameRate = ntsc ? 30 : 25;
  info.Aspect = "4:3";
  info.Width = FullWidth;
  info.Height = FullHeight(ntsc);
  info.Standard = ntsc ? "NTSC" : "PAL";
  info.PicturesSeen = 1;
  info.Coding = "MPEG2";
  info.AspectCode = 2;
  info.FrameRateCode = ntsc ? 4 : 3;
  return VideoAttributes{.Info = info,
                         .Resolution = fmt::format("{}x{}", info.Width, info.Height),
                         .Still = true,
                         .Bitmap = true};
}

}  // namespace

std::optional<VideoAttributes> QuickScanVideo(const std::string& file, UserInterface& ui,
                                              bool pulldownHandled) {
  if (!IsPlainFile(file)) {
    return std::nullopt;
  }
  if (const auto bitmap = ReadBitmapSize(file)) {
    return StillOf(*bitmap);
  }
  const auto info = GetVideoInfo(file, pulldownHandled, ui);
  if (!info || info->Coding == "NO") {
    return std::nullopt;
  }
  return VideoAttributes{.Info = *info,
                         .Resolution = fmt::format("{}x{}", info->Width, info->Height),
                         .Still = info->PicturesSeen == 1};
}

double AudioAttributes::Seconds() const {
  double bytesPerSecond = BitRate * 125.0;  // AC3
  if (Format == "PCM") {
    bytesPerSecond = SampleRateHz / 8.0 * ChannelCount() * Quantisation;
  } else if (Format == "DTS") {
    constexpr double SamplesAFrame = 512;
    bytesPerSecond = HasExtension ? 0 : FrameBytes * SampleRateHz / SamplesAFrame;
  }
  return bytesPerSecond > 0 ? static_cast<double>(DataBytes) / bytesPerSecond : 0;
}

std::optional<AudioAttributes> QuickScanAudio(const std::string& file, std::string_view format,
                                              const Rules& rules, UserInterface& ui) {
  AudioAttributes audio;
  audio.Format = format.empty() ? GetAudioType(file) : std::string(format);
  if (audio.Format.empty() || !IsPlainFile(file)) {
    return std::nullopt;
  }
  std::error_code missing;
  audio.FileBytes = std::filesystem::file_size(file, missing);
  audio.DataBytes = audio.FileBytes;
  if (audio.Format == "PCM") {
    const WaveFile wave = ReadWaveFile(file, rules, ui);
    if (wave.Fault == WaveFault::Unreadable) {
      return std::nullopt;
    }
    ScanWave(wave, audio);
    return audio;
  }
  const auto head = ReadAudioHead(file, ui);
  if (!head) {
    return std::nullopt;
  }
  if (audio.Format == "DTS") {
    ScanDts(*head, audio);
    audio.HasExtension = audio.Problem.empty() && DtsExtensionFollows(file, audio.FrameBytes, ui);
  } else {
    ScanAc3(*head, audio);
  }
  return audio;
}

}  // namespace quorvelant
