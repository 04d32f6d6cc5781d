#include "edit/segment_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/random.h"
#include "base/silent_ui.h"
#include "base/timecode.h"
#include "edit/button_commands.h"
#include "edit/change.h"
#include "edit/chapter_analysis.h"
#include "edit/chapter_list.h"
#include "edit/import_audio.h"
#include "edit/import_subtitles.h"
#include "edit/import_video.h"
#include "edit/live_sources.h"
#include "edit/messages.h"
#include "edit/new_track.h"
#include "edit/operation_ui.h"
#include "edit/removal.h"
#include "edit/scene_names.h"
#include "edit/shown_sources.h"
#include "edit/source_paths.h"
#include "model/keys.h"
#include "model/walk.h"
#include "script/script_tracks.h"

namespace quorvelant {

namespace {

using Node = SourceKey::Node;

Outcome NoSuch(std::string_view what, std::string_view key) {
  return Outcome::Refused(MessageOf(message::NoSuchElement, key, what, key));
}

bool HasOtherFile(const Track& track, std::size_t play) {
  const auto live = LiveWithIndex(track.VideoPlays);
  return std::ranges::any_of(live,
                             [play](const auto& at) { return at.first != play && !at.second.File.empty(); });
}

// Whether the track may be what it is now: plays of a list are alike, and cells that show it count on its
// standard and aspect.
bool MayBecome(const Track& before, std::size_t play, const Track& now) {
  const bool isSameShape = now.Standard == before.Standard && now.Aspect == before.Aspect;
  const bool isSamePicture =
      isSameShape && now.Coding == before.Coding && now.Resolution == before.Resolution;
  const bool isShown = before.UsedInStructure && !before.Standard.empty();
  return HasOtherFile(before, play) ? isSamePicture : isSameShape || !isShown;
}

// The start of a slide among those ahead of it, in frames.
std::int64_t StartOfSlide(const Track& track, std::size_t play, int rate) {
  std::int64_t start = 0;
  for (std::size_t i = 0; i < play; ++i) {
    if (IsLive(track.VideoPlays[i])) {
      start += TimecodeToFrames(track.VideoPlays[i].SlideDuration, rate);
    }
  }
  return start;
}

// A new slide takes the time of the settings, and a chapter unless it is the first.
void SettleSlide(EditSession& session, Change& change, std::size_t index, std::size_t play) {
  Track& track = change.EditTrack(index);
  const int rate = TrackFramesPerSecond(change.Work(), track);
  const bool ntsc = rate == FramesPerSecond("NTSC");
  VideoPlay& slide = track.VideoPlays[play];
  if (!slide.DurationSet) {
    slide.SlideDuration =
        FramesToTimecode(ntsc ? session.Options().NtscSlide : session.Options().PalSlide, rate);
    slide.DurationSet = true;
  }
  const std::int64_t start = StartOfSlide(track, play, rate);
  if (start > 0 && session.Options().SlideChapters) {
    SilentUi nobody;  // a chapter that cannot be, the hundredth, is none
    track.VideoFrames = 0;
    AddScene(track, FramesToTimecode(start, rate), rate, nobody);
  }
}

// Scenes of a track under work, whose number cells know.
class SceneWork {
 public:
  SceneWork(EditSession& session, Change& change, std::size_t track)
      : session_(session),
        change_(change),
        track_(track),
        work_(change.Touch({Part::OfTrack(track)})),
        before_(work_.Tracks[track].Scenes),
        buttons_(work_, track) {
    const std::size_t entries = before_.size() > 1 ? work_.Disc.Count() : 0;
    for (std::size_t number = 1; number <= entries; ++number) {
      change.Touch({Part::OfEntry(number)});  // the cells that show the scenes, removed ones too
    }
  }

  [[nodiscard]] Project& Work() { return work_; }

  // What follows once scenes have come, moved or gone. Cells go with theirs, which is asked.
  std::optional<Outcome> Settle(Consent consent) {
    const Track& track = work_.Tracks[track_];
    std::vector<Scene> gone;
    std::ranges::copy_if(before_, std::back_inserter(gone), [&track](const Scene& scene) {
      return std::ranges::find(track.Scenes, scene.Name, &Scene::Name) == track.Scenes.end();
    });
    const ShownSource showing = gone.empty() ? ShownSource() : CellsShowing(work_, track_, gone);
    if (showing.CellCount > 0 && consent == Consent::None) {
      return Outcome::Asks(MessageOf(message::AskSourceRemoval, TrackKey(track_),
                                     fmt::format("the scenes of {} past its end", track.TrackName),
                                     showing.CellCount));
    }
    for (const std::string& key : showing.Keys) {
      TakeAway(change_, session_, key);
    }
    NameNewScenes(work_, track_, before_);
    buttons_.Carry(change_);
    return std::nullopt;
  }

