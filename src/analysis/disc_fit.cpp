#include "analysis/disc_fit.h"

#include <fmt/format.h>

#include <array>

#include "analysis/messages.h"
#include "base/counted.h"
#include "disc/video_standard.h"

namespace quorvelant {

namespace {

constexpr std::string_view Peak =
    "its pictures come {:.0f} KB ahead of the 9.8 Mbit/s that a disc carries; a decoder's buffer holds "
    "{:.0f}";
constexpr std::string_view LongGroup = "a group of pictures lasts {} fields; players expect {} at most";
constexpr std::string_view NoSequenceFirst = "it does not start with a sequence header: cut it at one";
constexpr std::string_view NoGroupHeaders =
    "it has no group headers (GOP), so that some players search badly in it";
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

// ISO/IEC 13818-2 table 6-3
std::string_view AspectText(int code) {
  return code == 1 ? "1:1 by the pixel" : code == 4 ? "2.21:1" : "of no defined kind";
}

}  // namespace

std::string_view FrameRateText(int code) {
  constexpr std::array<std::string_view, 9> Rates{
      "an undefined number of", "23.976", "24", "25", "29.97", "30", "50", "59.94", "60"};
  return Rates.at(code > 0 && code < 9 ? static_cast<std::size_t>(code) : 0);
}

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
    faults.push_back(MessageOf(message::FrameRate, {}, FrameRateText(info.FrameRateCode)));
  }
  if (!info.Standard.empty() && !IsDiscSize(info.Standard, info.Width, info.Height)) {
    faults.push_back(MessageOf(message::FrameSize, {}, info.Standard, info.Width, info.Height));
  }
  // The codes of MPEG1 are shapes of pixels.
  if (!mpeg1 && info.AspectCode != 2 && info.AspectCode != 3) {
    faults.push_back(MessageOf(message::VideoAspect, {}, AspectText(info.AspectCode)));
  }
  if (!mpeg1 && info.ChromaFormat != 1) {
    faults.push_back(MessageOf(message::ColourSampling, {}));
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
    faults.push_back(MessageOf(message::PcmFormat, {}, audio.SampleRate, audio.Quantisation,
                               Counted(audio.ChannelCount(), "channel")));
  } else if (audio.Format == "AC3" && audio.BitRate > MostAc3Kbps) {
    faults.push_back(MessageOf(message::Ac3BitRate, {}, audio.BitRate));
  }
  return faults;
}

std::optional<Message> WhyRateDoubtful(const VideoInfo& info) {
  constexpr int MostKbps = 9800;
  return info.Coding == "MPEG2" && info.Kbps > MostKbps
             ? std::optional(MessageOf(message::DeclaredRate, {}, info.Kbps / 1e3))
             : std::nullopt;
}

DiscFit JudgeVideo(const VideoProbe& probe) {
  // Of a stream that is cut before its first sequence header the head tells nothing else.
  const bool cut = probe.Info.Coding == "NO" && probe.Info.PicturesSeen > 0 && !probe.StartsWithSequence;
  DiscFit fit = cut ? DiscFit{} : FitOf(FaultsOf(probe.Info));
  if (probe.Info.PicturesSeen == 0) {
    return fit;
  }
  if (probe.Info.Coding == "MPEG2" && probe.Info.ChromaFormat == 1 && !IsMainLevel(probe.Profile)) {
    fit.Notes.push_back(fmt::format(ProfileText, probe.Profile));
  }
  if (probe.PeakBacklogBits > DecoderBufferBits && probe.Frames() > 1) {
    constexpr double BitsOfKilobyte = 8000;
    fit.Reasons.push_back(
        fmt::format(Peak, probe.PeakBacklogBits / BitsOfKilobyte, DecoderBufferBits / BitsOfKilobyte));
  }
  if (!probe.StartsWithSequence) {
    fit.Reasons.emplace_back(NoSequenceFirst);
  }
  const std::int64_t mostFields = TimingOf(probe.Info.Standard == "NTSC").MostGopFields;
  if (probe.LongestGroupFields > mostFields) {
    fit.Reasons.push_back(fmt::format(LongGroup, probe.LongestGroupFields, mostFields));
  }
  if (probe.Groups == 0 && probe.Frames() > 1) {
    fit.Notes.emplace_back(NoGroupHeaders);
  }
  if (const auto doubt = WhyRateDoubtful(probe.Info)) {
    fit.Notes.push_back(doubt->Text);
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

}  // namespace quorvelant
