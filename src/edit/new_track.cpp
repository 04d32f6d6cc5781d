#include "edit/new_track.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "disc/video_standard.h"
#include "edit/messages.h"
#include "model/display_mode.h"
#include "model/my_dvd.h"
#include "model/stream_maps.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

template <class Play>
Play* AddPlay(std::vector<Play>& plays) {
  const auto live = Live(plays);
  if (!live.empty() && live.back()->File.empty()) {
    return nullptr;
  }
  return &plays.emplace_back();
}

bool HasVideo(const Track& track) {
  return std::any_of(track.VideoPlays.begin(), track.VideoPlays.end(),
                     [](const VideoPlay& play) { return IsLive(play) && !play.File.empty(); });
}

bool HasSceneAt(const Track& track, std::int64_t frame) {
  return std::any_of(track.Scenes.begin(), track.Scenes.end(),
                     [frame](const Scene& scene) { return scene.Frame == frame; });
}

// Names stay unique within the track also where scenes were taken away.
std::string NextSceneName(const Track& track) {
  std::string name;
  for (std::size_t number = track.Scenes.size() + 1;; ++number) {
    name = fmt::format("{}_Scene{}", track.TrackName, number);
    const bool taken = std::any_of(track.Scenes.begin(), track.Scenes.end(),
                                   [&name](const Scene& scene) { return scene.Name == name; });
    if (!taken) {
      return name;
    }
  }
}

// Why a timecode cannot be a scene; nullptr where it can.
const MessageKind* WhyNoScene(const Track& track, std::string_view timecode, std::int64_t frame,
                              std::int64_t endMargin) {
  if (Trim(timecode).empty() || frame < 0) {
    return &message::SceneTimeMissing;
  }
  const bool unheld = frame > std::numeric_limits<std::int32_t>::max();
  if (unheld || (track.VideoFrames > 0 && frame >= track.VideoFrames)) {
    return &message::SceneTimeTooLate;
  }
  if (track.VideoFrames > 0 && frame >= track.VideoFrames - endMargin) {
    return &message::SceneTimeNearEnd;
  }
  if (HasSceneAt(track, frame)) {
    return &message::SceneTimeTaken;
  }
  return track.Scenes.size() >= MostScenes ? &message::TooManyScenes : nullptr;
}

}  // namespace

Scene DefaultScene(std::string_view trackName) {
  Scene scene;
  scene.Name = fmt::format("{}_Scene1", trackName);
  return scene;
}

Track* NewSegment(Tracks& tracks, std::string_view type, std::string_view name) {
  if (name.empty() && Live(tracks).size() >= MostTracksByHand) {
    return nullptr;
  }
  Track track;
  track.TrackName = name.empty() ? fmt::format("Track_{}", tracks.Count() + 1) : std::string(name);
  track.TrackType = type;
  track.Filled = true;
  track.VideoPlays.emplace_back();
  track.Scenes.push_back(DefaultScene(track.TrackName));
  return &tracks.Add(std::move(track));
}

VideoPlay* AddVideoPlay(Track& track) {
  return AddPlay(track.VideoPlays);
}

AudioPlay* AddAudioPlay(AudioStream& stream) {
  return AddPlay(stream.AudioPlays);
}

AudioStream* AddAudioStream(Track& track) {
  std::array<bool, AudioStreamCount> used{};
  for (const AudioStream* stream : Live(track.AudioStreams)) {
    if (stream->StreamNumber >= 0 && static_cast<std::size_t>(stream->StreamNumber) < used.size()) {
      used[static_cast<std::size_t>(stream->StreamNumber)] = true;
    }
  }
  const bool* const free = std::find(used.begin(), used.end(), false);
  if (free == used.end()) {
    return nullptr;
  }
  AudioStream stream;
  stream.StreamName = fmt::format("Audio Stream {}", track.AudioStreams.size() + 1);
  stream.StreamNumber = static_cast<std::int32_t>(free - used.data());
  stream.AudioPlays.emplace_back();
  return &track.AudioStreams.emplace_back(std::move(stream));
}

