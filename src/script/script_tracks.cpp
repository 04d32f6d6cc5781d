#include "script/script_tracks.h"

#include <algorithm>

#include "base/timecode.h"
#include "model/cls_dvd.h"
#include "model/picture_file.h"
#include "script/item_names.h"
#include "script/source_keys.h"
#include "script/write_keys.h"

namespace quorvelant {

namespace {

// The items of a track's video list, by its type.
struct PlayItems {
  std::string_view List;
  std::string_view Play;
};
PlayItems ItemsOf(const Track& track) {
  if (track.TrackType == "Motion") {
    return {item::VideoList, item::VideoPlay};
  }
  return track.TrackType == "Still" ? PlayItems{item::StillList, item::StillPlay}
                                    : PlayItems{item::SlideList, item::SlidePlay};
}

void WriteVideoPlays(ScriptText& text, const Track& track) {
  const PlayItems items = ItemsOf(track);
  text.Open(items.List);
  for (const VideoPlay& video : track.VideoPlays) {
    if (video.File.empty() || video.Removed) {
      continue;
    }
    const bool isSlide = track.TrackType == "SlideShow" || video.DurationSet;
    text.Open(items.Play);
    WriteKeys(text, VideoPlayKeys, video, {.Holds = isSlide ? Written::OfSlides : Written::Always});
    text.Close();
  }
  WriteKeys(text, PlayListKeys, track);
  text.Close();
}

void WriteAudio(ScriptText& text, const AudioStream& stream) {
  text.Open(item::AudioStream);
  WriteKeys(text, AudioKeys, stream, {.Holds = stream.Format == "PCM" ? Written::OfPcm : Written::Always});
  for (const AudioPlay& play : stream.AudioPlays) {
    if (!play.File.empty() && !play.Removed) {
      text.Open(item::AudioPlay);
      WriteKeys(text, AudioPlayKeys, play);
      text.Close();
    }
  }
  text.Close();
}

void WriteSubtitles(ScriptText& text, const SubtitleStream& stream, int framesPerSecond) {
  text.Open(item::Subtitles);
  WriteKeys(text, SubtitleKeys, stream);
  for (const SubPicturePlay& play : stream.SubPlays) {
    if (play.Used) {
      text.Open(item::SubPlay);
      WriteKeys(text, SubPlayKeys, play, {.FramesPerSecond = framesPerSecond});
      text.Close();
    }
  }
  text.Close();
}

void WriteHighlight(ScriptText& text, const HighlightPlay& play) {
  text.Open(item::Highlight);
  WriteKeys(text, HighlightKeys, play);
  for (std::size_t i = 0; i < play.Schemes.size(); ++i) {
    text.OpenNumbered(item::Scheme, i + 1);
    WriteKeys(text, SchemeKeys, play.Schemes[i]);
    text.Close();
  }
  for (const HighlightButton& button : play.Buttons) {
    text.Open(item::Button);
    WriteKeys(text, ButtonKeys, button);
    text.Close();
  }
  text.Close();
}

void WriteScene(ScriptText& text, const Scene& scene, int framesPerSecond) {
  text.Open(item::Scene);
  WriteKeys(text, SceneKeys, scene, {.FramesPerSecond = framesPerSecond});
  text.Open(item::Uops);
  WriteUops(text, scene.Uops);
  text.Close();
  text.Close();
}

// The first play that is written; nullptr where the track has no file.
const VideoPlay* FirstFile(const Track& track) {
  const auto found = std::ranges::find_if(
      track.VideoPlays, [](const VideoPlay& play) { return !play.Removed && !play.File.empty(); });
  return found == track.VideoPlays.end() ? nullptr : &*found;
}

// Films and encoded stills tell their aspect themselves.
bool IsBitmapTrack(const Track& track) {
  return IsPicture(FirstFile(track)->File);
}

void WriteTrack(ScriptText& text, const Track& track, int framesPerSecond) {
  text.Open(item::Track);
  const bool wideBitmap = track.Aspect == "16:9" && IsBitmapTrack(track);
  WriteKeys(text, TrackKeys, track, {.Holds = wideBitmap ? Written::OfWideBitmaps : Written::Always});
  WriteVideoPlays(text, track);
  if (track.HasAudio) {
    for (const AudioStream& stream : track.AudioStreams) {
      if (!stream.Removed) {
        WriteAudio(text, stream);
      }
    }
  }
  if (track.HasSubs) {
    for (const SubtitleStream& stream : track.SubStreams) {
      if (!stream.Removed) {
        WriteSubtitles(text, stream, framesPerSecond);
      }
    }
  }
  if (track.HasHighlights) {
    text.Open(item::HighlightList);
    for (const HighlightPlay& play : track.HighlightPlays) {
      WriteHighlight(text, play);
    }
    text.Close();
  }
  text.Open(item::SceneList);
  for (const Scene& scene : track.Scenes) {
    WriteScene(text, scene, framesPerSecond);
  }
  text.Close();
  text.Close();
}

}  // namespace

void WriteUops(ScriptText& text, const UopMask& uops) {
  for (std::size_t i = 0; i < UserOperationCount; ++i) {
    if (uops[i]) {
      text.Value(CLsDVD::UserOP(i), item::Prohibited);
    }
  }
}

int TrackFramesPerSecond(const Project& project, const Track& track) {
  return FramesPerSecond(track.Standard.empty() ? project.Standard() : track.Standard);
}

void WriteTracks(ScriptText& text, const Project& project) {
  if (project.Tracks.Count() > 0) {
    text.Open(item::Tracks);
  }
  for (const Track& track : project.Tracks) {
    if (track.Filled && !track.Removed && FirstFile(track) != nullptr) {
      WriteTrack(text, track, TrackFramesPerSecond(project, track));
    }
  }
  text.Close();
}

}  // namespace quorvelant
