#include "author/mux_input.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include "analysis/remedies.h"
#include "author/track_cells.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/messages.h"
#include "check/play_match.h"
#include "check/stream_numbers.h"
#include "check/track_demand.h"
#include "ifo/domain_records.h"
#include "model/keys.h"
#include "mux/highlights.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {
namespace {

// One track on its way to the multiplexer.
struct TrackInput {
  const MuxInputSource& Source;
  std::size_t Index;
  const quorvelant::Track& Track;
  int FramesPerSecond;
  quorvelant::Findings& Findings;
};

TrackKind KindOf(std::string_view trackType) {
  return EqualNoCase(trackType, "Still")       ? TrackKind::Still
         : EqualNoCase(trackType, "SlideShow") ? TrackKind::SlideShow
                                               : TrackKind::Motion;
}

// A bitmap is looked at when it is encoded.
void JudgeVideo(const TrackInput& from, const SourcePlay& play, bool isPicture, VideoPlays& plays,
                VideoDemand& demand) {
  SourceJudge& judge = from.Source.Judge;
  if (!isPicture) {
    Judgement<VideoAttributes> judged = judge.Video(play);
    Append(from.Findings, std::move(judged.Findings));
    if (judged.Seen) {
      Append(from.Findings, plays.Judge(*judged.Seen, play, judge.PathOf(play.File)));
      demand.AddFilm(judged.Seen->Info, judge.PathOf(play.File));
    }
  } else if (auto missing = judge.Missing(play)) {
    from.Findings.push_back(std::move(*missing));
  }
}

VideoDemand AddVideo(const TrackInput& from, MuxInput& input) {
  const auto& plays = from.Track.VideoPlays;
  VideoDemand demand;
  VideoPlays judged(from.Track, from.Source.Rules);
  for (std::size_t i = 0; i < plays.size(); ++i) {
    if (plays[i].Removed || plays[i].File.empty()) {
      continue;
    }
    MuxVideoFile& file = input.Video.emplace_back();
    file.Path = from.Source.Judge.PathOf(plays[i].File);
    file.ImageSource = IsPicture(plays[i].File);
    JudgeVideo(from, {plays[i].File, VideoPlayKey(from.Index, i + 1), input.Ntsc}, file.ImageSource, judged,
               demand);
    const auto held = HeldFrames(from.Track, plays[i], from.FramesPerSecond);
    file.HoldFlag = held.has_value();
    file.HoldFrames = held.value_or(0);
    demand.HeldFrames += file.HoldFrames;
  }
  demand.HasFiles = !input.Video.empty();
  // A still that is given no time, or one frame, waits for ever.
  input.Infinite = input.Kind == TrackKind::Still && demand.HasFiles && !input.Video.back().HoldFlag;
  return demand;
}

void AddAudioFile(const TrackInput& from, const AudioStream& stream, const SourcePlay& play,
                  AudioPlays& plays, MuxAudioStream& target) {
  Judgement<AudioAttributes> judged = from.Source.Judge.Audio(play, stream.Format);
  Append(from.Findings, std::move(judged.Findings));
  if (!judged.Seen) {
    return;
  }
  if (judged.Seen->Problem.empty()) {
    Append(from.Findings, plays.Judge(*judged.Seen, play, from.Source.Judge.PathOf(play.File)));
  }
  target.Paths.push_back(from.Source.Judge.PathOf(play.File));
  target.DataOffsets.push_back(judged.Seen->DataOffset);
  target.DataBytes.push_back(judged.Seen->DataBytes);
  if (target.Traits == AudioTraits{}) {
    target.Traits = TraitsOf(*judged.Seen);
  }
}

// Whether a stream can be written under its number. The check of the project warns of one that no disc has,
// which costs the stream.
bool NumberIsFree(const TrackInput& from, StreamNumbers& numbers, std::int32_t number,
                  const std::string& key) {
  auto refusal = numbers.WhyRefused(number, key);
  if (refusal && refusal->Level == Severity::Error) {
    from.Findings.push_back(std::move(*refusal));
  }
  return !refusal;
}

void AddAudioFiles(const TrackInput& from, const AudioStream& stream, std::size_t number,
                   MuxAudioStream& target) {
  AudioPlays plays(from.Source.Rules);
  for (std::size_t i = 0; i < stream.AudioPlays.size(); ++i) {
    const AudioPlay& play = stream.AudioPlays[i];
    if (play.Removed || play.File.empty()) {
      continue;
    }
    AddAudioFile(from, stream, {play.File, AudioPlayKey(from.Index, number, i + 1)}, plays, target);
  }
}

void AddAudio(const TrackInput& from, MuxInput& input) {
  const auto& streams = from.Track.AudioStreams;
  StreamNumbers numbers = StreamNumbers::OfAudio();
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const AudioStream& stream = streams[i];
    const std::string key = AudioStreamKey(from.Index, i + 1);
    if (stream.Removed || !stream.MuxThisStream) {
      continue;
    }
    if (stream.Format != "AC3" && stream.Format != "PCM") {
      const std::string& file = stream.AudioPlays.empty() ? "" : stream.AudioPlays.front().File;
      from.Findings.push_back(
          MessageOf(message::AudioKindUnknown, key, file, EncodeAudioLine(from.Source.Judge.PathOf(file))));
      continue;
    }
    if (!NumberIsFree(from, numbers, stream.StreamNumber, key)) {
      continue;
    }
    MuxAudioStream target;
    target.StreamNumber = stream.StreamNumber;
    target.Pcm = stream.Format == "PCM";
    target.DelayMs = stream.Delay;
    target.Emphasis = stream.Emphasis != 0;
    target.Mute = stream.Mute != 0;
    target.Traits = stream.Traits;
    AddAudioFiles(from, stream, i + 1, target);
    if (!target.Paths.empty()) {
      input.Audio.push_back(std::move(target));
    }
  }
}

