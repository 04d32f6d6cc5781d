#include "author/mux_input.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "analysis/disc_fit.h"
#include "author/track_cells.h"
#include "base/text.h"
#include "base/timecode.h"
#include "ifo/domain_records.h"
#include "model/keys.h"
#include "mux/highlights.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {
namespace {

// One track under conversion.
struct Conversion {
  const MuxInputSource& Source;
  std::size_t Index;
  const quorvelant::Track& Track;
  std::string Folder;  // from which relative paths count
  int FramesPerSecond;
  std::vector<Message>& Findings;

  void Error(std::string text, std::string place) {
    Findings.push_back({Severity::Error, std::string(SourceErrorTitle), std::move(text), std::move(place)});
  }
};

TrackKind KindOf(std::string_view trackType) {
  return EqualNoCase(trackType, "Still")       ? TrackKind::Still
         : EqualNoCase(trackType, "SlideShow") ? TrackKind::SlideShow
                                               : TrackKind::Motion;
}

// The path of a play's file, which must be there.
std::string SourceFile(Conversion& conversion, const std::string& file, std::string key) {
  std::string path = SystemPath(file, conversion.Folder);
  std::error_code failed;
  const auto status = std::filesystem::status(path, failed);
  if (!std::filesystem::exists(status)) {
    conversion.Error(fmt::format(SourceMissing, path), std::move(key));
  } else if (!std::filesystem::is_regular_file(status)) {
    conversion.Error(fmt::format(SourceIsNoFile, path), std::move(key));
  }
  return path;
}

// What keeps a file from a disc, as its first headers tell.
void JudgeFile(Conversion& conversion, const std::string& path, const std::string& key, const DiscFit& fit) {
  const bool refuses = conversion.Source.Rules.RefusesUnfitSources;
  for (const std::string& reason : fit.Reasons) {
    conversion.Findings.push_back({refuses ? Severity::Error : Severity::Warning,
                                   std::string(SourceErrorTitle), fmt::format(SourceUnusable, path, reason),
                                   key});
  }
}

void JudgeVideoFile(Conversion& conversion, const std::string& path, const std::string& key) {
  if (const auto seen = QuickScanVideo(path, conversion.Source.Ui)) {
    JudgeFile(conversion, path, key, JudgeHeaders(seen->Info));
  } else {
    conversion.Error(fmt::format(SourceUnusable, path, NoVideo), key);
  }
}

void AddVideo(Conversion& conversion, MuxInput& input) {
  const auto& plays = conversion.Track.VideoPlays;
  for (std::size_t i = 0; i < plays.size(); ++i) {
    if (plays[i].Removed || plays[i].File.empty()) {
      continue;
    }
    MuxVideoFile& file = input.Video.emplace_back();
    const std::string key = VideoPlayKey(conversion.Index, i + 1);
    const std::size_t errors = conversion.Findings.size();
    file.Path = SourceFile(conversion, plays[i].File, key);
    file.ImageSource = IsPicture(plays[i].File);
    if (!file.ImageSource && conversion.Findings.size() == errors) {
      JudgeVideoFile(conversion, file.Path, key);
    }
    if (input.Kind != TrackKind::Motion) {
      file.HoldFrames = TimecodeToFrames(plays[i].SlideDuration, conversion.FramesPerSecond);
      // A still of one frame waits for ever.
      file.HoldFlag = file.HoldFrames > (input.Kind == TrackKind::Still ? 1 : 0);
    }
  }
  if (input.Video.empty()) {
    conversion.Error(fmt::format(TrackWithoutVideo, conversion.Track.TrackName), TrackKey(conversion.Index));
    return;
  }
  // A still that is given no time, or one frame, waits for ever.
  input.Infinite = input.Kind == TrackKind::Still && !input.Video.back().HoldFlag;
}

void AddAudioFile(Conversion& conversion, const AudioStream& stream, const std::string& path,
                  const std::string& key, MuxAudioStream& target) {
  const auto sound = QuickScanAudio(path, stream.Format, conversion.Source.Rules, conversion.Source.Ui);
  target.Paths.push_back(path);
  target.DataOffsets.push_back(sound ? sound->DataOffset : 0);
  target.DataBytes.push_back(sound ? sound->DataBytes : 0);
  if (!sound) {
    conversion.Error(fmt::format(SourceUnreadable, path), key);
    return;
  }
  if (!sound->Problem.empty()) {
    conversion.Error(fmt::format(SourceUnusable, path, sound->Problem), key);
  } else {
    JudgeFile(conversion, path, key, JudgeAudio(*sound));
  }
  if (target.Traits == AudioTraits{}) {
    target.Traits = {.FrameBytes = sound->FrameBytes,
                     .BitRate = sound->BitRate,
                     .SampleRate = sound->SampleRate,
                     .ChannelCount = sound->ChannelCount(),
                     .Quantisation = sound->Quantisation,
                     .ServiceMode = sound->ServiceMode};
  }
}

// Whether a stream can be written under its number. One that no disc has costs the stream, of which the
// check of the project warns; two streams under one number are an error.
template <class Targets>
bool NumberIsFree(Conversion& conversion, std::int32_t number, std::size_t count, const Targets& targets,
                  std::string key) {
  if (number < 0 || static_cast<std::size_t>(number) >= count) {
    return false;
  }
  if (std::ranges::any_of(targets, [&](const auto& target) { return target.StreamNumber == number; })) {
    conversion.Error(fmt::format(RepeatedStreamNumber, number), std::move(key));
    return false;
  }
  return true;
}

void AddAudioFiles(Conversion& conversion, const AudioStream& stream, std::size_t number,
                   MuxAudioStream& target) {
  for (std::size_t i = 0; i < stream.AudioPlays.size(); ++i) {
    const AudioPlay& play = stream.AudioPlays[i];
    if (play.Removed || play.File.empty()) {
      continue;
    }
    const std::string key = AudioPlayKey(conversion.Index, number, i + 1);
    const std::size_t errors = conversion.Findings.size();
    const std::string path = SourceFile(conversion, play.File, key);
    if (conversion.Findings.size() == errors) {
      AddAudioFile(conversion, stream, path, key, target);
    }
  }
}

void AddAudio(Conversion& conversion, MuxInput& input) {
  const auto& streams = conversion.Track.AudioStreams;
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const AudioStream& stream = streams[i];
    const std::string key = AudioStreamKey(conversion.Index, i + 1);
    if (stream.Removed || !stream.MuxThisStream) {
      continue;
    }
    if (stream.Format != "AC3" && stream.Format != "PCM") {
      conversion.Error(std::string(UnknownSound), key);
      continue;
    }
    if (!NumberIsFree(conversion, stream.StreamNumber, AudioStreamCount, input.Audio, key)) {
      continue;
    }
    MuxAudioStream target;
    target.StreamNumber = stream.StreamNumber;
    target.Pcm = stream.Format == "PCM";
    target.DelayMs = stream.Delay;
    target.Emphasis = stream.Emphasis != 0;
    target.Mute = stream.Mute != 0;
    target.Traits = stream.Traits;
    AddAudioFiles(conversion, stream, i + 1, target);
    if (!target.Paths.empty()) {
      input.Audio.push_back(std::move(target));
    }
  }
}

