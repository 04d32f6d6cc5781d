#include "script/reader_state.h"

#include <utility>

namespace quorvelant {

namespace {

template <class T>
T* Last(std::vector<T>* list) {
  return list == nullptr || list->empty() ? nullptr : &list->back();
}

// The last element of a list of what `owner` points at.
template <class Owner, class T>
T* LastOf(Owner* owner, std::vector<T> Owner::*list) {
  return owner == nullptr ? nullptr : Last(&(owner->*list));
}

}  // namespace

void DataFiles::NameLast(std::string_view name) {
  Files.back().FileName = name;
  Numbers.emplace(name, Files.size() - 1);
}

const DataFile_P* DataFiles::Find(std::string_view name) const {
  const auto found = Numbers.find(std::string(name));
  return found == Numbers.end() ? nullptr : &Files[found->second];
}

Track* ReaderState::LastTrack() {
  return Target.Tracks.Count() == 0 ? nullptr : &Target.Tracks[Target.Tracks.Count() - 1];
}
VideoPlay* ReaderState::LastVideoPlay() {
  return LastOf(LastTrack(), &Track::VideoPlays);
}
AudioStream* ReaderState::LastAudio() {
  return LastOf(LastTrack(), &Track::AudioStreams);
}
SubtitleStream* ReaderState::LastSubtitles() {
  return LastOf(LastTrack(), &Track::SubStreams);
}
SubPicturePlay* ReaderState::LastSubPlay() {
  return LastOf(LastSubtitles(), &SubtitleStream::SubPlays);
}
HighlightPlay* ReaderState::LastHighlight() {
  return LastOf(LastTrack(), &Track::HighlightPlays);
}

DataFile_P* ReaderState::OpenData() {
  if (!Data.Listed) {
    return nullptr;
  }
  switch (Open) {
    case Segment::DataVideo:
      return Last(&Data.Video.Files);
    case Segment::DataAudio:
      return Last(&Data.Audio.Files);
    case Segment::DataSub:
      return Last(&Data.Subs.Files);
    default:
      return nullptr;
  }
}

CommandList* ReaderState::OpenCommands() {
  if (Disc.Commands.OfPgc != nullptr) {
    return &(Disc.Pgc->*Disc.Commands.OfPgc);
  }
  return Disc.Commands.OfCell == nullptr ? nullptr : &Disc.Commands.OfCell->ButtonCommands.back().Commands;
}

UopMask* ReaderState::OpenUops() {
  switch (Disc.Uops) {
    case UopPlace::Scene:
      return &LastTrack()->Scenes.back().Uops;
    case UopPlace::Cell:
      return &Disc.Cell->Uops;
    case UopPlace::Pgc:
      return &Disc.Pgc->Uops;
    case UopPlace::None:
      break;
  }
  return nullptr;
}

void ReaderState::Enter(Segment segment) {
  Open = segment;
  Disc.Uops = UopPlace::None;
  Disc.TitleUops = false;
  Overlay.Quad = {};
  Overlay.Color = {};
  Attribute.Of = AttributePlace::Kind::None;
}

void ReaderState::ClosePalette() {
  if (Overlay.Palette) {
    Target.Palettes.Add(*std::exchange(Overlay.Palette, std::nullopt));
  }
}

void ReaderState::CloseBlock() {
  // A command of the other dialect stands in braces of its own, so the command target outlives them; and so
  // do the bytes of a palette's colour.
  Overlay.Scheme.reset();
  Overlay.Quad = {};
  Overlay.Color.OfSubtitle = nullptr;
  Disc.Uops = UopPlace::None;
  Disc.TitleUops = false;
  Disc.DecodingBlock = 0;
  Attribute.Of = AttributePlace::Kind::None;
}

// --- whose keys a line holds ---

namespace {

bool IsAudio(const ReaderState& state) {
  return state.Open == Segment::Audio || (state.Open == Segment::DataAudio && !state.Data.Listed);
}
bool IsSubtitle(const ReaderState& state) {
  return state.Open == Segment::SubPicture || state.Open == Segment::SubPlay;
}
bool IsHighlight(const ReaderState& state) {
  return state.Open == Segment::Highlight || state.Open == Segment::Button;
}

}  // namespace

template <>
Project* OpenItem(ReaderState& state) {
  return &state.Target;
}
template <>
DataFile_P* OpenItem(ReaderState& state) {
  return state.OpenData();
}
template <>
Track* OpenItem(ReaderState& state) {
  return state.LastTrack();
}
template <>
VideoPlay* OpenItem(ReaderState& state) {
  return state.LastVideoPlay();
}
template <>
AudioStream* OpenItem(ReaderState& state) {
  return IsAudio(state) ? state.LastAudio() : nullptr;
}
template <>
AudioPlay* OpenItem(ReaderState& state) {
  return LastOf(state.LastAudio(), &AudioStream::AudioPlays);
}
template <>
SubtitleStream* OpenItem(ReaderState& state) {
  return IsSubtitle(state) ? state.LastSubtitles() : nullptr;
}
// Of a data file, or of a track.
template <>
SubPicturePlay* OpenItem(ReaderState& state) {
  if (DataFile_P* data = state.OpenData()) {
    return state.Open == Segment::DataSub ? &data->Subtitle : nullptr;
  }
  return state.Open == Segment::SubPlay ? state.LastSubPlay() : nullptr;
}
template <>
HighlightPlay* OpenItem(ReaderState& state) {
  return IsHighlight(state) ? state.LastHighlight() : nullptr;
}
template <>
ColorScheme* OpenItem(ReaderState& state) {
  HighlightPlay* play = OpenItem<HighlightPlay>(state);
  return play == nullptr || !state.Overlay.Scheme ? nullptr : &play->Schemes[*state.Overlay.Scheme];
}
template <>
HighlightButton* OpenItem(ReaderState& state) {
  return state.Open == Segment::Button ? LastOf(state.LastHighlight(), &HighlightPlay::Buttons) : nullptr;
}
template <>
HighlightArea* OpenItem(ReaderState& state) {
  HighlightButton* button = OpenItem<HighlightButton>(state);
  return button == nullptr ? nullptr : &button->Areas[state.Overlay.Area];
}
template <>
Scene* OpenItem(ReaderState& state) {
  return state.Open == Segment::Scene ? LastOf(state.LastTrack(), &Track::Scenes) : nullptr;
}
template <>
VTS_P* OpenItem(ReaderState& state) {
  return state.Disc.Entry;
}
template <>
Lang_P* OpenItem(ReaderState& state) {
  return state.Disc.Language;
}
template <>
Title_P* OpenItem(ReaderState& state) {
  return state.Disc.Title;
}
template <>
PGC_P* OpenItem(ReaderState& state) {
  return state.Disc.Pgc;
}
template <>
PG_P* OpenItem(ReaderState& state) {
  return state.Disc.Program;
}
template <>
Cell_P* OpenItem(ReaderState& state) {
  return state.Disc.Cell;
}
template <>
Palette_P* OpenItem(ReaderState& state) {
  return state.Open == Segment::Palette && state.Overlay.Palette ? &*state.Overlay.Palette : nullptr;
}

}  // namespace quorvelant
