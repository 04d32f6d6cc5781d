#include "edit/segments.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/silent_ui.h"
#include "base/text.h"
#include "base/timecode.h"
#include "edit/button_commands.h"
#include "edit/change.h"
#include "edit/chapter_analysis.h"
#include "edit/live_sources.h"
#include "edit/messages.h"
#include "edit/new_track.h"
#include "edit/operation_ui.h"
#include "edit/scene_names.h"
#include "edit/track_names.h"
#include "model/keys.h"
#include "model/stream_maps.h"
#include "model/walk.h"
#include "script/script_tracks.h"

namespace quorvelant {

namespace {

using Node = SourceKey::Node;

Outcome NoSuch(std::string_view what, std::string_view key) {
  return Outcome::Refused(MessageOf(message::NoSuchElement, key, what, key));
}

std::int32_t SlideFramesOf(const EditSession& session, const Track& track) {
  const bool ntsc = TrackFramesPerSecond(session.Work(), track) == FramesPerSecond("NTSC");
  return ntsc ? session.Options().NtscSlide : session.Options().PalSlide;
}

template <class Stream>
bool IsNumberTaken(const std::vector<Stream>& streams, std::size_t own, std::int32_t number) {
  const auto live = LiveWithIndex(streams);
  return std::ranges::any_of(
      live, [&](const auto& at) { return at.first != own && at.second.StreamNumber == number; });
}

// Why a stream cannot have become what it is now.
template <class Stream>
std::optional<Message> RefuseNumber(const Track& track, const std::vector<Stream>& streams, std::size_t own,
                                    const Stream& before, std::size_t most) {
  const std::int32_t number = streams[own].StreamNumber;
  if (number == before.StreamNumber) {
    return std::nullopt;
  }
  if (track.IDsLocked) {
    return MessageOf(message::StreamIDsLocked, {});
  }
  const bool fits = number >= 0 && std::cmp_less(number, most) && !IsNumberTaken(streams, own, number);
  return fits ? std::nullopt : std::optional(MessageOf(message::StreamNumberUnfit, {}, number, most - 1));
}

}  // namespace

Outcome NewTrack(EditSession& session, std::string_view type, std::string name) {
  if (FolderText(type).empty()) {
    return NoSuch("track type", type);
  }
  name = name.empty() ? ProposedTrackName(session.Work()) : std::string(Trim(name));
  if (auto refusal = RefuseTrackName(session.Work(), name)) {
    return Outcome::Refused(std::move(*refusal));
  }
  Change change(session, "New Track");
  const std::size_t index = session.Work().Tracks.Count();
  Project& project = change.Touch({Part::OfTrack(index)});
  Track& track = *NewSegment(project.Tracks, type, name);
  const bool isSlideShow = type == "SlideShow";
  track.ExtendSlideForAudio = isSlideShow && session.Options().ExtendFinalSlide;
  track.ExtendFinalSubtitle = isSlideShow && session.Options().ExtendFinalSubtitle;
  NameNewScenes(project, index, {});
  return change.Commit(TrackKey(index));
}

Outcome RenameTrack(EditSession& session, std::string_view track, std::string name) {
  const auto key = LiveSource(session.Work(), track, Node::Track);
  if (!key) {
    return NoSuch("track", track);
  }
  name = std::string(Trim(name));
  const std::string& former = session.Work().Tracks[key->Track].TrackName;
  if (!EqualNoCase(former, name)) {  // another case of its own name is fine
    if (auto refusal = RefuseTrackName(session.Work(), name)) {
      return Outcome::Refused(std::move(*refusal));
    }
  }
  Change change(session, "Rename Track");
  change.EditTrack(key->Track).TrackName = std::move(name);
  return change.Commit(std::string(track));
}

Outcome AddPlay(EditSession& session, std::string_view listOrStream) {
  const Project& project = session.Work();
  const auto list = LiveSource(project, listOrStream, Node::VideoList);
  const auto stream = LiveSource(project, listOrStream, Node::AudioStream);
  if (!list && !stream) {
    return NoSuch("video play list or audio stream", listOrStream);
  }
  Change change(session, "Add Play");
  std::string key;
  bool added = false;
  if (list) {
    Track& track = change.EditTrack(list->Track);
    const bool single = track.TrackType == "Still" && !Live(track.VideoPlays).empty();
    if (single) {
      return Outcome::Refused(MessageOf(message::StillHasOnePlay, listOrStream));
    }
    added = AddVideoPlay(track) != nullptr;
    key = VideoPlayKey(list->Track, track.VideoPlays.size());
  } else {
    AudioStream& target = change.EditTrack(stream->Track).AudioStreams[stream->Number - 1];
    added = AddAudioPlay(target) != nullptr;
    key = AudioPlayKey(stream->Track, stream->Number, target.AudioPlays.size());
  }
  return added ? change.Commit(std::move(key))
               : Outcome::Refused(MessageOf(message::PlayBeforeIsEmpty, listOrStream));
}

Outcome AddAudio(EditSession& session, std::string_view track) {
  const auto key = LiveSource(session.Work(), track, Node::Track);
  if (!key) {
    return NoSuch("track", track);
  }
  Change change(session, "Add Audio Stream");
  Track& changed = change.EditTrack(key->Track);
  if (AddAudioStream(changed) == nullptr) {
    return Outcome::Refused(MessageOf(message::MostAudioStreams, track));
  }
  return change.Commit(AudioStreamKey(key->Track, changed.AudioStreams.size()));
}

Outcome AddSubtitles(EditSession& session, std::string_view track) {
  const auto key = LiveSource(session.Work(), track, Node::Track);
  if (!key) {
    return NoSuch("track", track);
  }
  Change change(session, "Add Subtitle Stream");
  Track& changed = change.EditTrack(key->Track);
  SilentUi nobody;
  OperationUi heard(nobody, Consent::None);
  if (AddEmptySubtitleStream(changed, heard) == nullptr) {
    return heard.HasErrors() ? heard.GaveUp() : Outcome::Refused(MessageOf(message::MostSubStreams, track));
  }
  return change.Commit(SubStreamKey(key->Track, changed.SubStreams.size()));
}

Outcome SetAudio(EditSession& session, std::string_view stream,
                 const std::function<void(AudioStream&)>& set) {
  const auto key = LiveSource(session.Work(), stream, Node::AudioStream);
  if (!key) {
    return NoSuch("audio stream", stream);
  }
  Change change(session, "Change Audio Stream");
  Track& track = change.EditTrack(key->Track);
  AudioStream& changed = track.AudioStreams[key->Number - 1];
  const AudioStream before = changed;
  set(changed);
  auto refusal = RefuseNumber(track, track.AudioStreams, key->Number - 1, before, AudioStreamCount);
  return refusal ? Outcome::Refused(std::move(*refusal)) : change.Commit(std::string(stream));
}

Outcome SetSubtitles(EditSession& session, std::string_view stream,
                     const std::function<void(SubtitleStream&)>& set) {
  const auto key = LiveSource(session.Work(), stream, Node::SubStream);
  if (!key) {
    return NoSuch("subtitle stream", stream);
  }
  Change change(session, "Change Subtitle Stream");
  Track& track = change.EditTrack(key->Track);
  SubtitleStream& changed = track.SubStreams[key->Number - 1];
  const SubtitleStream before = changed;
  set(changed);
  if (auto refusal = RefuseNumber(track, track.SubStreams, key->Number - 1, before, SubStreamCount)) {
    return Outcome::Refused(std::move(*refusal));
  }
  const auto modes = AdmittedSubDisplayModes(track);
  if (changed.DisplayMode != before.DisplayMode &&
      std::ranges::find(modes, changed.DisplayMode) == modes.end()) {
    return Outcome::Refused(
        MessageOf(message::DisplayModeUnfit, stream, changed.DisplayMode, fmt::join(modes, ", ")));
  }
  return change.Commit(std::string(stream));
}

Outcome SetDisplayMode(EditSession& session, std::string_view track, std::string_view mode) {
  const auto key = LiveSource(session.Work(), track, Node::Track);
  if (!key) {
    return NoSuch("track", track);
  }
  Change change(session, "Change Display Mode");
  Track& changed = change.EditTrack(key->Track);
  const auto modes = OfferedDisplayModes(changed);
  if (std::ranges::find(modes, mode) == modes.end()) {
    return Outcome::Refused(MessageOf(message::DisplayModeUnfit, track, mode, fmt::join(modes, ", ")));
  }
  changed.DisplayMode = mode;
  return change.Commit(std::string(track));
}

Outcome SetSlide(EditSession& session, std::string_view play, std::string_view duration) {
  const auto key = LiveSource(session.Work(), play, Node::VideoPlay);
  if (!key || session.Work().Tracks[key->Track].TrackType == "Motion") {
    return NoSuch("slide or still", play);
  }
  Change change(session, "Change Slide Duration");
  Track& track = change.EditTrack(key->Track);
  const int rate = TrackFramesPerSecond(change.Work(), track);
  const bool byDefault = Trim(duration).empty();
  const std::int64_t frames = byDefault ? SlideFramesOf(session, track) : TimecodeToFrames(duration, rate);
  if (frames <= 0) {
    return Outcome::Refused(MessageOf(message::SlideTimeMissing, play, duration));
  }
  VideoPlay& slide = track.VideoPlays[key->Number - 1];
  slide.SlideDuration = FramesToTimecode(frames, rate);
  slide.DurationSet = true;
  return change.Commit(std::string(play));
}

Outcome SetEnds(EditSession& session, std::string_view track, bool extendSlide, bool extendSubtitle) {
  const auto key = LiveSource(session.Work(), track, Node::Track);
  if (!key) {
    return NoSuch("track", track);
  }
  Change change(session, "Change Slideshow");
  Track& changed = change.EditTrack(key->Track);
  changed.ExtendSlideForAudio = extendSlide;
  changed.ExtendFinalSubtitle = extendSubtitle;
  return change.Commit(std::string(track));
}

Outcome NewScene(EditSession& session, std::string_view track, std::string_view timecode) {
  const auto key = LiveSource(session.Work(), track, Node::Track);
  if (!key) {
    return NoSuch("track", track);
  }
  Change change(session, "New Scene");
  const auto starts = ChapterStarts(change.Work(), key->Track, session.Indexes());
  const ButtonCommandCarrier buttons(change.Work(), key->Track);
  Track& changed = change.EditTrack(key->Track);
  const std::vector<Scene> before = changed.Scenes;
  SilentUi nobody;
  OperationUi heard(nobody, Consent::None);
  const auto correct = [&starts](std::int64_t frame) { return MoveToChapterStart(starts, frame); };
  if (!AddScene(changed, timecode, TrackFramesPerSecond(change.Work(), changed), heard, correct)) {
    return heard.GaveUp();
  }
  const auto added = std::ranges::mismatch(before, changed.Scenes).in2;
  const auto number = static_cast<std::size_t>(added - changed.Scenes.begin()) + 1;
  NameNewScenes(change.Touch({}), key->Track, before);
  buttons.Carry(change);
  return change.Commit(SceneKey(key->Track, number));
}

Outcome MoveScene(EditSession& session, std::string_view scene, std::string_view timecode) {
  const auto key = LiveSource(session.Work(), scene, Node::Scene);
  if (!key) {
    return NoSuch("scene", scene);
  }
  const Track& track = session.Work().Tracks[key->Track];
  const int rate = TrackFramesPerSecond(session.Work(), track);
  if (TimecodeToFrames(timecode, rate) == track.Scenes[key->Number - 1].Frame) {
    return Outcome::Done(std::string(scene));
  }
  if (key->Number == 1) {
    return Outcome::Refused(MessageOf(message::FirstSceneStays, scene));
  }
  Change change(session, "Move Scene");
  const auto starts = ChapterStarts(change.Work(), key->Track, session.Indexes());
  const ButtonCommandCarrier buttons(change.Work(), key->Track);
  std::vector<Scene>& scenes = change.EditTrack(key->Track).Scenes;
  const auto old = scenes.begin() + static_cast<std::ptrdiff_t>(key->Number - 1);
  Scene moved = std::move(*old);
  scenes.erase(old);
  const std::vector<Scene> others = scenes;
  SilentUi nobody;
  OperationUi heard(nobody, Consent::None);
  const auto correct = [&starts](std::int64_t frame) { return MoveToChapterStart(starts, frame); };
  if (!AddScene(change.EditTrack(key->Track), timecode, rate, heard, correct)) {
    return heard.GaveUp();
  }
  const auto added = std::ranges::mismatch(others, scenes).in2;
  moved.Frame = added->Frame;
  *added = std::move(moved);
  buttons.Carry(change);
  return change.Commit(SceneKey(key->Track, static_cast<std::size_t>(added - scenes.begin()) + 1));
}

Outcome SetSceneUops(EditSession& session, std::string_view scene, const UopMask& uops) {
  const auto key = LiveSource(session.Work(), scene, Node::Scene);
  if (!key) {
    return NoSuch("scene", scene);
  }
  Change change(session, "Change Scene");
  change.EditTrack(key->Track).Scenes[key->Number - 1].Uops = uops;
  return change.Commit(std::string(scene));
}

}  // namespace quorvelant
