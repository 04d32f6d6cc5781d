#include "check/check_sources.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <utility>

#include "analysis/picture_index.h"
#include "analysis/remedies.h"
#include "check/bitmap_head.h"
#include "check/button_check.h"
#include "check/messages.h"
#include "check/play_match.h"
#include "check/source_judge.h"
#include "check/subtitle_check.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

class SourceChecker {
 public:
  // Without `pictures` subtitles are only looked for.
  SourceChecker(const Project& project, const Rules& rules, PictureLoader* pictures, UserInterface& ui)
      : project_(project),
        rules_(rules),
        pictures_(pictures),
        ui_(ui),
        judge_(project.SourceFolder(), rules, ui) {}

  Findings Run();

 private:
  bool Opens() const { return pictures_ != nullptr; }
  void CheckTrack(std::size_t index);
  void CheckVideo(const Track& track, std::size_t index);
  void CheckAudio(const Track& track, std::size_t index);
  void CheckSubtitleFiles(const Track& track, std::size_t index);
  std::optional<VideoAttributes> OpenVideo(const Track& track, const SourcePlay& play);
  std::optional<AudioAttributes> OpenAudio(const AudioStream& stream, const SourcePlay& play);

  // Whether the play's file is there to be opened.
  bool IsThere(const SourcePlay& play);
  SourcePlay PlayOf(const Track& track, const std::string& file, const std::string& key) const {
    const std::string standard = track.Standard.empty() ? project_.Standard() : track.Standard;
    return {file, Opens() ? fmt::format("{} ({})", key, track.TrackName) : key, standard == "NTSC"};
  }
  template <class... Values>
  void Add(const MessageKind& kind, const SourcePlay& play, const Values&... values) {
    findings_.push_back(MessageOf(kind, play.Place, values...));
  }

  const Project& project_;
  const Rules& rules_;
  PictureLoader* pictures_;
  UserInterface& ui_;
  SourceJudge judge_;
  Findings findings_;
};

bool SourceChecker::IsThere(const SourcePlay& play) {
  if (play.File.empty()) {
    if (Opens()) {
      Add(message::SourceUnnamed, play);
    }
    return false;
  }
  auto missing = judge_.Missing(play);
  if (missing) {
    findings_.push_back(std::move(*missing));
  }
  return !missing;
}

std::optional<VideoAttributes> SourceChecker::OpenVideo(const Track& track, const SourcePlay& play) {
  Judgement<VideoAttributes> judged = judge_.Video(play);
  Append(findings_, std::move(judged.Findings));
  if (!judged.Seen) {
    return std::nullopt;
  }
  Findings forTrack = JudgeForTrack(*judged.Seen, track.TrackType, play);
  const bool outOfPlace = Has(forTrack, message::BitmapOnMotion);
  Append(findings_, std::move(forTrack));
  return outOfPlace ? std::nullopt : judged.Seen;
}

void SourceChecker::CheckVideo(const Track& track, std::size_t index) {
  VideoPlays plays(track, rules_);
  for (std::size_t i = 0; i < track.VideoPlays.size(); ++i) {
    const SourcePlay play = PlayOf(track, track.VideoPlays[i].File, VideoPlayKey(index, i + 1));
    if (track.VideoPlays[i].Removed || !IsThere(play)) {
      continue;
    }
    const auto seen = OpenVideo(track, play);
    if (!seen) {
      continue;
    }
    Append(findings_, plays.Judge(*seen, play, judge_.PathOf(play.File)));
    if (Opens() && IndexIsOlder(judge_.PathOf(play.File))) {
      Add(message::IndexOlder, play, play.File);
    }
  }
}

std::optional<AudioAttributes> SourceChecker::OpenAudio(const AudioStream& stream, const SourcePlay& play) {
  Judgement<AudioAttributes> judged = judge_.Audio(play, stream.Format);
  Append(findings_, std::move(judged.Findings));
  return judged.Seen && judged.Seen->Problem.empty() ? judged.Seen : std::nullopt;
}

void SourceChecker::CheckAudio(const Track& track, std::size_t index) {
  for (std::size_t i = 0; i < track.AudioStreams.size(); ++i) {
    const AudioStream& stream = track.AudioStreams[i];
    if (stream.Removed) {
      continue;
    }
    const bool known = !stream.Format.empty();
    AudioPlays plays(rules_);
    for (std::size_t j = 0; j < stream.AudioPlays.size(); ++j) {
      const SourcePlay play = PlayOf(track, stream.AudioPlays[j].File, AudioPlayKey(index, i + 1, j + 1));
      if (stream.AudioPlays[j].Removed || !IsThere(play) || !known) {
        continue;
      }
      if (const auto seen = OpenAudio(stream, play)) {
        Append(findings_, plays.Judge(*seen, play, judge_.PathOf(play.File)));
      }
    }
    if (!known) {
      const std::string& file = stream.AudioPlays.empty() ? "" : stream.AudioPlays.front().File;
      Add(message::AudioKindUnknown, PlayOf(track, {}, AudioStreamKey(index, i + 1)), file,
          EncodeAudioLine(judge_.PathOf(file)));
    }
  }
}

void SourceChecker::CheckSubtitleFiles(const Track& track, std::size_t index) {
  for (std::size_t i = 0; i < track.SubStreams.size(); ++i) {
    for (const SubPicturePlay& play : track.SubStreams[i].SubPlays) {
      const SourcePlay source = PlayOf(track, play.File, SubStreamKey(index, i + 1));
      if (track.SubStreams[i].Removed || !play.Used || !IsThere(source)) {
        continue;
      }
      if (auto fault = WhyNoSubtitle(play, judge_.PathOf(play.File), source.Place, source.Ntsc)) {
        findings_.push_back(std::move(*fault));
      }
    }
  }
}

void SourceChecker::CheckTrack(std::size_t index) {
  const Track& track = project_.Tracks[index];
  if (auto noStandard = WhyNoStandard(track, TrackKey(index), rules_)) {
    findings_.push_back(std::move(*noStandard));
  }
  CheckVideo(track, index);
  CheckAudio(track, index);
  Append(findings_, CheckButtonLinks(track, index));
  if (!Opens()) {
    CheckSubtitleFiles(track, index);
  }
  Append(findings_,
         CheckSubtitles(
             track, index,
             {.Rules = rules_, .Ui = ui_, .Pictures = pictures_, .SourceFolder = project_.SourceFolder()}));
  if (Opens()) {
    Append(findings_, CheckButtons(track, index));
  }
}

Findings SourceChecker::Run() {
  const std::size_t count = project_.Tracks.Count();
  for (std::size_t i = 0; i < count && !ui_.StopRequested(); ++i) {
    if (!project_.Tracks[i].Removed) {
      CheckTrack(i);
    }
    if (Opens()) {
      ui_.Progress(static_cast<double>(i + 1), static_cast<double>(count));
    }
  }
  return std::move(findings_);
}

}  // namespace

Findings LookForSources(const Project& project, UserInterface& ui, const Rules& rules) {
  return SourceChecker(project, rules, nullptr, ui).Run();
}

Findings OpenSources(const Project& project, const Rules& rules, PictureLoader& pictures, UserInterface& ui) {
  return SourceChecker(project, rules, &pictures, ui).Run();
}

}  // namespace quorvelant
