#include "script/reader_state.h"

#include <utility>

namespace quorvelant {

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
      return LastOf(&Data.Video, &DataFiles::Files);
    case Segment::DataAudio:
      return LastOf(&Data.Audio, &DataFiles::Files);
    case Segment::DataSub:
      return LastOf(&Data.Subs, &DataFiles::Files);
    default:
      return nullptr;
  }
}

CommandList* ReaderState::OpenCommands() const {
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
  Overlay.Corners = {};
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
  const bool endsQuad = Overlay.Quad.OfScheme != nullptr && Rules.OtherDialectInFull;
  if (!endsQuad) {
    Overlay.Scheme.reset();
  }
  Overlay.Quad = {};
  Overlay.Color.OfSubtitle = nullptr;
  Disc.Uops = UopPlace::None;
  Disc.TitleUops = false;
  Disc.DecodingBlock = 0;
  Attribute.Of = AttributePlace::Kind::None;
}

}  // namespace quorvelant
