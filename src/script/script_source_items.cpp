// Headers, stages, and the items of source material.
#include <fmt/format.h>

#include <array>
#include <utility>

#include "script/script_tables.h"

namespace quorvelant {

namespace {

// --- stages ---

constexpr std::array<std::string_view, 4> StageWords{"Loading Scenario", "Loading Default Information",
                                                     "Loading Data Files", "Loading Track Folder"};
bool EnterStage(ReaderState& state, std::string_view /*value*/, std::size_t number) {
  state.Stage = StageWords[number];
  Enter(state, Segment::None);
  state.InDataFolder = false;
  return true;
}
bool EnterDataFolder(ReaderState& state, std::string_view value, std::size_t number) {
  EnterStage(state, value, number);
  state.IsScenarist = true;
  state.InDataFolder = true;
  return true;
}

// --- data folder ---

// Files stand in the data folder alone; elsewhere the same word is no item.
bool AddDataVideo(ReaderState& state, std::string_view /*value*/, std::size_t still) {
  if (!state.InDataFolder) {
    return false;
  }
  Enter(state, Segment::DataVideo);
  state.Video.Add().FileType = still != 0 ? "Still" : "Motion";
  return true;
}
constexpr std::array<std::string_view, 3> AudioTypes{"AC3", "PCM", "DTS"};
bool AddDataAudio(ReaderState& state, std::string_view /*value*/, std::size_t type) {
  if (!state.InDataFolder) {
    return false;
  }
  Enter(state, Segment::DataAudio);
  state.Audio.Add().AudioType = AudioTypes[type];
  return true;
}
bool AddDataSub(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (!state.InDataFolder) {
    return false;
  }
  Enter(state, Segment::DataSub);
  state.Subs.Add();
  return true;
}

// --- tracks ---

constexpr std::array<std::string_view, 3> TrackTypes{"Motion", "Still", "SlideShow"};
bool AddTrack(ReaderState& state, std::string_view /*value*/, std::size_t type) {
  state.ClosePalette();
  Enter(state, Segment::Track);
  state.InDataFolder = false;
  Track track;
  track.Filled = true;
  track.TrackType = TrackTypes[type];
  state.Target.Tracks.Add(std::move(track));
  return true;
}
bool AddVideoPlay(ReaderState& state, Segment segment) {
  Track* track = state.OpenTrack();
  if (track == nullptr) {
    return false;
  }
  Enter(state, segment);
  track->VideoPlays.emplace_back();
  return true;
}
// The own form says by its word what the track is.
bool AddTypedPlay(ReaderState& state, std::string_view /*value*/, std::size_t type) {
  if (!AddVideoPlay(state, Segment::Track)) {
    return false;
  }
  state.OpenTrack()->TrackType = TrackTypes[type];
  return true;
}
// The other dialect's plays name a data file.
bool AddNamedPlay(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  return AddVideoPlay(state, Segment::DataVideo);
}
// Both dialects write "Item=Video Play"; only the other one names a data file by it.
bool AddMotionPlay(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (!AddVideoPlay(state, state.IsScenarist ? Segment::DataVideo : Segment::Track)) {
    return false;
  }
  state.OpenTrack()->TrackType = "Motion";
  return true;
}
bool AddAudioStream(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  Track* track = state.OpenTrack();
  if (track == nullptr) {
    return false;
  }
  Enter(state, Segment::Audio);
  AudioStream stream;
  stream.StreamName = fmt::format("Audio Stream {}", track->AudioStreams.size() + 1);
  stream.Language.clear();
  stream.Extension.clear();
  stream.StreamNumber = static_cast<std::int32_t>(track->AudioStreams.size());
  track->AudioStreams.push_back(std::move(stream));
  track->HasAudio = true;
  return true;
}
bool AddAudioPlay(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  AudioStream* stream = state.OpenAudio();
  if (stream == nullptr) {
    return false;
  }
  Enter(state, state.IsScenarist ? Segment::DataAudio : Segment::Audio);
  stream->AudioPlays.emplace_back();
  return true;
}
bool AddSubtitles(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  Track* track = state.OpenTrack();
  if (track == nullptr) {
    return false;
  }
  Enter(state, Segment::SubPicture);
  SubtitleStream stream;
  stream.StreamName = fmt::format("Subtitle Stream {}", track->SubStreams.size() + 1);
  stream.Language.clear();
  stream.Extension.clear();
  stream.StreamNumber = static_cast<std::int32_t>(track->SubStreams.size());
  track->SubStreams.push_back(std::move(stream));
  track->HasSubs = true;
  return true;
}
bool AddSubPlay(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  SubtitleStream* stream = state.OpenSubtitles();
  if (stream == nullptr) {
    return false;
  }
  Enter(state, Segment::SubPlay);
  stream->SubPlays.emplace_back();
  return true;
}
bool AddHighlight(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  Track* track = state.OpenTrack();
  if (track == nullptr) {
    return false;
  }
  Enter(state, Segment::Highlight);
  track->HighlightPlays.emplace_back();
  track->HasHighlights = true;
  return true;
}
bool OpenHighlightList(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (Track* track = state.OpenTrack()) {
    track->HasHighlights = true;
    return true;
  }
  return false;
}
bool OpenScheme(ReaderState& state, std::string_view /*value*/, std::size_t number) {
  if (state.OpenHighlight() == nullptr) {
    return false;
  }
  Enter(state, Segment::Highlight);
  state.Scheme = number - 1;
  return true;
}
bool AddButton(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  HighlightPlay* play = state.OpenHighlight();
  if (play == nullptr) {
    return false;
  }
  Enter(state, Segment::Button);
  state.Area = 0;
  play->Buttons.emplace_back().Number = static_cast<std::int32_t>(play->Buttons.size());
  return true;
}
bool AddScene(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  Track* track = state.OpenTrack();
  if (track == nullptr) {
    return false;
  }
  Enter(state, Segment::Scene);
  track->Scenes.emplace_back();
  return true;
}

bool OpenConversion(ReaderState& state, std::string_view /*value*/, std::size_t number) {
  state.Color = static_cast<ColorTarget>(number);
  return true;
}
bool OpenQuad(ReaderState& state, std::string_view /*value*/, std::size_t number) {
  state.Quad = static_cast<QuadTarget>(number);
  return true;
}

constexpr std::size_t Code(ColorTarget target) {
  return static_cast<std::size_t>(target);
}
constexpr std::size_t Code(QuadTarget target) {
  return static_cast<std::size_t>(target);
}

constexpr std::array Items{
    // Headers of both dialects.
    Word{"data=settings", PassOver},
    Word{"data=tracks", PassOver},
    Word{"data=structure", PassOver},
    Word{"data=palette", PassOver},
    Word{"data format version=4", PassOver},
    Word{"audio streams=list", PassOver},
    Word{"sub-picture streams=list", PassOver},
    Word{"recording information(reci)", PassOver},
    Word{"audio langauge code extension", PassOver},  // misspelt in the files
    Word{"default subtitle text=default subtitle text", PassOver},
    Word{"object=version", PassOver},
    // Stages.
    Word{"object=scenario", EnterStage, 0},
    Word{"object=default setting", EnterStage, 1},
    Word{"object=data folder", EnterDataFolder, 2},
    Word{"item=data folder", EnterDataFolder, 2},
    Word{"object=track folder", EnterStage, 3},
    // Data folder.
    Word{"item=video", AddDataVideo, 0},
    Word{"item=encoded still", AddDataVideo, 1},
    Word{"item=still", AddDataVideo, 1},
    Word{"item=ac3 audio", AddDataAudio, 0},
    Word{"item=pcm audio", AddDataAudio, 1},
    Word{"item=dts audio", AddDataAudio, 2},
    Word{"item=sub-picture", AddDataSub},
    // Tracks.
    Word{"item=track", AddTrack, 0},
    Word{"item=video track", AddTrack, 0},
    Word{"item=still menu track", AddTrack, 1},
    Word{"item=slide show track", AddTrack, 2},
    Word{"item=still show track", AddTrack, 2},
    Word{"item=track folder", PassOver},
    Word{"item=video play list", PassOver},
    Word{"item=still play list", PassOver},
    Word{"item=slideshow play list", PassOver},
    Word{"item=scene list", PassOver},
    Word{"item=highlight list", OpenHighlightList},
    Word{"item=video play", AddMotionPlay},
    Word{"item=main video play", AddNamedPlay},
    Word{"item=still menu play", AddNamedPlay},
    Word{"item=still show play", AddNamedPlay},
    Word{"item=slide show play", AddNamedPlay},
    Word{"item=still play", AddTypedPlay, 1},
    Word{"item=slideshow play", AddTypedPlay, 2},
    Word{"item=audio play list", AddAudioStream},
    Word{"item=audio stream", AddAudioStream},
    Word{"item=audio play", AddAudioPlay},
    Word{"item=scene", AddScene},
    Word{"item=subpicture", AddSubtitles},
    Word{"item=sub-picture stream", AddSubtitles},
    Word{"item=subpicture play", AddSubPlay},
    Word{"item=sub-picture play", AddSubPlay},
    Word{"highlight stream=highlight stream", AddHighlight},
    Word{"item=highlight play", AddHighlight},
    Word{"button color *=button color", OpenScheme, 1, 3},
    Word{"color scheme *", OpenScheme, 1, 3},
    Word{"item=button", AddButton},
    // Colours.
    Word{"rgb color=rgb", PassOver},
    Word{"color 4(bg)=conversion", OpenConversion, Code(ColorTarget::ConversionBg)},
    Word{"color 3(p)=conversion", OpenConversion, Code(ColorTarget::ConversionP)},
    Word{"color 2(e1)=conversion", OpenConversion, Code(ColorTarget::ConversionE1)},
    Word{"color 1(e2)=conversion", OpenConversion, Code(ColorTarget::ConversionE2)},
    Word{"color=color", OpenQuad, Code(QuadTarget::PlayColor)},
    Word{"contrast=contrast", OpenQuad, Code(QuadTarget::PlayContrast)},
};

}  // namespace

std::span<const Word> SourceItems() {
  return Items;
}

void Enter(ReaderState& state, Segment segment) {
  state.Open = segment;
  state.Uops = nullptr;
  state.TitleUops = nullptr;
  state.Quad = QuadTarget::None;
  state.Color = ColorTarget::None;
  state.AttributeOf = ReaderState::Attribute::None;
}

}  // namespace quorvelant
