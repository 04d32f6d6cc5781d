#include "script/script_state.h"

#include <utility>

#include "base/text.h"

namespace quorvelant {

namespace {

template <class T>
T* Last(std::vector<T>* list) {
  return list == nullptr || list->empty() ? nullptr : &list->back();
}

}  // namespace

void DataFolder::NameLast(std::string_view name) {
  Files.back().FileName = name;
  Numbers.emplace(name, Files.size() - 1);
}

const DataFile_P* DataFolder::Find(std::string_view name) const {
  const auto found = Numbers.find(std::string(name));
  return found == Numbers.end() ? nullptr : &Files[found->second];
}

Track* ReaderState::OpenTrack() {
  return Target.Tracks.Count() == 0 ? nullptr : &Target.Tracks[Target.Tracks.Count() - 1];
}
AudioStream* ReaderState::OpenAudio() {
  Track* track = OpenTrack();
  return track == nullptr ? nullptr : Last(&track->AudioStreams);
}
SubtitleStream* ReaderState::OpenSubtitles() {
  Track* track = OpenTrack();
  return track == nullptr ? nullptr : Last(&track->SubStreams);
}
SubPicturePlay* ReaderState::OpenSubPlay() {
  SubtitleStream* stream = OpenSubtitles();
  return stream == nullptr ? nullptr : Last(&stream->SubPlays);
}
HighlightPlay* ReaderState::OpenHighlight() {
  Track* track = OpenTrack();
  return track == nullptr ? nullptr : Last(&track->HighlightPlays);
}
HighlightButton* ReaderState::OpenButton() {
  HighlightPlay* play = OpenHighlight();
  return play == nullptr ? nullptr : Last(&play->Buttons);
}
Scene* ReaderState::OpenScene() {
  Track* track = OpenTrack();
  return track == nullptr ? nullptr : Last(&track->Scenes);
}

DataFile_P* ReaderState::OpenData() {
  if (!InDataFolder) {
    return nullptr;
  }
  switch (Open) {
    case Segment::DataVideo:
      return Last(&Video.Files);
    case Segment::DataAudio:
      return Last(&Audio.Files);
    case Segment::DataSub:
      return Last(&Subs.Files);
    default:
      return nullptr;
  }
}

void ReaderState::ClosePalette() {
  if (Palette) {
    Target.Palettes.Add(*std::exchange(Palette, std::nullopt));
  }
}

void ReaderState::CloseBlock() {
  // A command of the other dialect stands in braces of its own, so the command target outlives them.
  Scheme.reset();
  Quad = QuadTarget::None;
  if (Color != ColorTarget::PaletteEntry) {
    Color = ColorTarget::None;
  }
  Uops = nullptr;
  TitleUops = nullptr;
  AttributeOf = Attribute::None;
  DecodingBlock = 0;
}

}  // namespace quorvelant
