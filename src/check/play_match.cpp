#include "check/play_match.h"

#include <fmt/format.h>

#include "analysis/remedies.h"
#include "base/text.h"
#include "check/messages.h"

namespace quorvelant {

namespace {

bool IsStandard(std::string_view text) {
  return text == "PAL" || text == "NTSC";
}

constexpr std::string_view ShownWrongly = "players show it wrongly or stop";
constexpr std::string_view OutOfTime = "the sound would be out of time with the picture, or break off";

// A bitmap takes the aspect of its track.
std::string WordsOf(const VideoAttributes& seen, bool withAspect) {
  const VideoInfo& info = seen.Info;
  return fmt::format("{} {} {}{}{}", info.Coding, info.Standard, seen.Resolution, withAspect ? " " : "",
                     withAspect ? info.Aspect : "");
}

std::string WordsOf(const AudioAttributes& seen) {
  const std::string bits = seen.Format == "PCM" ? fmt::format(", {} bits", seen.Quantisation) : "";
  return fmt::format("{} {} kHz{}, {} kbit/s, {} channel{}", seen.Format, seen.SampleRateHz / 1000.0, bits,
                     seen.BitRate, seen.ChannelCount(), seen.ChannelCount() == 1 ? "" : "s");
}

std::string LineLike(const AudioAttributes& first, const std::string& path) {
  return EncodeAudioLine(path, {.Pcm = first.Format == "PCM",
                                .Bits = first.Quantisation,
                                .KHz = first.SampleRate,
                                .Kbps = first.BitRate,
                                .Channels = first.ChannelCount()});
}

}  // namespace

std::optional<Message> WhyNoStandard(const Track& track, const std::string& place, const Rules& rules) {
  if (track.Standard.empty() || IsStandard(track.Standard)) {
    return std::nullopt;
  }
  return ByRules({MessageOf(message::StandardUnknown, place, track.TrackName, track.Standard)}, rules)
      .front();
}

Findings VideoPlays::Judge(const VideoAttributes& seen, const SourcePlay& play, const std::string& path) {
  Findings findings;
  const std::string& standard = seen.Info.Standard;
  if (IsStandard(track_.Standard) && IsStandard(standard) && track_.Standard != standard) {
    findings.push_back(MessageOf(message::UnlikeTrack, play.Place, play.File, standard, track_.Standard));
  }
  if (seen.Still && !seen.Bitmap && EqualNoCase(track_.TrackType, "Motion")) {
    findings.push_back(MessageOf(message::SinglePicture, play.Place, play.File));
  }
  if (!first_) {
    first_ = First{seen, play.File};
    return ByRules(std::move(findings), rules_);
  }
  const bool aspects = !seen.Bitmap && !first_->Seen.Bitmap;
  const std::string words = WordsOf(seen, aspects);
  const std::string wanted = WordsOf(first_->Seen, aspects);
  if (words != wanted) {
    const VideoInfo& like = first_->Seen.Info;
    findings.push_back(MessageOf(message::UnlikeFirst, play.Place, play.File, words, first_->File, wanted,
                                 ShownWrongly,
                                 EncodeVideoLine(path, {like.Standard == "NTSC", like.Aspect})));
  }
  return ByRules(std::move(findings), rules_);
}

Findings AudioPlays::Judge(const AudioAttributes& seen, const SourcePlay& play, const std::string& path) {
  if (!first_) {
    first_ = First{seen, play.File};
    return {};
  }
  const std::string words = WordsOf(seen);
  const std::string wanted = WordsOf(first_->Seen);
  if (words == wanted || seen.Format == "DTS") {  // which stays off the disc
    return {};
  }
  return ByRules({MessageOf(message::UnlikeFirst, play.Place, play.File, words, first_->File, wanted,
                            OutOfTime, LineLike(first_->Seen, path))},
                 rules_);
}

}  // namespace quorvelant
