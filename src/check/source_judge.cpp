#include "check/source_judge.h"

#include <fmt/format.h>

#include <array>

#include "analysis/disc_fit.h"
#include "analysis/remedies.h"
#include "base/file_text.h"
#include "base/random.h"
#include "base/text.h"
#include "check/bitmap_head.h"
#include "check/messages.h"
#include "picture/bitmap_size.h"

namespace quorvelant {

namespace {

constexpr std::string_view Unreadable =
    "it cannot be read: its permissions keep this user out, or the disk fails";

// A reason against a file as a finding on a play, with the line that mends it, if there is one.
Message Refusal(Message reason, const SourcePlay& play, Severity level, const std::string& line) {
  constexpr std::string_view Mend = ". This makes one that fits: ";
  reason.Level = level;
  reason.Text = fmt::format("'{}': {}{}{}", play.File, reason.Text, line.empty() ? "" : Mend, line);
  reason.Place = play.Place;
  return reason;
}

VideoTarget TargetOf(const VideoAttributes& seen, const SourcePlay& play) {
  return {.Ntsc = play.Ntsc, .Aspect = seen.Info.Aspect.empty() ? "16:9" : seen.Info.Aspect};
}

// What carries the sound as it is heard: stereo and surround at usual bit rates.
AudioTarget TargetOf(const AudioAttributes& seen) {
  return {.Kbps = seen.ChannelCount() > 2 ? MostAc3Kbps : 192};
}

// The kind of sound that a head shows, as streams name it.
std::string_view SoundOf(SourceKind kind) {
  switch (kind) {
    case SourceKind::Ac3:
      return "AC3";
    case SourceKind::Dts:
      return "DTS";
    case SourceKind::Wave:
      return "PCM";
    default:
      return {};
  }
}

// Whether the multiplexer can write the sound at all, as traditional discs have it.
bool IsMuxable(const AudioAttributes& seen) {
  const bool pcm = seen.Format == "PCM";
  const int bits = seen.Quantisation;
  return (seen.SampleRate == 48 || (pcm && seen.SampleRate == 96)) &&
         (!pcm || (bits >= 16 && bits <= 24 && bits % 4 == 0 && seen.ChannelCount() <= 8));
}

Message WhyNoAudio(std::string_view format, const SourcePlay& play, const std::string& path) {
  const bool known = !format.empty() || !GetAudioType(play.File).empty();
  return known ? MessageOf(message::AudioUnreadable, play.Place, play.File)
               : MessageOf(message::AudioNameUnknown, play.Place, play.File, EncodeAudioLine(path));
}

}  // namespace

std::string SourceJudge::PathOf(const std::string& file) const {
  return SystemPath(file, folder_);
}

std::string_view SourceJudge::WhyMissing(const std::string& path) {
  const auto [known, isNew] = missing_.try_emplace(path);
  if (isNew) {
    known->second = WhyNotPlainFile(path);
    if (known->second.empty()) {
      const auto head = ReadHead(path, SniffBytes);
      const ByteView bytes =
          head ? ByteView(reinterpret_cast<const std::uint8_t*>(head->data()), head->size()) : ByteView();
      const SourceKind kind = SniffSource(bytes);
      heads_[path] = {kind, ShowsDiscVideo(kind, bytes)};
      known->second = head ? std::string_view() : Unreadable;
    }
  }
  return known->second;
}

const SourceJudge::Head& SourceJudge::HeadOf(const std::string& path) {
  WhyMissing(path);
  return heads_[path];
}

Findings SourceJudge::WhyForeign(const SourcePlay& play, const std::string& line) {
  const std::string_view kind = ForeignKindText(HeadOf(PathOf(play.File)).Kind);
  if (kind.empty()) {
    return {};
  }
  return ByRules({MessageOf(message::SourceForeign, play.Place, play.File, kind, line)}, rules_);
}

std::optional<Message> SourceJudge::WhyBroken(const SourcePlay& play) const {
  const auto fault = faults_.ByFile.find(PathOf(play.File));
  return fault == faults_.ByFile.end()
             ? std::nullopt
             : std::optional(MessageOf(message::SourceBroken, play.Place, play.File, fault->second));
}

VideoHead SourceJudge::VideoHeadOf(const std::string& path) {
  const auto [known, isNew] = videoHeads_.try_emplace(path);
  if (isNew) {
    known->second = ScanVideoHead(path, faults_);
  }
  return known->second.value_or(VideoHead{.StartsWithSequence = true, .HasGroups = true});
}

// Why the quick scan, which goes by sequence headers, found no video.
Message SourceJudge::WhyNoVideo(const SourcePlay& play) {
  const std::string path = PathOf(play.File);
  if (auto broken = WhyBroken(play)) {
    return *std::move(broken);
  }
  if (const auto bitmap = ReadBitmapSize(path)) {
    return MessageOf(message::BitmapSizeUnfit, play.Place, play.File, bitmap->Width, bitmap->Height);
  }
  if (HeadOf(path).Kind == SourceKind::Video && !VideoHeadOf(path).StartsWithSequence) {
    return MessageOf(message::SequenceNotFirst, play.Place, play.File, CopyVideoLine(path));
  }
  return MessageOf(message::VideoMissing, play.Place, play.File);
}

// What comes before the second sequence header.
Findings SourceJudge::JudgeHead(const VideoAttributes& seen, const SourcePlay& play) {
  const std::string path = PathOf(play.File);
  const VideoHead head = VideoHeadOf(path);
  Findings findings;
  if (auto broken = WhyBroken(play)) {
    findings.push_back(*std::move(broken));
  } else if (!head.StartsWithSequence) {
    findings.push_back(MessageOf(message::SequenceNotFirst, play.Place, play.File, CopyVideoLine(path)));
  } else if (head.IsOneSequence()) {
    Findings one{
        MessageOf(message::OneSequence, play.Place, play.File, head.Fields / 2, RepeatSequenceLine(path))};
    Append(findings, ByRules(std::move(one), rules_));
  }
  if (!head.HasGroups) {
    findings.push_back(
        MessageOf(message::NoGroups, play.Place, play.File, EncodeVideoLine(path, TargetOf(seen, play))));
  }
  return findings;
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
  Judgement<VideoAttributes> judged{
      .Seen = std::nullopt,
      .Findings = WhyForeign(play, HeadOf(path).ShowsDiscVideo ? CopyVideoLine(path)
                                                               : EncodeVideoLine(path, {.Ntsc = play.Ntsc}))};
  if (HasErrors(judged.Findings)) {
    return judged;
  }
  const auto [known, isNew] = videos_.try_emplace(path);
  if (isNew) {
    known->second = QuickScanVideo(path, faults_);
  }
  judged.Seen = known->second;
  if (!judged.Seen) {
    judged.Findings.push_back(WhyNoVideo(play));
    return judged;
  }
  const Severity level = rules_.RefusesUnfitSources ? Severity::Error : Severity::Warning;
  const std::string line = EncodeVideoLine(path, TargetOf(*judged.Seen, play));
  for (Message& fault : FaultsOf(judged.Seen->Info)) {
    const bool hasPictures = !fault.Is(message::NoPictures);
    judged.Findings.push_back(Refusal(std::move(fault), play, level, hasPictures ? line : ""));
  }
  const bool moves = judged.Seen->Info.PicturesSeen > 1;
  if (!judged.Findings.empty()) {
    return judged;
  }
  if (moves) {
    judged.Findings = JudgeHead(*judged.Seen, play);
  }
  if (auto doubt = WhyRateDoubtful(judged.Seen->Info)) {
    judged.Findings.push_back(Refusal(*std::move(doubt), play, Severity::Warning, line));
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
    known->second = QuickScanAudio(path, format, rules_, faults_);
  }
  Judgement<AudioAttributes> judged{.Seen = known->second,
                                    .Findings = WhyForeign(play, EncodeAudioLine(path))};
  if (HasErrors(judged.Findings)) {
    return judged;
  }
  if (!judged.Seen) {
    auto broken = WhyBroken(play);
    judged.Findings.push_back(broken ? *std::move(broken) : WhyNoAudio(format, play, path));
    return judged;
  }
  const AudioAttributes& seen = *judged.Seen;
  const std::string_view sound = SoundOf(HeadOf(path).Kind);
  const std::string line = EncodeAudioLine(path, TargetOf(seen));
  if (!seen.Problem.empty() && !sound.empty() && sound != seen.Format) {
    judged.Findings.push_back(MessageOf(message::AudioOtherKind, play.Place, play.File, sound, seen.Format,
                                        EncodeAudioLine(path, {.Pcm = seen.Format == "PCM"})));
    return judged;
  }
  Severity level = Severity::Error;
  if (seen.Problem.empty()) {
    const bool carried = seen.Format != "DTS";
    const bool refused = rules_.RefusesUnfitSources || !IsMuxable(seen);
    level = carried && refused ? Severity::Error : Severity::Warning;
  }
  for (Message& fault : FaultsOf(seen)) {
    const bool mends = !sound.empty();
    judged.Findings.push_back(Refusal(std::move(fault), play, level, mends ? line : ""));
  }
  return judged;
}

std::optional<Message> SourceJudge::Subtitle(const SubPicturePlay& entry, const SourcePlay& play) {
  auto missing = Missing(play);
  return missing ? std::move(missing) : WhyNoSubtitle(entry, PathOf(play.File), play.Place, play.Ntsc);
}

Findings JudgeForTrack(const VideoAttributes& seen, std::string_view trackType, const SourcePlay& play,
                       const Rules& rules) {
  const bool motion = EqualNoCase(trackType, "Motion");
  if (motion && seen.Bitmap) {
    return ByRules({MessageOf(message::BitmapOnMotion, play.Place, play.File)}, rules);
  }
  if (!motion && !seen.Still) {
    return {MessageOf(message::NotStill, play.Place, play.File)};
  }
  return {};
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
