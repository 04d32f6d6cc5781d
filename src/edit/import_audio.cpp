#include "edit/import_audio.h"

#include <fmt/format.h>

#include "analysis/disc_fit.h"
#include "analysis/quick_scan.h"
#include "base/file_text.h"
#include "base/random.h"
#include "edit/import_video.h"
#include "edit/new_track.h"
#include "model/walk.h"
#include "subtitle/subtitle_script.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoKnownKind = "its name is not that of an AC3 or WAV file";

bool Refuse(UserInterface& ui, std::string_view title, std::string_view text, const std::string& file) {
  TellError(ui, title, text, file);
  return false;
}

// Whether the user takes a stream beyond what a disc carries.
bool AcceptRates(const AudioAttributes& audio, UserInterface& ui) {
  if (audio.Format == "AC3" && audio.BitRate > MostAc3Kbps) {
    return ui.Ask(AudioBitRateTitle, fmt::format(Ac3BitRateText, audio.BitRate), false);
  }
  if (audio.Format == "DTS" && (audio.BitRate < LeastDtsKbps || audio.BitRate > MostDtsKbps)) {
    return ui.Ask(AudioBitRateTitle, fmt::format(DtsBitRateText, audio.BitRate), false);
  }
  if (audio.Format == "PCM" &&
      !CheckPcmRate(audio.SampleRate, audio.ChannelCount(), audio.Quantisation, audio.BitRate)) {
    return ui.Ask(PcmRateTitle, PcmRateText, false);
  }
  return true;
}

AudioTraits TraitsOf(const AudioAttributes& audio) {
  return {.FrameBytes = audio.FrameBytes,
          .BitRate = audio.BitRate,
          .SampleRate = audio.SampleRate,
          .ChannelCount = audio.ChannelCount(),
          .Quantisation = audio.Quantisation,
          .ServiceMode = audio.ServiceMode};
}

bool LikeTheFirst(const AudioStream& stream, const AudioAttributes& audio) {
  const AudioTraits traits = TraitsOf(audio);
  return stream.Format == audio.Format && stream.Traits.SampleRate == traits.SampleRate &&
         stream.Traits.FrameBytes == traits.FrameBytes && stream.Traits.ChannelCount == traits.ChannelCount;
}

bool HasFileAhead(const AudioStream& stream, std::size_t play) {
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
  const std::string path = SystemPath(file, project.SourceFolder());
  const auto audio = QuickScanAudio(path, {}, rules, ui);
  if (!audio || !audio->Problem.empty()) {
    const std::string_view fault = NoPlainFile(path);
    const std::string_view unknown = fault.empty() ? NoKnownKind : fault;
    const std::string_view why = audio ? std::string_view(audio->Problem) : unknown;
    return Refuse(ui, ImportErrorTitle, fmt::format(UnusableText, file, why), file);
  }
  if (audio->SampleRate != 48 && audio->SampleRate != 96) {
    return Refuse(ui, ImportErrorTitle, SampleRateText, file);
  }
  if (!AcceptRates(*audio, ui)) {
    return false;
  }
  const bool first = !HasFileAhead(target, play);
  if (!first && !LikeTheFirst(target, *audio)) {
    return Refuse(ui, AudioPlayTitle, AudioPlayText, file);
  }
  target.AudioPlays[play].File = file;
  if (first) {
    target.Format = audio->Format;
    target.Traits = TraitsOf(*audio);
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