void AddSubpictures(const TrackInput& from, MuxInput& input) {
  if (!from.Track.HasSubs) {
    return;
  }
  const auto sceneHolds = ScenesWithStillTime(from.Source.Disc, from.Index, from.Source.Rules);
  const auto& streams = from.Track.SubStreams;
  StreamNumbers numbers = StreamNumbers::OfSubpictures();
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const SubtitleStream& stream = streams[i];
    if (!stream.Removed && stream.MuxThisStream &&
        NumberIsFree(from, numbers, stream.StreamNumber, SubStreamKey(from.Index, i + 1))) {
      input.Subpictures.push_back(
          {stream.StreamNumber, &stream, HeldPlays(from.Track, stream, sceneHolds, from.FramesPerSecond)});
    }
  }
}

void AddMarks(const TrackInput& from, const TrackCells& cells, MuxInput& input) {
  const auto& scenes = from.Track.Scenes;
  for (std::size_t i = 0; i < scenes.size(); ++i) {
    const SceneUse use = cells.UseOf(i);
    input.Marks.push_back({.Scene = static_cast<int>(i),
                           .Frame = scenes[i].Frame,
                           .Name = scenes[i].Name,
                           .UopMask = static_cast<std::uint32_t>((use.Uops | scenes[i].Uops).to_ulong()),
                           .HoldsByStillTime = use.Holds,
                           .Plays = cells.Plays(i)});
  }
  std::ranges::stable_sort(input.Marks, {}, &MuxMark::Frame);
  if (input.Marks.empty()) {
    input.Marks.emplace_back();
  }
  input.Marks.front().Frame = 0;  // a track begins with its first scene
}

// The commands of the cell that plays a scene are dealt, one after the other, to the buttons of the sets
// that start within the scene.
void AddHighlights(const TrackInput& from, const TrackCells& cells, MuxInput& input) {
  for (const HighlightPlay& play : from.Track.HighlightPlays) {
    input.Highlights.push_back(TimeHighlight(play, TimingOf(input.Ntsc)));
  }
  std::ranges::stable_sort(input.Highlights, {}, &MuxHighlight::StartPts);
  const MuxMark* scene = nullptr;
  std::vector<std::string> commands;
  std::size_t dealt = 0;
  for (MuxHighlight& set : input.Highlights) {
    const std::int64_t start = (set.StartPts - VideoStartPts) / TimingOf(input.Ntsc).FramePeriod;
    const auto next = std::ranges::upper_bound(input.Marks, start, {}, &MuxMark::Frame);
    const MuxMark* own = &*(next == input.Marks.begin() ? next : next - 1);
    if (own != scene) {
      scene = own;
      commands = cells.ButtonCommandsOf(static_cast<std::size_t>(own->Scene));
      dealt = 0;
    }
    for (std::size_t i = 0; i < set.Play->Buttons.size() && dealt < commands.size(); ++i) {
      set.CommandHex.push_back(commands[dealt++]);
    }
  }
}

TrackDemand DemandOf(const TrackInput& from, const MuxInput& input, const VideoDemand& video) {
  TrackDemand demand{.Name = input.Name, .FramesPerSecond = from.FramesPerSecond, .Video = video};
  for (const MuxAudioStream& stream : input.Audio) {
    demand.Sound.push_back(
        {.Number = stream.StreamNumber,
         .Pcm = stream.Pcm,
         .DelayMs = stream.DelayMs,
         .Traits = stream.Traits,
         .Bytes = std::accumulate(stream.DataBytes.begin(), stream.DataBytes.end(), std::uint64_t{0})});
  }
  return demand;
}

}  // namespace

MuxInput MakeMuxInput(const MuxInputSource& source, std::size_t trackIndex, Findings& findings) {
  const Track& track = source.Sources[trackIndex];
  const std::string standard = track.Standard.empty() ? source.Disc.Standard() : track.Standard;
  const TrackInput from{source, trackIndex, track, FramesPerSecond(standard), findings};
  MuxInput input;
  input.TrackIndex = static_cast<int>(trackIndex);
  input.Name = track.TrackName;
  input.Aspect = track.Aspect;
  input.Kind = KindOf(track.TrackType);
  input.Ntsc = EqualNoCase(standard, "NTSC");
  input.Mpeg2 = track.Coding != "MPEG1";
  input.DisplayMode = track.DisplayMode;
  input.ExtendSlideForAudio = track.ExtendSlideForAudio;
  input.ExtendFinalSubtitle = track.ExtendFinalSubtitle;
  input.SourceFolder = source.Disc.SourceFolder();
  if (auto noStandard = WhyNoStandard(track, TrackKey(trackIndex), source.Rules)) {
    findings.push_back(std::move(*noStandard));
  }
  const TrackCells cells(source.Disc, source.Entry, source.Domain, trackIndex, source.Rules);
  const VideoDemand video = AddVideo(from, input);
  AddAudio(from, input);
  AddSubpictures(from, input);
  AddMarks(from, cells, input);
  AddHighlights(from, cells, input);
  Append(findings, JudgeDemand(DemandOf(from, input, video), TrackKey(trackIndex), source.Rules));
  return input;
}

}  // namespace quorvelant
