#include "check/check_sources.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "analysis/picture_index.h"
#include "analysis/remedies.h"
#include "base/timecode.h"
#include "check/button_check.h"
#include "check/messages.h"
#include "check/play_match.h"
#include "check/source_judge.h"
#include "check/stream_numbers.h"
#include "check/subtitle_check.h"
#include "check/track_demand.h"
#include "model/keys.h"
#include "model/picture_file.h"
#include "model/stream_maps.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

// What a track asks for, with all of its streams that have a number and sound.
struct Asked {
  TrackDemand Demand;
  std::vector<std::size_t> Streams;  // in the track, of each of the demand's
};

class SourceChecker {
 public:
  SourceChecker(const Project& project, SourceJudge& judge, const SourceChecks& checks)
      : project_(project), rules_(checks.Rules), checks_(checks), judge_(judge) {}

  Findings Run();

 private:
  void CheckTrack(std::size_t index);
  void CheckVideo(const Track& track, std::size_t index, VideoDemand& demand);
  void CheckAudio(const Track& track, std::size_t index, Asked& asked);
  void CheckAudioStream(const Track& track, std::size_t index, std::size_t number, SoundDemand& sound);
  void CheckSubtitleStreams(const Track& track, std::size_t index);
  // By the streams that each domain carries.
  void CheckDemands();
  std::optional<VideoAttributes> OpenVideo(const Track& track, const SourcePlay& play);
  std::optional<AudioAttributes> OpenAudio(const AudioStream& stream, const SourcePlay& play);

  // Whether the play's file is there to be opened.
  bool IsThere(const SourcePlay& play);
  bool IsOnDisc(const std::string& key) const {
    return checks_.OnDisc == nullptr || checks_.OnDisc->contains(key);
  }
  // An index only counts where chapters are moved, so it is a note.
  void TellOldIndex(const std::string& path);
  // What was found from `first` on is of what that key names.
  void JudgedUnder(const std::string& key, std::size_t first);
  std::string StandardOf(const Track& track) const {
    return track.Standard.empty() ? project_.Standard() : track.Standard;
  }
  SourcePlay PlayOf(const Track& track, const std::string& file, const std::string& key) const {
    return {file, key, StandardOf(track) == "NTSC"};
  }
  template <class... Values>
  void Add(const MessageKind& kind, const SourcePlay& play, const Values&... values) {
    findings_.push_back(MessageOf(kind, play.Place, values...));
  }

  const Project& project_;
  const Rules& rules_;
  const SourceChecks& checks_;
  SourceJudge& judge_;
  std::map<std::size_t, Asked> asked_;  // by track
  Findings findings_;
};

bool SourceChecker::IsThere(const SourcePlay& play) {
  if (play.File.empty()) {
    Add(message::SourceUnnamed, play);
    return false;
  }
  auto missing = judge_.Missing(play);
  if (missing) {
    findings_.push_back(std::move(*missing));
  }
  return !missing;
}

void SourceChecker::JudgedUnder(const std::string& key, std::size_t first) {
  for (Message& finding : std::span(findings_).subspan(IsOnDisc(key) ? findings_.size() : first)) {
    finding.Level = finding.Level == Severity::Error ? Severity::Warning : finding.Level;
  }
}

std::optional<VideoAttributes> SourceChecker::OpenVideo(const Track& track, const SourcePlay& play) {
  Judgement<VideoAttributes> judged = judge_.Video(play);
  Append(findings_, std::move(judged.Findings));
  if (!judged.Seen) {
    return std::nullopt;
  }
  Findings forTrack = JudgeForTrack(*judged.Seen, track.TrackType, play, rules_);
  const bool outOfPlace = Has(forTrack, message::BitmapOnMotion);
  Append(findings_, std::move(forTrack));
  return outOfPlace ? std::nullopt : judged.Seen;
}

void SourceChecker::TellOldIndex(const std::string& path) {
  if (IndexIsOlder(path)) {
    findings_.push_back(MessageOf(message::IndexNotCurrent, path, IndexName(path), IndexWrittenBefore));
    findings_.back().Level = Severity::Information;
  }
}

void SourceChecker::CheckVideo(const Track& track, std::size_t index, VideoDemand& demand) {
  VideoPlays plays(track, rules_);
  for (std::size_t i = 0; i < track.VideoPlays.size(); ++i) {
    const VideoPlay& video = track.VideoPlays[i];
    const SourcePlay play = PlayOf(track, video.File, VideoPlayKey(index, i + 1));
    if (!video.Removed && !video.File.empty()) {
      demand.HasFiles = true;
      demand.HeldFrames += HeldFrames(track, video, FramesPerSecond(StandardOf(track))).value_or(0);
    }
    if (video.Removed || !IsThere(play)) {
      continue;
    }
    const auto seen = OpenVideo(track, play);
    if (!seen) {
      continue;
    }
    const std::string path = judge_.PathOf(play.File);
    if (!IsPicture(play.File)) {
      demand.AddFilm(seen->Info, path);
    }
    Append(findings_, plays.Judge(*seen, play, path));
    TellOldIndex(path);
  }
}

std::optional<AudioAttributes> SourceChecker::OpenAudio(const AudioStream& stream, const SourcePlay& play) {
  Judgement<AudioAttributes> judged = judge_.Audio(play, stream.Format);
  Append(findings_, std::move(judged.Findings));
  return judged.Seen && judged.Seen->Problem.empty() ? judged.Seen : std::nullopt;
}