SubtitleStream* AddEmptySubtitleStream(Track& track, UserInterface& ui) {
  if (!HasVideo(track)) {
    ui.Tell(MessageOf(message::SubtitlesNeedVideo, {}));
    return nullptr;
  }
  const std::vector<std::int32_t> free = GetSubStreamID(track);
  const bool first = Live(track.SubStreams).empty();
  if (free.empty() && !first) {
    return nullptr;
  }
  SubtitleStream stream;
  stream.StreamName = fmt::format("Subtitle Stream {}", track.SubStreams.size() + 1);
  stream.StreamNumber = first ? 0 : free.front();
  stream.DisplayMode = AdmittedSubDisplayModes(track).front();
  track.HasSubs = true;
  return &track.SubStreams.emplace_back(std::move(stream));
}

NewSubtitleStream AddSubtitleStream(Track& track, UserInterface& ui) {
  NewSubtitleStream result;
  result.Stream = AddEmptySubtitleStream(track, ui);
  result.ImportScript = result.Stream != nullptr && ui.Ask({}, AskImportScript, false);
  return result;
}

bool AddScene(Track& track, std::string_view timecode, int framesPerSecond, UserInterface& ui,
              const FrameCorrection& correct) {
  std::int64_t frame = TimecodeToFrames(timecode, framesPerSecond);
  const std::int64_t margin = TimingOf(framesPerSecond == NtscTiming.FramesPerSecond).SceneMarginFrames;
  const MessageKind* refusal = WhyNoScene(track, timecode, frame, margin);
  if (refusal == nullptr && correct) {
    frame = correct(frame);
    refusal = HasSceneAt(track, frame) ? &message::CorrectedSceneTimeTaken : nullptr;
  }
  if (refusal != nullptr) {
    ui.Tell(MessageOf(*refusal, {}));
    return false;
  }
  Scene scene;
  scene.Name = NextSceneName(track);
  scene.Frame = static_cast<std::int32_t>(frame);
  const auto place = std::upper_bound(track.Scenes.begin(), track.Scenes.end(), frame,
                                      [](std::int64_t at, const Scene& other) { return at < other.Frame; });
  track.Scenes.insert(place, std::move(scene));
  return true;
}

std::vector<std::string_view> OfferedDisplayModes(const Track& track) {
  if (track.Aspect == "16:9") {
    return {display_mode::All.begin(), display_mode::All.end()};
  }
  if (!track.Pan && !track.Letter) {
    return {display_mode::NotSpecified};
  }
  std::vector<std::string_view> modes;
  if (track.Pan) {
    modes = {display_mode::OnlyPanScan, display_mode::Both};
  }
  if (track.Letter) {
    modes.push_back(display_mode::OnlyLetterBox);
  }
  return modes;
}

void SetVideoInfo(Track& track) {
  const std::vector<std::string_view> modes = OfferedDisplayModes(track);
  if (std::find(modes.begin(), modes.end(), track.DisplayMode) == modes.end()) {
    track.DisplayMode = modes.front();
  }
}

std::vector<std::string_view> AdmittedSubDisplayModes(const Track& track) {
  if (track.DisplayMode == display_mode::OnlyPanScan) {
    return {"Pan", "Wide", "Wide/Letter"};
  }
  if (track.DisplayMode == display_mode::OnlyLetterBox) {
    return {"LetterBox", "Wide", "Wide/Letter"};
  }
  if (track.DisplayMode == display_mode::Both) {
    return {"Pan", "LetterBox", "Wide", "Wide/Letter", "Pan/Letter"};
  }
  return {track.Aspect == "4:3" ? std::string_view("Normal") : std::string_view("Wide")};
}

}  // namespace quorvelant
