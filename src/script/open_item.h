// The item to which a key's line belongs.
#pragma once

#include "script/reader_state.h"

namespace quorvelant {

// Becomes a pointer to the open item of the type that is asked for; nullptr where none is open.
class OpenItem {
 public:
  explicit OpenItem(ReaderState& state) : state_(state) {}

  operator Project*() const { return &state_.Target; }
  operator DataFile_P*() const { return state_.OpenData(); }

  operator Track*() const { return state_.LastTrack(); }
  operator VideoPlay*() const { return state_.LastVideoPlay(); }
  operator AudioStream*() const { return IsAudio() ? state_.LastAudio() : nullptr; }
  operator AudioPlay*() const { return LastOf(state_.LastAudio(), &AudioStream::AudioPlays); }
  operator SubtitleStream*() const { return IsSubtitle() ? state_.LastSubtitles() : nullptr; }
  operator SubPicturePlay*() const;
  operator HighlightPlay*() const { return IsHighlight() ? state_.LastHighlight() : nullptr; }
  operator ColorScheme*() const {
    HighlightPlay* play = *this;
    return play == nullptr || !state_.Overlay.Scheme ? nullptr : &play->Schemes[*state_.Overlay.Scheme];
  }
  operator HighlightButton*() const {
    return IsIn(Segment::Button) ? LastOf(state_.LastHighlight(), &HighlightPlay::Buttons) : nullptr;
  }
  operator HighlightArea*() const {
    HighlightButton* button = *this;
    return button == nullptr ? nullptr : &button->Areas[state_.Overlay.Area];
  }
  operator Scene*() const {
    return IsIn(Segment::Scene) ? LastOf(state_.LastTrack(), &Track::Scenes) : nullptr;
  }

  operator VTS_P*() const { return state_.Disc.Entry; }
  operator Lang_P*() const { return state_.Disc.Language; }
  operator Title_P*() const { return state_.Disc.Title; }
  operator PGC_P*() const { return state_.Disc.Pgc; }
  operator PG_P*() const { return state_.Disc.Program; }
  operator Cell_P*() const { return state_.Disc.Cell; }
  operator Palette_P*() const {
    return IsIn(Segment::Palette) && state_.Overlay.Palette ? &*state_.Overlay.Palette : nullptr;
  }

 private:
  bool IsIn(Segment segment) const { return state_.Open == segment; }
  bool IsAudio() const { return IsIn(Segment::Audio) || (IsIn(Segment::DataAudio) && !state_.Data.Listed); }
  bool IsSubtitle() const { return IsIn(Segment::SubPicture) || IsIn(Segment::SubPlay); }
  bool IsHighlight() const { return IsIn(Segment::Highlight) || IsIn(Segment::Button); }

  ReaderState& state_;
};

// Of a data file, or of a track.
inline OpenItem::operator SubPicturePlay*() const {
  if (DataFile_P* data = state_.OpenData()) {
    return IsIn(Segment::DataSub) ? &data->Subtitle : nullptr;
  }
  return IsIn(Segment::SubPlay) ? state_.LastSubPlay() : nullptr;
}

}  // namespace quorvelant