 private:
  EditSession& session_;
  Change& change_;
  std::size_t track_;
  Project& work_;
  std::vector<Scene> before_;
  ButtonCommandCarrier buttons_;
};

Outcome ImportPicture(EditSession& session, const SourceKey& key, const std::string& file, UserInterface& ui,
                      Consent consent) {
  Change change(session, "Import Video");
  OperationUi heard(ui, consent);
  const Track before = change.Work().Tracks[key.Track];
  const std::size_t play = key.Number - 1;
  SceneWork scenes(session, change, key.Track);
  if (!ImportVideo(scenes.Work(), key.Track, play, file, session.Options().Import, session.Indexes(),
                   heard)) {
    return heard.GaveUp();
  }
  Track& track = change.EditTrack(key.Track);
  if (!MayBecome(before, play, track)) {
    return Outcome::Refused(MessageOf(message::ImportVideoUnlike, file));
  }
  if (track.TrackType == "SlideShow") {
    SettleSlide(session, change, key.Track, play);
  }
  if (auto question = scenes.Settle(consent)) {
    return *std::move(question);
  }
  heard.TellKept();
  return change.Commit(VideoPlayKey(key.Track, key.Number));
}

Outcome ImportSound(EditSession& session, const SourceKey& key, const std::string& file, UserInterface& ui,
                    Consent consent) {
  Change change(session, "Import Audio");
  OperationUi heard(ui, consent);
  const std::size_t stream = key.Number - 1;
  const AudioStream before = change.Work().Tracks[key.Track].AudioStreams[stream];
  const auto live = LiveWithIndex(before.AudioPlays);
  const bool mustMatch = std::ranges::any_of(
      live, [&key](const auto& at) { return at.first + 1 != key.Play && !at.second.File.empty(); });
  Project& project = change.Touch({Part::OfTrack(key.Track)});
  if (!ImportAudio(project, key.Track, stream, key.Play - 1, file, session.RulesInForce(), heard)) {
    return heard.GaveUp();
  }
  const AudioStream& now = project.Tracks[key.Track].AudioStreams[stream];
  if (mustMatch && (now.Format != before.Format || now.Traits != before.Traits)) {
    return Outcome::Refused(MessageOf(message::ImportAudioUnlike, file));
  }
  heard.TellKept();
  return change.Commit(AudioPlayKey(key.Track, key.Number, key.Play));
}

// Scenes come and go.
template <class Make>
Outcome ChangeScenes(EditSession& session, std::string_view track, std::string_view words, UserInterface& ui,
                     Consent consent, Make make) {
  const auto key = LiveSource(session.Work(), track, Node::Track);
  if (!key) {
    return NoSuch("track", track);
  }
  Change change(session, words);
  OperationUi heard(ui, Consent::None);
  SceneWork scenes(session, change, key->Track);
  if (!make(scenes.Work(), key->Track, heard)) {
    return heard.GaveUp();
  }
  if (auto question = scenes.Settle(consent)) {
    return *std::move(question);
  }
  heard.TellKept();
  return change.Commit(std::string(track));
}

}  // namespace

Outcome ImportFile(EditSession& session, std::string_view play, const std::string& file, UserInterface& ui,
                   Consent consent) {
  if (auto refusal = RefusePath(file)) {
    return Outcome::Refused(std::move(*refusal));
  }
  if (const auto picture = LiveSource(session.Work(), play, Node::VideoPlay)) {
    return ImportPicture(session, *picture, file, ui, consent);
  }
  const auto sound = LiveSource(session.Work(), play, Node::AudioPlay);
  return sound ? ImportSound(session, *sound, file, ui, consent) : NoSuch("video or audio play", play);
}

Outcome ImportSubtitleList(EditSession& session, std::string_view stream, const std::string& file,
                           UserInterface& ui) {
  const auto key = LiveSource(session.Work(), stream, Node::SubStream);
  if (!key) {
    return NoSuch("subtitle stream", stream);
  }
  if (auto refusal = RefusePath(file)) {  // where its bitmaps are
    return Outcome::Refused(std::move(*refusal));
  }
  Change change(session, "Import Subtitles");
  OperationUi heard(ui, Consent::None);
  Project& project = change.Touch({Part::OfTrack(key->Track), {PartKind::Palettes}, {PartKind::FirstPlay}});
  for (std::size_t number = 1; number <= project.Disc.Count(); ++number) {
    change.Touch({Part::OfEntry(number)});  // whose PGCs may take the palette
  }
  const std::vector<SubPicturePlay>& plays = project.Tracks[key->Track].SubStreams[key->Number - 1].SubPlays;
  const std::size_t before = plays.size();
  if (!ImportSubtitleScript(project, key->Track, key->Number - 1, SystemPath(file, project.SourceFolder()),
                            session.Options().SubRip, session.RulesInForce(), heard)) {
    return heard.GaveUp();
  }
  WarnOfMissingBitmaps(project, std::span(plays).subspan(before), heard);
  heard.TellKept();
  return change.Commit(std::string(stream));
}

Outcome ImportChapters(EditSession& session, std::string_view track, const std::string& list,
                       UserInterface& ui) {
  return ChangeScenes(session, track, "Import Chapters", ui, Consent::None,
                      [&](Project& project, std::size_t index, UserInterface& heard) {
                        return ImportChapterList(project, index, SystemPath(list, project.SourceFolder()),
                                                 session.Indexes(), heard);
                      });
}

Outcome Analyse(EditSession& session, std::string_view track, UserInterface& ui, Consent consent) {
  return ChangeScenes(session, track, "Analyse", ui, consent,
                      [&](Project& project, std::size_t index, UserInterface& heard) {
                        return AnalyseChapters(project, index, session.Indexes(), heard);
                      });
}

}  // namespace quorvelant