void SourceChecker::CheckAudioStream(const Track& track, std::size_t index, std::size_t number,
                                     SoundDemand& sound) {
  const AudioStream& stream = track.AudioStreams[number - 1];
  AudioPlays plays(rules_);
  for (const auto& [i, audio] : LiveWithIndex(stream.AudioPlays)) {
    const SourcePlay play = PlayOf(track, audio.File, AudioPlayKey(index, number, i + 1));
    if (!IsThere(play) || stream.Format.empty()) {
      continue;
    }
    if (const auto seen = OpenAudio(stream, play)) {
      Append(findings_, plays.Judge(*seen, play, judge_.PathOf(play.File)));
      sound.Traits = sound.Traits == AudioTraits{} ? TraitsOf(*seen) : sound.Traits;
      sound.Bytes += seen->DataBytes;
    }
  }
  if (stream.Format.empty()) {
    const std::string& file = stream.AudioPlays.empty() ? "" : stream.AudioPlays.front().File;
    const SourcePlay place = PlayOf(track, {}, AudioStreamKey(index, number));
    if (file.empty()) {
      Add(message::AudioUnnamed, place);
    } else {
      Add(message::AudioKindUnknown, place, file, EncodeAudioLine(judge_.PathOf(file)));
    }
  }
}

void SourceChecker::CheckAudio(const Track& track, std::size_t index, Asked& asked) {
  StreamNumbers numbers = StreamNumbers::OfAudio();
  for (const auto& [place, stream] : LiveWithIndex(track.AudioStreams)) {
    const std::size_t first = findings_.size();
    SoundDemand sound{.Number = stream.StreamNumber,
                      .Pcm = stream.Format == "PCM",
                      .DelayMs = stream.Delay,
                      .Traits = stream.Traits};
    CheckAudioStream(track, index, place + 1, sound);
    JudgedUnder(AudioStreamKey(index, place + 1), first);
    const bool isNumbered = !numbers.WhyRefused(stream.StreamNumber, {});
    if (isNumbered && sound.Bytes > 0) {
      asked.Demand.Sound.push_back(sound);
      asked.Streams.push_back(place);
    }
  }
}

void SourceChecker::CheckSubtitleStreams(const Track& track, std::size_t index) {
  for (const auto& [i, stream] : LiveWithIndex(track.SubStreams)) {
    const std::string key = SubStreamKey(index, i + 1);
    const bool opens = IsOnDisc(key);
    const std::size_t first = findings_.size();
    Append(findings_, CheckSubtitles(track, index, i,
                                     {.Rules = rules_,
                                      .Judge = judge_,
                                      .Ui = checks_.Ui,
                                      .SourceFolder = project_.SourceFolder(),
                                      .Pictures = opens ? checks_.Pictures : nullptr,
                                      .Coded = opens ? checks_.Coded : nullptr}));
    JudgedUnder(key, first);
  }
}

void SourceChecker::CheckTrack(std::size_t index) {
  const Track& track = project_.Tracks[index];
  const std::size_t first = findings_.size();
  if (auto noStandard = WhyNoStandard(track, TrackKey(index), rules_)) {
    findings_.push_back(std::move(*noStandard));
  }
  Asked& asked = asked_[index];
  asked.Demand.Name = track.TrackName;
  asked.Demand.FramesPerSecond = FramesPerSecond(StandardOf(track));
  CheckVideo(track, index, asked.Demand.Video);
  CheckAudio(track, index, asked);
  CheckSubtitleStreams(track, index);
  Append(findings_, CheckButtonLinks(track, index));
  Append(findings_, CheckButtons(track, index));
  JudgedUnder(TrackKey(index), first);
}

void SourceChecker::CheckDemands() {
  Tracks tracks = project_.Tracks;  // building a map marks the streams
  Findings found;
  for (const VTS_P* entry : Live(project_.Disc)) {
    for (const Domain domain : {Domain::Menu, Domain::Title}) {
      const TrackList list = BuildTrackList(*entry, domain, tracks);
      BuildAudioMap(list, tracks, rules_);
      for (const TrackListRow& row : list) {
        const Asked& asked = asked_[row.Index];
        TrackDemand demand = asked.Demand;
        demand.Sound.clear();
        for (std::size_t i = 0; i < asked.Streams.size(); ++i) {
          if (tracks[row.Index].AudioStreams[asked.Streams[i]].MuxThisStream) {
            demand.Sound.push_back(asked.Demand.Sound[i]);
          }
        }
        Append(found, JudgeDemand(demand, TrackKey(row.Index), rules_));
      }
    }
  }
  Append(findings_, OnceEach(std::move(found)));
}

Findings SourceChecker::Run() {
  const std::size_t count = project_.Tracks.Count();
  for (std::size_t i = 0; i < count && !checks_.Ui.StopRequested(); ++i) {
    if (!project_.Tracks[i].Removed) {
      CheckTrack(i);
    }
    if (checks_.Pictures != nullptr) {
      checks_.Ui.Progress(static_cast<double>(i + 1), static_cast<double>(count));
    }
  }
  if (!checks_.Ui.StopRequested()) {
    CheckDemands();
  }
  return std::move(findings_);
}

}  // namespace

Findings CheckSources(const Project& project, SourceJudge& judge, const SourceChecks& checks) {
  return SourceChecker(project, judge, checks).Run();
}

Findings LookForSources(const Project& project, UserInterface& ui, const Rules& rules) {
  SourceJudge judge(project.SourceFolder(), rules, ui);
  return CheckSources(project, judge, {.Rules = rules, .Ui = ui});
}

Findings OpenSources(const Project& project, const Rules& rules, PictureLoader& pictures, UserInterface& ui) {
  SourceJudge judge(project.SourceFolder(), rules, ui);
  return CheckSources(project, judge, {.Rules = rules, .Ui = ui, .Pictures = &pictures});
}

}  // namespace quorvelant
