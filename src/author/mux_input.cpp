#include "author/mux_input.h"

#include <algorithm>
#include <utility>

#include "author/track_cells.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/stream_numbers.h"
#include "check/track_demand.h"
#include "ifo/domain_records.h"
#include "model/keys.h"
#include "model/walk.h"
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
  MuxInputNotes& Notes;
};

TrackKind KindOf(std::string_view trackType) {
  return EqualNoCase(trackType, "Still")       ? TrackKind::Still
         : EqualNoCase(trackType, "SlideShow") ? TrackKind::SlideShow
                                               : TrackKind::Motion;
}

void AddVideo(const TrackInput& from, MuxInput& input) {
  for (const VideoPlay* play : Live(from.Track.VideoPlays)) {
    if (play->File.empty()) {
      continue;
    }
    MuxVideoFile& file = input.Video.emplace_back();
    file.Path = from.Source.Judge.PathOf(play->File);
    file.ImageSource = IsPicture(play->File);
    const auto held = HeldFrames(from.Track, *play, from.FramesPerSecond);
    file.HoldFlag = held.has_value();
    file.HoldFrames = held.value_or(0);
  }
  // A still that is given no time, or one frame, waits for ever.
  input.Infinite = input.Kind == TrackKind::Still && !input.Video.empty() && !input.Video.back().HoldFlag;
}

void AddAudioFile(const TrackInput& from, const AudioStream& stream, const SourcePlay& play,
                  MuxAudioStream& target) {
  const auto seen = from.Source.Judge.Audio(play, stream.Format).Seen;
  if (!seen) {
    return;
  }
  target.Paths.push_back(from.Source.Judge.PathOf(play.File));
  target.DataOffsets.push_back(seen->DataOffset);
  target.DataBytes.push_back(seen->DataBytes);
  if (target.Traits == AudioTraits{}) {
    target.Traits = TraitsOf(*seen);
  }
}

// Whether a stream can be written under its number. The check of the project warns of one that no disc has,
// which costs the stream.
bool NumberIsFree(const TrackInput& from, StreamNumbers& numbers, std::int32_t number,
                  const std::string& key) {
  auto refusal = numbers.WhyRefused(number, key);
  if (refusal && refusal->Level == Severity::Error) {
    from.Notes.Findings.push_back(std::move(*refusal));
  }
  return !refusal;
}

void AddAudioFiles(const TrackInput& from, const AudioStream& stream, std::size_t number,
                   MuxAudioStream& target) {
  for (std::size_t i = 0; i < stream.AudioPlays.size(); ++i) {
    const AudioPlay& play = stream.AudioPlays[i];
    if (play.Removed || play.File.empty()) {
      continue;
    }
    AddAudioFile(from, stream, {play.File, AudioPlayKey(from.Index, number, i + 1)}, target);
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
    from.Notes.OnDisc.insert(key);
    if (stream.Format != "AC3" && stream.Format != "PCM") {
      continue;  // its file tells no kind
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
    const std::string key = SubStreamKey(from.Index, i + 1);
    if (!stream.Removed && stream.MuxThisStream && NumberIsFree(from, numbers, stream.StreamNumber, key)) {
      from.Notes.OnDisc.insert(key);
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

}  // namespace

MuxInput MakeMuxInput(const MuxInputSource& source, std::size_t trackIndex, MuxInputNotes& notes) {
  const Track& track = source.Sources[trackIndex];
  const std::string standard = track.Standard.empty() ? source.Disc.Standard() : track.Standard;
  const TrackInput from{source, trackIndex, track, FramesPerSecond(standard), notes};
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
  notes.OnDisc.insert(TrackKey(trackIndex));
  const TrackCells cells(source.Disc, source.Entry, source.Domain, trackIndex, source.Rules);
  AddVideo(from, input);
  AddAudio(from, input);
  AddSubpictures(from, input);
  AddMarks(from, cells, input);
  AddHighlights(from, cells, input);
  return input;
}

}  // namespace quorvelant