void AddSubpictures(Conversion& conversion, MuxInput& input) {
  if (!conversion.Track.HasSubs) {
    return;
  }
  const auto sceneHolds = ScenesWithStillTime(conversion.Source.Disc, conversion.Index);
  const auto& streams = conversion.Track.SubStreams;
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const SubtitleStream& stream = streams[i];
    if (!stream.Removed && stream.MuxThisStream &&
        NumberIsFree(conversion, stream.StreamNumber, SubStreamCount, input.Subpictures,
                     SubStreamKey(conversion.Index, i + 1))) {
      input.Subpictures.push_back(
          {stream.StreamNumber, &stream,
           HeldPlays(conversion.Track, stream, sceneHolds, conversion.FramesPerSecond)});
    }
  }
}

void AddMarks(const Conversion& conversion, const TrackCells& cells, MuxInput& input) {
  const auto& scenes = conversion.Track.Scenes;
  for (std::size_t i = 0; i < scenes.size(); ++i) {
    const SceneUse use = cells.UseOf(i);
    input.Marks.push_back({.Scene = static_cast<int>(i),
                           .Frame = scenes[i].Frame,
                           .Name = scenes[i].Name,
                           .UopMask = static_cast<std::uint32_t>((use.Uops | scenes[i].Uops).to_ulong()),
                           .HoldsByStillTime = use.Holds});
  }
  std::ranges::stable_sort(input.Marks, {}, &MuxMark::Frame);
  if (input.Marks.empty()) {
    input.Marks.emplace_back();
  }
  input.Marks.front().Frame = 0;  // a track begins with its first scene
}

// The commands of the cell that plays a scene are dealt, one after the other, to the buttons of the sets
// that start within the scene.
void AddHighlights(const Conversion& conversion, const TrackCells& cells, MuxInput& input) {
  for (const HighlightPlay& play : conversion.Track.HighlightPlays) {
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

bool IsPicture(std::string_view path) {
  constexpr std::array<std::string_view, 4> Extensions{".bmp", ".png", ".jpg", ".jpeg"};
  const std::string lower = Lower(path);
  return std::ranges::any_of(Extensions,
                             [&](std::string_view extension) { return lower.ends_with(extension); });
}

MuxInput MakeMuxInput(const MuxInputSource& source, std::size_t trackIndex, std::vector<Message>& findings) {
  const Track& track = source.Sources[trackIndex];
  const std::string standard = track.Standard.empty() ? source.Disc.Standard() : track.Standard;
  Conversion conversion{source,  trackIndex, track, source.Disc.SourceFolder(), FramesPerSecond(standard),
                        findings};
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
  input.SourceFolder = conversion.Folder;
  const TrackCells cells(source.Entry, source.Domain, trackIndex);
  AddVideo(conversion, input);
  AddAudio(conversion, input);
  AddSubpictures(conversion, input);
  AddMarks(conversion, cells, input);
  AddHighlights(conversion, cells, input);
  return input;
}

}  // namespace quorvelant
