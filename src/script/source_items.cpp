// Headers, stages, and the items of source material.
#include <fmt/format.h>

#include <array>
#include <utility>

#include "script/item_names.h"
#include "script/vocabulary.h"

namespace quorvelant {

namespace {

// --- stages ---

constexpr std::array<std::string_view, 4> StageWords{"Loading Scenario", "Loading Default Information",
                                                     "Loading Data Files", "Loading Track Folder"};
bool EnterStage(ReaderState& state, std::size_t number) {
  state.Outcome.Stage = StageWords[number];
  state.Enter(Segment::None);
  state.Data.Listed = false;
  return true;
}
bool EnterDataFolder(ReaderState& state, std::size_t number) {
  EnterStage(state, number);
  state.Traits.IsScenarist = true;
  state.Data.Listed = true;
  return true;
}

// --- data folder ---

// Files stand in the data folder alone; elsewhere the same word is no item.
bool AddDataVideo(ReaderState& state, std::size_t still) {
  if (!state.Data.Listed) {
    return false;
  }
  state.Enter(Segment::DataVideo);
  state.Data.Video.Add().FileType = still != 0 ? "Still" : "Motion";
  return true;
}
constexpr std::array<std::string_view, 3> AudioTypes{"AC3", "PCM", "DTS"};
bool AddDataAudio(ReaderState& state, std::size_t type) {
  if (!state.Data.Listed) {
    return false;
  }
  state.Enter(Segment::DataAudio);
  state.Data.Audio.Add().AudioType = AudioTypes[type];
  return true;
}
bool AddDataSub(ReaderState& state, std::size_t /*number*/) {
  if (!state.Data.Listed) {
    return false;
  }
  state.Enter(Segment::DataSub);
  state.Data.Subs.Add();
  return true;
}

// --- tracks ---

constexpr std::array<std::string_view, 3> TrackTypes{"Motion", "Still", "SlideShow"};
bool AddTrack(ReaderState& state, std::size_t type) {
  state.ClosePalette();
  state.Enter(Segment::Track);
  state.Data.Listed = false;
  Track track;
  track.Filled = true;
  track.TrackType = TrackTypes[type];
  state.Target.Tracks.Add(std::move(track));
  return true;
}
bool AddVideoPlay(ReaderState& state, Segment segment) {
  Track* track = state.LastTrack();
  if (track == nullptr) {
    return false;
  }
  state.Enter(segment);
  track->VideoPlays.emplace_back();
  return true;
}
// The own form says by its word what the track is.
bool AddTypedPlay(ReaderState& state, std::size_t type) {
  if (!AddVideoPlay(state, Segment::Track)) {
    return false;
  }
  state.LastTrack()->TrackType = TrackTypes[type];
  return true;
}
// The other dialect's plays name a data file.
bool AddNamedPlay(ReaderState& state, std::size_t /*number*/) {
  return AddVideoPlay(state, Segment::DataVideo);
}
// Both dialects write "Item=Video Play"; only the other one names a data file by it.
bool AddMotionPlay(ReaderState& state, std::size_t /*number*/) {
  if (!AddVideoPlay(state, state.Traits.IsScenarist ? Segment::DataVideo : Segment::Track)) {
    return false;
  }
  state.LastTrack()->TrackType = "Motion";
  return true;
}
bool AddAudioStream(ReaderState& state, std::size_t /*number*/) {
  Track* track = state.LastTrack();
  if (track == nullptr) {
    return false;
  }
  state.Enter(Segment::Audio);
  AudioStream stream;
  stream.StreamName = fmt::format("Audio Stream {}", track->AudioStreams.size() + 1);
  stream.Language.clear();
  stream.Extension.clear();
  stream.StreamNumber = static_cast<std::int32_t>(track->AudioStreams.size());
  track->AudioStreams.push_back(std::move(stream));
  track->HasAudio = true;
  return true;
}
bool AddAudioPlay(ReaderState& state, std::size_t /*number*/) {
  AudioStream* stream = state.LastAudio();
  if (stream == nullptr) {
    return false;
  }
  state.Enter(state.Traits.IsScenarist ? Segment::DataAudio : Segment::Audio);
  stream->AudioPlays.emplace_back();
  return true;
}
bool AddSubtitles(ReaderState& state, std::size_t /*number*/) {
  Track* track = state.LastTrack();
  if (track == nullptr) {
    return false;
  }
  state.Enter(Segment::SubPicture);
  SubtitleStream stream;
  stream.StreamName = fmt::format("Subtitle Stream {}", track->SubStreams.size() + 1);
  stream.Language.clear();
  stream.Extension.clear();
  stream.StreamNumber = static_cast<std::int32_t>(track->SubStreams.size());
  track->SubStreams.push_back(std::move(stream));
  track->HasSubs = true;
  return true;
}
bool AddSubPlay(ReaderState& state, std::size_t /*number*/) {
  SubtitleStream* stream = state.LastSubtitles();
  if (stream == nullptr) {
    return false;
  }
  state.Enter(Segment::SubPlay);
  stream->SubPlays.emplace_back();
  return true;
}
bool AddHighlight(ReaderState& state, std::size_t /*number*/) {
  Track* track = state.LastTrack();
  if (track == nullptr) {
    return false;
  }
  state.Enter(Segment::Highlight);
  track->HighlightPlays.emplace_back();
  track->HasHighlights = true;
  return true;
}
bool OpenHighlightList(ReaderState& state, std::size_t /*number*/) {
  if (Track* track = state.LastTrack()) {
    track->HasHighlights = true;
    return true;
  }
  return false;
}
bool OpenScheme(ReaderState& state, std::size_t number) {
  if (state.LastHighlight() == nullptr) {
    return false;
  }
  state.Enter(Segment::Highlight);
  state.Overlay.Scheme = number - 1;
  return true;
}
bool AddButton(ReaderState& state, std::size_t /*number*/) {
  HighlightPlay* play = state.LastHighlight();
  if (play == nullptr) {
    return false;
  }
  state.Enter(Segment::Button);
  state.Overlay.Area = 0;
  HighlightButton& button = play->Buttons.emplace_back();
  button.Number = static_cast<std::int32_t>(play->Buttons.size());
  return true;
}
bool AddScene(ReaderState& state, std::size_t /*number*/) {
  Track* track = state.LastTrack();
  if (track == nullptr) {
    return false;
  }
  state.Enter(Segment::Scene);
  track->Scenes.emplace_back();
  return true;
}

constexpr std::array Conversions{&SubPicturePlay::ConversionBg, &SubPicturePlay::ConversionP,
                                 &SubPicturePlay::ConversionE1, &SubPicturePlay::ConversionE2};
bool OpenConversion(ReaderState& state, std::size_t which) {
  state.Overlay.Color = {.OfSubtitle = Conversions[which], .OfPalette = {}};
  return true;
}
constexpr std::array<std::int32_t SubPicturePlay::*, 4> PlayColor{
    &SubPicturePlay::ColorE2, &SubPicturePlay::ColorE1, &SubPicturePlay::ColorP, &SubPicturePlay::ColorBg};
constexpr std::array<std::int32_t SubPicturePlay::*, 4> PlayContrast{
    &SubPicturePlay::ContrastE2, &SubPicturePlay::ContrastE1, &SubPicturePlay::ContrastP,
    &SubPicturePlay::ContrastBg};
bool OpenColor(ReaderState& state, std::size_t /*number*/) {
  state.Overlay.Quad = {.OfSubtitle = &PlayColor, .OfScheme = nullptr};
  return true;
}
bool OpenContrast(ReaderState& state, std::size_t /*number*/) {
  state.Overlay.Quad = {.OfSubtitle = &PlayContrast, .OfScheme = nullptr};
  return true;
}

constexpr std::array Items{
    // Headers of both dialects.
    ItemWord{item::Settings},
    ItemWord{item::Tracks},
    ItemWord{item::Structure},
    ItemWord{item::Palettes},
    ItemWord{"data format version=4"},
    ItemWord{"audio streams=list"},
    ItemWord{"sub-picture streams=list"},
    ItemWord{"recording information(reci)"},
    ItemWord{"audio langauge code extension"},  // misspelt in the files
    ItemWord{"default subtitle text=default subtitle text"},
    ItemWord{"object=version"},
    // Stages.
    ItemWord{"object=scenario", EnterStage, 0},
    ItemWord{"object=default setting", EnterStage, 1},
    ItemWord{"object=data folder", EnterDataFolder, 2},
    ItemWord{"item=data folder", EnterDataFolder, 2},
    ItemWord{"object=track folder", EnterStage, 3},
    // Data folder.
    ItemWord{"item=video", AddDataVideo, 0},
    ItemWord{"item=encoded still", AddDataVideo, 1},
    ItemWord{"item=still", AddDataVideo, 1},
    ItemWord{"item=ac3 audio", AddDataAudio, 0},
    ItemWord{"item=pcm audio", AddDataAudio, 1},
    ItemWord{"item=dts audio", AddDataAudio, 2},
    ItemWord{"item=sub-picture", AddDataSub, 0, 1, ItemWord::ManyUses},
    // Tracks.
    ItemWord{item::Track, AddTrack, 0},
    ItemWord{"item=video track", AddTrack, 0},
    ItemWord{"item=still menu track", AddTrack, 1},
    ItemWord{"item=slide show track", AddTrack, 2},
    ItemWord{"item=still show track", AddTrack, 2},
    ItemWord{"item=track folder"},
    ItemWord{item::VideoList},
    ItemWord{item::StillList},
    ItemWord{item::SlideList},
    ItemWord{item::SceneList},
    ItemWord{item::HighlightList, OpenHighlightList},
    ItemWord{item::VideoPlay, AddMotionPlay},
    ItemWord{"item=main video play", AddNamedPlay},
    ItemWord{"item=still menu play", AddNamedPlay},
    ItemWord{"item=still show play", AddNamedPlay},
    ItemWord{"item=slide show play", AddNamedPlay},
    ItemWord{item::StillPlay, AddTypedPlay, 1},
    ItemWord{item::SlidePlay, AddTypedPlay, 2},
    ItemWord{item::AudioStream, AddAudioStream},
    ItemWord{"item=audio stream", AddAudioStream},
    ItemWord{item::AudioPlay, AddAudioPlay},
    ItemWord{item::Scene, AddScene},
    ItemWord{item::Subtitles, AddSubtitles},
    ItemWord{"item=sub-picture stream", AddSubtitles},
    ItemWord{item::SubPlay, AddSubPlay, 0, 1, ItemWord::ManyUses},
    ItemWord{"item=sub-picture play", AddSubPlay, 0, 1, ItemWord::ManyUses},
    ItemWord{"highlight stream=highlight stream", AddHighlight},
    ItemWord{item::Highlight, AddHighlight},
    ItemWord{"button color *=button color", OpenScheme, 1, 3},
    ItemWord{item::Scheme, OpenScheme, 1, 3},
    ItemWord{item::Button, AddButton},
    // Colours.
    ItemWord{"rgb color=rgb"},
    ItemWord{"color 4(bg)=conversion", OpenConversion, 0},
    ItemWord{"color 3(p)=conversion", OpenConversion, 1},
    ItemWord{"color 2(e1)=conversion", OpenConversion, 2},
    ItemWord{"color 1(e2)=conversion", OpenConversion, 3},
    ItemWord{"color=color", OpenColor},
    ItemWord{"contrast=contrast", OpenContrast},
};

}  // namespace

std::span<const ItemWord> SourceItems() {
  return Items;
}

}  // namespace quorvelant
