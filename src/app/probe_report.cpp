#include "app/probe_report.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <string_view>

#include "analysis/container_sniff.h"
#include "analysis/picture_index.h"
#include "analysis/remedies.h"
#include "app/messages.h"
#include "base/file_text.h"
#include "base/timecode.h"

namespace quorvelant {

namespace {

constexpr std::string_view OtherName = "its name does not end in \"{}\": sources are taken by their names";
constexpr std::string_view BadBitmap = "its size is none of 720x576, 360x288, 720x480 and 360x240";
constexpr std::string_view NotElementary = "it is {}: take the elementary stream out of it first";
constexpr std::string_view NotOfADisc = "it is {}, which no disc carries";
constexpr std::string_view NothingKnown = "it is neither MPEG video, AC3, DTS, WAV nor a bitmap";
constexpr std::string_view Empty = "it is empty";

// "  label       value"
std::string Row(std::string_view label, std::string_view value) {
  return fmt::format("  {:<11} {}\n", label, value);
}

std::string Plural(std::int64_t count, std::string_view one) {
  return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

std::string ClockText(double seconds) {
  if (seconds <= 0) {
    return "unknown";
  }
  const auto milliseconds = std::llround(seconds * 1000);
  return fmt::format("{:02}:{:02}:{:02}.{:03}", milliseconds / 3600000, milliseconds / 60000 % 60,
                     milliseconds / 1000 % 60, milliseconds % 1000);
}

std::string_view AgeText(IndexAge age) {
  switch (age) {
    case IndexAge::None:
      return "none";
    case IndexAge::Current:
      return "up to date";
    case IndexAge::Older:
      return "older than the file; rebuild it with \"index --force\"";
  }
  return "";
}

void ProbeAsAudio(ProbeReport& report, std::string_view format, std::string_view extension,
                  const Rules& rules, UserInterface& ui) {
  report.Audio = QuickScanAudio(report.File, format, rules, ui);
  if (report.Audio) {
    report.Fit = JudgeAudio(*report.Audio);
    if (!report.Fit.Fits()) {
      const bool surround = report.Audio->ChannelCount() > 2;
      report.Remedies = {EncodeAudioLine(report.File, {.Kbps = surround ? MostAc3Kbps : 192})};
    }
    if (GetAudioType(report.File) != format) {
      report.Fit.Notes.push_back(fmt::format(OtherName, extension));
    }
  }
}

void ProbeAsBitmap(ProbeReport& report) {
  report.Bitmap = ReadBitmapSize(report.File);
  if (report.Bitmap && !IsBitmapSize(report.Bitmap->Width, report.Bitmap->Height)) {
    report.Fit.Reasons.emplace_back(BadBitmap);
  }
}

// False when it could not be read or was stopped.
bool ProbeAsVideo(ProbeReport& report, UserInterface& ui) {
  auto probe = ProbeVideo(report.File, ui);
  if (!probe) {
    return false;
  }
  if (probe->PictureHeaders == 0) {
    report.Fit.Reasons.emplace_back(NothingKnown);
    return true;
  }
  report.Fit = JudgeVideo(*probe);
  if (!report.Fit.Fits()) {
    report.Remedies = {probe->StartsWithSequence
                           ? EncodeVideoLine(report.File, {.Ntsc = probe->Info.Standard == "NTSC",
                                                           .Aspect = probe->Info.Aspect})
                           : CopyVideoLine(report.File)};
  }
  report.Video = std::move(probe);
  if (std::filesystem::exists(IndexName(report.File))) {
    report.Index = IndexIsOlder(report.File) ? IndexAge::Older : IndexAge::Current;
  }
  return true;
}

// Lines for a shell that take out of a foreign file what a disc is made of.
std::vector<std::string> ForeignRemedies(SourceKind kind, const std::string& file) {
  std::vector<std::string> lines;
  if (IsContainer(kind) || kind == SourceKind::AdvancedVideo) {
    const auto head = ReadHead(file, SniffBytes).value_or("");
    const ByteView bytes(reinterpret_cast<const std::uint8_t*>(head.data()), head.size());
    lines.push_back(ShowsDiscVideo(kind, bytes) ? CopyVideoLine(file) : EncodeVideoLine(file, {}));
  }
  if (kind != SourceKind::AdvancedVideo) {
    lines.push_back(EncodeAudioLine(file));
  }
  return lines;
}

std::string GroupsText(const VideoProbe& video) {
  if (video.Groups == 0) {
    return "no group headers";
  }
  std::string lengths;
  int listed = 0;
  for (const auto& [length, count] : video.GroupLengths) {
    if (++listed > 8) {
      lengths += ", ...";
      break;
    }
    lengths += fmt::format("{}{} of {}", lengths.empty() ? "" : ", ", count, Plural(length, "picture"));
  }
  std::string text = fmt::format("{}: {}; {} closed", video.Groups, lengths, video.ClosedGroups);
  if (video.GroupsLedByB > 0) {
    text += fmt::format(", {} start with B pictures", video.GroupsLedByB);
  }
  return text;
}

std::string VideoText(const VideoProbe& video) {
  const VideoInfo& info = video.Info;
  const int rate = FramesPerSecond(info.Standard);
  const std::int64_t frames = video.DisplayedFields / 2;
  const std::string flags =
      video.RepeatFlags == 0 ? "no repeat-field flags" : Plural(video.RepeatFlags, "repeat-field flag");
  std::string text;
  text += Row("length", fmt::format("{} ({}, {:.3f} seconds)", FramesToTimecode(frames, rate),
                                    Plural(frames, "frame"), video.Seconds()));
  text += Row("pictures", fmt::format("{}: {} I, {} P, {} B; {}{}", video.Frames(), video.IPictures,
                                      video.PPictures, video.BPictures, flags,
                                      video.FieldPictures > 0 ? "; coded as field pictures" : ""));
  text += Row("groups", GroupsText(video));
  text += Row("bit rate", fmt::format("{:.3f} Mbit/s mean, {:.3f} peak over one second{}",
                                      video.MeanBitRate / 1e6, video.PeakBitRate / 1e6,
                                      video.DeclaredBitRate > 0
                                          ? fmt::format(", {:.3f} by its header",
                                                        static_cast<double>(video.DeclaredBitRate) / 1e6)
                                          : ""));
  return text;
}

std::string Headline(const ProbeReport& report) {
  if (report.Video) {
    const VideoInfo& info = report.Video->Info;
    if (info.Coding == "NO") {
      return "pictures of MPEG video, and no sequence header before them";
    }
    const bool hasAspect = info.AspectCode == 2 || info.AspectCode == 3;
    const std::string rate = info.Standard.empty() ? std::string(FrameRateText(info.FrameRateCode))
                                                   : fmt::format("{:.3f}", report.Video->ExactFrameRate());
    return fmt::format("{}{}, {}, {}x{}{}{}, {} frames a second", info.Coding,
                       report.Video->Frames() == 1 ? " still" : " video",
                       info.Standard.empty() ? "no video standard" : info.Standard, info.Width, info.Height,
                       hasAspect ? ", " + info.Aspect : "", info.PanScan ? " with pan-scan" : "", rate);
  }
  if (report.Audio) {
    const AudioAttributes& audio = *report.Audio;
    if (!audio.Problem.empty()) {
      return "no audio that a disc carries";
    }
    const std::string bits = audio.Quantisation > 0 ? fmt::format(", {} bits", audio.Quantisation) : "";
    return fmt::format("{}, {} kHz{}, {}, {} kbit/s", audio.Format, audio.SampleRateHz / 1000.0, bits,
                       Plural(audio.ChannelCount(), "channel"), audio.BitRate);
  }
  if (report.Bitmap) {
    return fmt::format("bitmap, {}x{}", report.Bitmap->Width, report.Bitmap->Height);
  }
  return report.OtherKind.empty() ? "unknown" : report.OtherKind;
}

nlohmann::ordered_json VideoJson(const VideoProbe& video, IndexAge age) {
  const VideoInfo& info = video.Info;
  nlohmann::ordered_json lengths = nlohmann::ordered_json::object();
  for (const auto& [length, count] : video.GroupLengths) {
    lengths[std::to_string(length)] = count;
  }
  constexpr std::array<std::string_view, 3> Ages{"none", "current", "older"};
  return {{"coding", info.Coding},
          {"standard", info.Standard},
          {"width", info.Width},
          {"height", info.Height},
          {"aspect", info.Aspect},
          {"panScan", info.PanScan},
          {"frameRate", video.ExactFrameRate()},
          {"still", video.Frames() == 1},
          {"frames", video.Frames()},
          {"displayedFrames", video.DisplayedFields / 2},
          {"seconds", video.Seconds()},
          {"pictures", {{"I", video.IPictures}, {"P", video.PPictures}, {"B", video.BPictures}}},
          {"fieldPictures", video.FieldPictures},
          {"progressiveFrames", video.ProgressiveFrames},
          {"repeatFlags", video.RepeatFlags},
          {"groups",
           {{"count", video.Groups},
            {"closed", video.ClosedGroups},
            {"ledByB", video.GroupsLedByB},
            {"lengths", lengths},
            {"longestFields", video.LongestGroupFields}}},
          {"bitRate",
           {{"mean", std::llround(video.MeanBitRate)},
            {"peak", std::llround(video.PeakBitRate)},
            {"declared", video.DeclaredBitRate}}},
          {"index", Ages[static_cast<std::size_t>(age)]}};
}

nlohmann::ordered_json AudioJson(const AudioAttributes& audio) {
  return {{"format", audio.Format},           {"sampleRate", audio.SampleRateHz},
          {"channels", audio.ChannelCount()}, {"kbps", audio.BitRate},
          {"bits", audio.Quantisation},       {"frameBytes", audio.FrameBytes},
          {"serviceMode", audio.ServiceMode}, {"dataOffset", audio.DataOffset},
          {"dataBytes", audio.DataBytes},     {"seconds", audio.Seconds()}};
}

}  // namespace

std::optional<ProbeReport> ProbeFile(const std::string& file, const Rules& rules, UserInterface& ui) {
  if (const std::string_view fault = WhyNotPlainFile(file); !fault.empty()) {
    ui.Tell(MessageOf(message::ProbeRefused, file, fault));
    return std::nullopt;
  }
  ProbeReport report;
  report.File = file;
  const SourceKind kind = SniffFile(file);
  report.OtherKind = ForeignKindText(kind);
  switch (kind) {
    case SourceKind::Ac3:
      ProbeAsAudio(report, "AC3", ".ac3", rules, ui);
      break;
    case SourceKind::Dts:
      ProbeAsAudio(report, "DTS", ".dts", rules, ui);
      break;
    case SourceKind::Wave:
      ProbeAsAudio(report, "PCM", ".wav", rules, ui);
      break;
    case SourceKind::Bitmap:
      ProbeAsBitmap(report);
      break;
    case SourceKind::Empty:
      report.Fit.Reasons.emplace_back(Empty);
      break;
    case SourceKind::Video:
      if (!ProbeAsVideo(report, ui)) {
        return std::nullopt;
      }
      break;
    case SourceKind::Unknown:
      if (const std::string format = GetAudioType(file); !format.empty()) {
        ProbeAsAudio(report, format, "", rules, ui);
      } else if (!ProbeAsVideo(report, ui)) {
        return std::nullopt;
      }
      break;
    default:
      break;  // of another kind
  }
  if (!report.OtherKind.empty()) {
    report.Fit.Reasons.push_back(
        fmt::format(fmt::runtime(IsContainer(kind) ? NotElementary : NotOfADisc), report.OtherKind));
    report.Remedies = ForeignRemedies(kind, file);
  } else if (!report.Known() && report.Fit.Fits()) {
    report.Fit.Reasons.emplace_back(NothingKnown);
  }
  return report;
}

std::string ProbeText(const ProbeReport& report) {
  std::string text = fmt::format("{}: {}\n", report.File, Headline(report));
  if (report.Video) {
    text += VideoText(*report.Video);
    text += Row("index", AgeText(report.Index));
  } else if (report.Audio && report.Audio->Problem.empty()) {
    text += Row("duration", ClockText(report.Audio->Seconds()));
  }
  for (const std::string& note : report.Fit.Notes) {
    text += Row("note", note);
  }
  if (report.Fit.Fits()) {
    text += Row("disc", "yes");
  }
  for (const std::string& reason : report.Fit.Reasons) {
    text += Row("disc", "no: " + reason);
  }
  for (const std::string& line : report.Remedies) {
    text += Row("remedy", line);
  }
  return text;
}

nlohmann::ordered_json ProbeJson(const ProbeReport& report) {
  nlohmann::ordered_json json{{"file", report.File}};
  if (report.Video) {
    json["video"] = VideoJson(*report.Video, report.Index);
  } else if (report.Audio) {
    json["audio"] = AudioJson(*report.Audio);
  } else if (report.Bitmap) {
    json["bitmap"] = {{"width", report.Bitmap->Width}, {"height", report.Bitmap->Height}};
  }
  json["disc"] = {{"fits", report.Fit.Fits()}, {"reasons", report.Fit.Reasons}, {"notes", report.Fit.Notes}};
  if (!report.Remedies.empty()) {
    json["disc"]["remedies"] = report.Remedies;
  }
  return json;
}

}  // namespace quorvelant
