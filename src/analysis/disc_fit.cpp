#include "analysis/disc_fit.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "analysis/messages.h"
#include "disc/start_code_search.h"
#include "disc/start_codes.h"
#include "disc/video_standard.h"

namespace quorvelant {

namespace {

constexpr std::string_view Chroma = "its colours are not sampled 4:2:0";
constexpr std::string_view Peak = "its bit rate reaches {:.1f} Mbit/s over one second; a disc carries 9.8";
constexpr std::string_view LongGroup = "a group of pictures lasts {} fields; players expect {} at most";
constexpr std::string_view NoSequenceFirst = "it does not start with a sequence header: cut it at one";
constexpr std::string_view ProgressiveSequence =
    "it is marked as a progressive sequence, which a disc's video is not; most players don't mind";
constexpr std::string_view FieldPairs =
    "frames are coded as pairs of field pictures, each counted as a frame";

constexpr std::string_view DtsExtension = "it has an HD extension, which players of discs pass over";
constexpr std::string_view ChunksAhead = "its samples start at byte {}, not at 44";

// ISO/IEC 13818-2 table 8-2: main and simple profile at main level
bool IsMainLevel(int profile) {
  return profile == 0x48 || profile == 0x58;
}
constexpr std::string_view ProfileText = "its profile and level ({:#04x}) are not main profile at main level";

DiscFit FitOf(const std::vector<Message>& faults) {
  DiscFit fit;
  for (const Message& fault : faults) {
    fit.Reasons.push_back(fault.Text);
  }
  return fit;
}

}  // namespace

bool IsDiscSize(std::string_view standard, int width, int height) {
  const int full = FullHeight(standard == "NTSC");
  return (height == full && (width == FullWidth || width == CroppedWidth || width == HalfWidth)) ||
         (height == full / 2 && width == HalfWidth);
}

std::vector<Message> FaultsOf(const VideoInfo& info) {
  if (info.Coding == "NO" || info.PicturesSeen == 0) {
    return {MessageOf(message::NoPictures, {})};
  }
  std::vector<Message> faults;
  const bool mpeg1 = info.Coding == "MPEG1";
  if (mpeg1) {
    faults.push_back(MessageOf(message::Mpeg1Video, {}));
  }
  if (info.FrameRateCode == 1) {
    faults.push_back(MessageOf(message::FilmRate, {}));
  } else if (info.FrameRateCode != 3 && info.FrameRateCode != 4) {
    faults.push_back(MessageOf(message::FrameRate, {}, info.FrameRateCode));
  }
  if (!info.Standard.empty() && !IsDiscSize(info.Standard, info.Width, info.Height)) {
    faults.push_back(MessageOf(message::FrameSize, {}, info.Standard, info.Width, info.Height));
  }
  // The codes of MPEG1 are shapes of pixels.
  if (!mpeg1 && info.AspectCode != 2 && info.AspectCode != 3) {
    faults.push_back(MessageOf(message::VideoAspect, {}, info.AspectCode));
  }
  return faults;
}

std::vector<Message> FaultsOf(const AudioAttributes& audio) {
  if (!audio.Problem.empty()) {
    return {MessageOf(message::AudioUnfit, {}, audio.Problem)};
  }
  std::vector<Message> faults;
  if (audio.Format == "DTS") {
    faults.push_back(MessageOf(message::DtsAudio, {}));
  }
  if (audio.SampleRate != 48 && audio.SampleRate != 96) {
    faults.push_back(MessageOf(message::SampleRate, {}));
  } else if (audio.Format == "PCM" &&
             !CheckPcmRate(audio.SampleRate, audio.ChannelCount(), audio.Quantisation, audio.BitRate)) {
    faults.push_back(
        MessageOf(message::PcmFormat, {}, audio.SampleRate, audio.Quantisation, audio.ChannelCount()));
  } else if (audio.Format == "AC3" && audio.BitRate > MostAc3Kbps) {
    faults.push_back(MessageOf(message::Ac3BitRate, {}, audio.BitRate));
  }
  return faults;
}

DiscFit JudgeVideo(const VideoProbe& probe) {
  DiscFit fit = FitOf(FaultsOf(probe.Info));
  if (probe.Info.PicturesSeen == 0) {
    return fit;
  }
  if (probe.Info.Coding == "MPEG2" && probe.ChromaFormat != 1) {
    fit.Reasons.emplace_back(Chroma);
  } else if (probe.Info.Coding == "MPEG2" && !IsMainLevel(probe.Profile)) {
    fit.Notes.push_back(fmt::format(ProfileText, probe.Profile));
  }
  const double millionBits = probe.PeakBitRate / 1e6;
  if (probe.PeakBitRate > MostVideoBitRate && probe.Frames() > 1) {
    fit.Reasons.push_back(fmt::format(Peak, millionBits));
  }
  if (!probe.StartsWithSequence) {
    fit.Reasons.emplace_back(NoSequenceFirst);
  }
  const std::int64_t mostFields = TimingOf(probe.Info.Standard == "NTSC").MostGopFields;
  if (probe.LongestGroupFields > mostFields) {
    fit.Reasons.push_back(fmt::format(LongGroup, probe.LongestGroupFields, mostFields));
  }
  if (probe.ProgressiveSequence) {
    fit.Notes.emplace_back(ProgressiveSequence);
  }
  if (probe.FieldPictures > 0) {
    fit.Notes.emplace_back(FieldPairs);
  }
  return fit;
}

DiscFit JudgeAudio(const AudioAttributes& audio) {
  DiscFit fit = FitOf(FaultsOf(audio));
  if (!audio.Problem.empty()) {
    return fit;
  }
  if (audio.Format == "DTS" && audio.HasExtension) {
    fit.Notes.emplace_back(DtsExtension);
  }
  if (audio.Format == "PCM" && audio.DataOffset != 44) {
    fit.Notes.push_back(fmt::format(ChunksAhead, audio.DataOffset));
  }
  return fit;
}

SourceKind SniffSource(ByteView head) {
  const auto starts = [&](std::string_view text) {
    return head.size() >= text.size() &&
           std::equal(text.begin(), text.end(), head.begin(),
                      [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
  };
  constexpr std::size_t TransportPacketBytes = 188;
  if (head.empty()) {
    return SourceKind::Empty;
  }
  if (starts("\x0B\x77")) {
    return SourceKind::Ac3;
  }
  if (starts("\x7F\xFE\x80\x01")) {
    return SourceKind::Dts;
  }
  if (starts("RIFF") || starts("RF64")) {
    return SourceKind::Wave;
  }
  if (starts("BM") || starts("\x89PNG") || starts("\xFF\xD8\xFF")) {
    return SourceKind::Bitmap;
  }
  if (head.size() > 2 * TransportPacketBytes && head[0] == 0x47 && head[TransportPacketBytes] == 0x47 &&
      head[2 * TransportPacketBytes] == 0x47) {
    return SourceKind::TransportStream;
  }
  for (std::size_t at = FindStartCode(head); at != NoStartCode && at + 3 < head.size();
       at = FindStartCode(head, at + 1)) {
    const unsigned code = head[at + 3];
    if (code >= start_code::Pack) {
      return SourceKind::ProgramStream;
    }
    if (code == start_code::Sequence || code == start_code::Group || code == start_code::Picture) {
      return SourceKind::Video;
    }
  }
  return SourceKind::Unknown;
}

SourceKind SniffFile(const std::string& file) {
  constexpr std::size_t SniffBytes = 4096;
  std::error_code missing;
  std::ifstream stream;
  if (std::filesystem::is_regular_file(file, missing)) {
    stream.open(file, std::ios::binary);
  }
  if (!stream.is_open()) {
    return SourceKind::Unknown;
  }
  std::array<char, SniffBytes> head{};
  stream.read(head.data(), head.size());
  const Bytes bytes(head.begin(), head.begin() + stream.gcount());
  return SniffSource(bytes);
}

}  // namespace quorvelant
