#include "check/source_judge.h"

#include <fmt/format.h>

#include <array>

#include "analysis/disc_fit.h"
#include "base/file_text.h"
#include "base/random.h"
#include "base/text.h"
#include "check/messages.h"
#include "picture/bitmap_size.h"

namespace quorvelant {

namespace {

// A reason against a file as a finding on a play.
Message Refusal(Message reason, const SourcePlay& play, Severity level) {
  reason.Level = level;
  reason.Text = fmt::format("'{}': {}", play.File, reason.Text);
  reason.Place = play.Place;
  return reason;
}

Message WhyNoVideo(const std::string& path, const SourcePlay& play) {
  if (const auto bitmap = ReadBitmapSize(path)) {
    return MessageOf(message::BitmapSizeUnfit, play.Place, play.File, bitmap->Width, bitmap->Height);
  }
  return MessageOf(message::VideoMissing, play.Place, play.File);
}

Message WhyNoAudio(std::string_view format, const SourcePlay& play) {
  const bool known = !format.empty() || !GetAudioType(play.File).empty();
  return MessageOf(known ? message::AudioUnreadable : message::AudioNameUnknown, play.Place, play.File);
}

}  // namespace

std::string SourceJudge::PathOf(const std::string& file) const {
  return SystemPath(file, folder_);
}

std::string_view SourceJudge::WhyMissing(const std::string& path) {
  const auto [known, isNew] = missing_.try_emplace(path);
  if (isNew) {
    known->second = WhyNotPlainFile(path);
  }
  return known->second;
}

std::optional<Message> SourceJudge::Missing(const SourcePlay& play) {
  const std::string_view why = WhyMissing(PathOf(play.File));
  return why.empty() ? std::nullopt
                     : std::optional(MessageOf(message::SourceMissing, play.Place, play.File, why));
}

Judgement<VideoAttributes> SourceJudge::Video(const SourcePlay& play) {
  if (auto missing = Missing(play)) {
    return {.Seen = std::nullopt, .Findings = {std::move(*missing)}};
  }
  const std::string path = PathOf(play.File);
  const auto [known, isNew] = videos_.try_emplace(path);
  if (isNew) {
    known->second = QuickScanVideo(path, *ui_);
  }
  Judgement<VideoAttributes> judged{.Seen = known->second, .Findings = {}};
  if (!judged.Seen) {
    judged.Findings.push_back(WhyNoVideo(path, play));
    return judged;
  }
  const Severity level = rules_.RefusesUnfitSources ? Severity::Error : Severity::Warning;
  for (Message& fault : FaultsOf(judged.Seen->Info)) {
    judged.Findings.push_back(Refusal(std::move(fault), play, level));
  }
  return judged;
}

Judgement<AudioAttributes> SourceJudge::Audio(const SourcePlay& play, std::string_view format) {
  if (auto missing = Missing(play)) {
    return {.Seen = std::nullopt, .Findings = {std::move(*missing)}};
  }
  const std::string path = PathOf(play.File);
  const auto [known, isNew] = audios_.try_emplace({path, std::string(format)});
  if (isNew) {
    known->second = QuickScanAudio(path, format, rules_, *ui_);
  }
  Judgement<AudioAttributes> judged{.Seen = known->second, .Findings = {}};
  if (!judged.Seen) {
    judged.Findings.push_back(WhyNoAudio(format, play));
    return judged;
  }
  Severity level = Severity::Error;
  if (judged.Seen->Problem.empty()) {
    const bool carried = judged.Seen->Format != "DTS";
    level = carried && rules_.RefusesUnfitSources ? Severity::Error : Severity::Warning;
  }
  for (Message& fault : FaultsOf(*judged.Seen)) {
    judged.Findings.push_back(Refusal(std::move(fault), play, level));
  }
  return judged;
}

Findings JudgeForTrack(const VideoAttributes& seen, std::string_view trackType, const SourcePlay& play) {
  const bool motion = EqualNoCase(trackType, "Motion");
  if (motion && seen.Bitmap) {
    return {MessageOf(message::BitmapOnMotion, play.Place, play.File)};
  }
  if (!motion && !seen.Still) {
    return {MessageOf(message::NotStill, play.Place, play.File)};
  }
  return {};
}

bool IsPicture(std::string_view path) {
  constexpr std::array<std::string_view, 4> Extensions{".bmp", ".png", ".jpg", ".jpeg"};
  const std::string lower = Lower(path);
  return std::ranges::any_of(Extensions,
                             [&](std::string_view extension) { return lower.ends_with(extension); });
}

AudioTraits TraitsOf(const AudioAttributes& audio) {
  return {.FrameBytes = audio.FrameBytes,
          .BitRate = audio.BitRate,
          .SampleRate = audio.SampleRate,
          .ChannelCount = audio.ChannelCount(),
          .Quantisation = audio.Quantisation,
          .ServiceMode = audio.ServiceMode};
}

}  // namespace quorvelant
