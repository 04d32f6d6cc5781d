#include "edit/import_audio.h"

#include "analysis/disc_fit.h"
#include "analysis/remedies.h"
#include "check/messages.h"
#include "check/source_judge.h"
#include "edit/import_subtitles.h"
#include "edit/messages.h"
#include "edit/new_track.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoKnownKind = "its name is not that of an AC3 or WAV file";

// What the judge found against the file, in the words of an import; nothing where it may be taken.
std::optional<Message> WhyRefused(const Judgement<AudioAttributes>& judged, const std::string& file,
                                  SourceJudge& judge) {
  const Findings& found = judged.Findings;
  const auto unusable = [&](std::string_view why) {
    return MessageOf(message::ImportUnusable, file, file, why);
  };
  if (Has(found, message::SourceMissing)) {
    return unusable(judge.WhyMissing(judge.PathOf(file)));
  }
  if (!judged.Seen) {
    return Has(found, message::SourceBroken) || Has(found, message::SourceForeign) ? found.back()
                                                                                   : unusable(NoKnownKind);
  }
  if (!judged.Seen->Problem.empty()) {
    return unusable(judged.Seen->Problem);
  }
  if (Has(found, message::SampleRate)) {
    return MessageOf(message::ImportSampleRate, file, file, EncodeAudioLine(judge.PathOf(file)));
  }
  return std::nullopt;
}

// Whether the user takes a stream beyond what a disc carries.
bool AcceptRates(const Judgement<AudioAttributes>& judged, UserInterface& ui) {
  const AudioAttributes& audio = *judged.Seen;
  const auto ask = [&ui](const Message& question) { return ui.Ask(question.Title, question.Text, false); };
  if (Has(judged.Findings, message::Ac3BitRate)) {
    return ask(MessageOf(message::AskAc3BitRate, {}, audio.BitRate));
  }
  if (audio.Format == "DTS" && (audio.BitRate < LeastDtsKbps || audio.BitRate > MostDtsKbps)) {
    return ask(MessageOf(message::AskDtsBitRate, {}, audio.BitRate));
  }
  return !Has(judged.Findings, message::PcmFormat) || ask(MessageOf(message::AskPcmRate, {}));
}

bool LikeTheFirst(const AudioStream& stream, const AudioAttributes& audio) {
  const AudioTraits traits = TraitsOf(audio);
  return stream.Format == audio.Format && stream.Traits.SampleRate == traits.SampleRate &&
         stream.Traits.FrameBytes == traits.FrameBytes && stream.Traits.ChannelCount == traits.ChannelCount;
}

bool HasEarlierFile(const AudioStream& stream, std::size_t play) {
  for (std::size_t i = 0; i < play; ++i) {
    if (IsLive(stream.AudioPlays[i]) && !stream.AudioPlays[i].File.empty()) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool ImportAudio(Project& project, std::size_t trackIndex, std::size_t stream, std::size_t play,
                 const std::string& file, const Rules& rules, UserInterface& ui) {
  Track& track = project.Tracks[trackIndex];
  if (stream >= track.AudioStreams.size() || play >= track.AudioStreams[stream].AudioPlays.size()) {
    return false;
  }
  AudioStream& target = track.AudioStreams[stream];
  SourceJudge judge(project.SourceFolder(), rules, ui);
  const Judgement<AudioAttributes> judged = judge.Audio({file, file}, {});
  if (const auto refusal = WhyRefused(judged, file, judge)) {
    ui.Tell(*refusal);
    return false;
  }
  if (!AcceptRates(judged, ui)) {
    return false;
  }
  const bool first = !HasEarlierFile(target, play);
  if (!first && !LikeTheFirst(target, *judged.Seen)) {
    ui.Tell(MessageOf(message::ImportAudioUnlike, file));
    return false;
  }
  target.AudioPlays[play].File = file;
  if (first) {
    target.Format = judged.Seen->Format;
    target.Traits = TraitsOf(*judged.Seen);
  }
  track.HasAudio = true;
  return true;
}

bool ImportSubtitles(Project& project, std::size_t trackIndex,
                     const std::function<std::optional<std::string>()>& chooseScript, bool subRipMode,
                     const Rules& rules, UserInterface& ui) {
  Track& track = project.Tracks[trackIndex];
  const NewSubtitleStream added = AddSubtitleStream(track, ui);
  if (added.Stream == nullptr) {
    return false;
  }
  if (added.ImportScript) {
    if (const auto script = chooseScript()) {
      ImportSubtitleScript(project, trackIndex, track.SubStreams.size() - 1, *script, subRipMode, rules, ui);
    }
  }
  return true;
}

}  // namespace quorvelant
