// Keys of what lies over the picture: subtitles, highlights and their buttons.
#include <array>

#include "base/text.h"
#include "base/timecode.h"
#include "script/script_tables.h"
#include "script/script_values.h"

namespace quorvelant {

namespace {

bool IsHighlight(const ReaderState& state) {
  return state.Open == Segment::Highlight || state.Open == Segment::Button;
}

// --- subtitles ---

// The open subtitle: of a data file, or of a track.
SubPicturePlay* OpenPicture(ReaderState& state) {
  if (DataFile_P* data = state.OpenData()) {
    return state.Open == Segment::DataSub ? &data->Subtitle : nullptr;
  }
  return state.Open == Segment::SubPlay ? state.OpenSubPlay() : nullptr;
}

bool SetForced(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetSwitch(OpenPicture(state), &SubPicturePlay::Forced, IsOn(value));
}
bool SetOrigin(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  SubPicturePlay* play = OpenPicture(state);
  if (play == nullptr) {
    return false;
  }
  const auto [x, y] = CommaNumbers<2>(value);
  play->X1 = x;
  play->Y1 = y;
  return true;
}
// A script of the other dialect may count a drop-frame stream's times as a clock shows them.
std::string SubtitleTime(ReaderState& state, std::string_view value) {
  std::string timecode = ColonTimecode(value);
  const SubtitleStream* stream = state.OpenSubtitles();
  const Track* track = state.OpenTrack();
  if (!state.IsScenarist || state.InDataFolder || stream == nullptr || stream->DropFrame == 0 ||
      !EqualNoCase(track->Standard, "ntsc")) {
    return timecode;
  }
  constexpr int Rate = 30;
  return FramesToTimecode(CorrectDropFrame(TimecodeToFrames(timecode, Rate), DropFrame::Remove), Rate);
}
bool SetStart(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  SubPicturePlay* play = OpenPicture(state);
  if (play == nullptr) {
    return false;
  }
  play->Start = SubtitleTime(state, value);
  return true;
}
bool SetDuration(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (IsHighlight(state)) {
    state.OpenHighlight()->Duration = ColonTimecode(value);
    return true;
  }
  SubPicturePlay* play = OpenPicture(state);
  if (play == nullptr) {
    return false;
  }
  play->Duration = SubtitleTime(state, value);
  return true;
}
bool SetConversion(ReaderState& state, std::string_view value, std::size_t which) {
  SubPicturePlay* play = OpenPicture(state);
  if (play == nullptr) {
    return false;
  }
  constexpr std::array Fields{&SubPicturePlay::ConversionBg, &SubPicturePlay::ConversionP,
                              &SubPicturePlay::ConversionE2, &SubPicturePlay::ConversionE1};
  play->*Fields[which] = CommaColor(value);
  return true;
}
// Four numbers from the background on.
bool SetPictureQuad(ReaderState& state, std::string_view value, std::size_t contrast) {
  SubPicturePlay* play = OpenPicture(state);
  if (play == nullptr) {
    return false;
  }
  const auto [bg, p, e2, e1] = CommaNumbers<4>(value);
  (contrast != 0 ? play->ContrastBg : play->ColorBg) = bg;
  (contrast != 0 ? play->ContrastP : play->ColorP) = p;
  (contrast != 0 ? play->ContrastE2 : play->ColorE2) = e2;
  (contrast != 0 ? play->ContrastE1 : play->ColorE1) = e1;
  return true;
}

bool SetDisplayArea(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  SubPicturePlay* play = OpenPicture(state);
  if (play == nullptr) {
    return false;
  }
  const auto [x1, y1, x2, y2] = CommaNumbers<4>(value);
  play->X1 = x1;
  play->Y1 = y1;
  play->X2 = x2;
  play->Y2 = y2;
  return true;
}

// --- highlights ---

// The highlight that is open, nullptr where a line does not stand in one.
HighlightPlay* Highlight(ReaderState& state) {
  return IsHighlight(state) ? state.OpenHighlight() : nullptr;
}
HighlightButton* Button(ReaderState& state) {
  return state.Open == Segment::Button ? state.OpenButton() : nullptr;
}

bool SetHighlightTime(ReaderState& state, std::string_view value, std::size_t selectionEnd) {
  HighlightPlay* play = Highlight(state);
  if (play == nullptr) {
    return false;
  }
  (selectionEnd != 0 ? play->SelectionEndTime : play->StartTimeToVideo) = ColonTimecode(value);
  return true;
}
constexpr std::array HighlightNumbers{&HighlightPlay::ForcedAction, &HighlightPlay::ForcedSelect,
                                      &HighlightPlay::Offset, &HighlightPlay::NumericalButtons};
bool SetHighlightNumber(ReaderState& state, std::string_view value, std::size_t which) {
  return SetNumber(Highlight(state), HighlightNumbers[which], value);
}
bool SetButtonMode(ReaderState& state, std::string_view value, std::size_t number) {
  HighlightPlay* play = Highlight(state);
  if (play == nullptr) {
    return false;
  }
  play->ButtonModes[number - 1] = value;
  return true;
}

constexpr std::array SchemeQuads{&ColorScheme::SelectionColor, &ColorScheme::SelectionContrast,
                                 &ColorScheme::ActionColor, &ColorScheme::ActionContrast};
constexpr std::size_t FirstSchemeQuad = static_cast<std::size_t>(QuadTarget::SelectionColor);

// Four numbers from the background on; without a comma the word opens a quad that lines of its own fill.
bool SetSchemeQuad(ReaderState& state, std::string_view value, std::size_t which) {
  HighlightPlay* play = Highlight(state);
  if (play == nullptr || !state.Scheme) {
    return false;
  }
  if (!Contains(value, ",")) {
    state.Quad = static_cast<QuadTarget>(FirstSchemeQuad + which);
    return true;
  }
  const auto [bg, p, e2, e1] = CommaNumbers<4>(value);
  play->Schemes[*state.Scheme].*SchemeQuads[which] = ColorQuad{e2, e1, p, bg};
  return true;
}

// One value of the open quad; `which` counts E2, E1, P, Bg.
bool SetQuadValue(ReaderState& state, std::string_view value, std::size_t which) {
  constexpr std::array Colors{&SubPicturePlay::ColorE2, &SubPicturePlay::ColorE1, &SubPicturePlay::ColorP,
                              &SubPicturePlay::ColorBg};
  constexpr std::array Contrasts{&SubPicturePlay::ContrastE2, &SubPicturePlay::ContrastE1,
                                 &SubPicturePlay::ContrastP, &SubPicturePlay::ContrastBg};
  const std::int32_t number = LeadingNumber(value);
  if (state.Quad == QuadTarget::PlayColor || state.Quad == QuadTarget::PlayContrast) {
    SubPicturePlay* play = OpenPicture(state);
    if (play == nullptr) {
      return false;
    }
    play->*(state.Quad == QuadTarget::PlayColor ? Colors : Contrasts)[which] = number;
    return true;
  }
  HighlightPlay* play = Highlight(state);
  if (play == nullptr || !state.Scheme || state.Quad == QuadTarget::None) {
    return false;
  }
  const std::size_t quad = static_cast<std::size_t>(state.Quad) - FirstSchemeQuad;
  (play->Schemes[*state.Scheme].*SchemeQuads[quad])[which] = number;
  return true;
}

// One byte of the open colour, counted from red.
bool SetChannel(ReaderState& state, std::string_view value, std::size_t channel) {
  Color* color = nullptr;
  SubPicturePlay* play = OpenPicture(state);
  constexpr std::array Conversions{&SubPicturePlay::ConversionBg, &SubPicturePlay::ConversionP,
                                   &SubPicturePlay::ConversionE1, &SubPicturePlay::ConversionE2};
  if (state.Color == ColorTarget::PaletteEntry && state.Palette) {
    color = &state.Palette->PaletteColors[state.PaletteEntry];
  } else if (state.Color != ColorTarget::None && state.Color != ColorTarget::PaletteEntry &&
             play != nullptr) {
    color = &(play->*Conversions[static_cast<std::size_t>(state.Color) - 1]);
  }
  if (color == nullptr) {
    return false;
  }
  const std::size_t shift = 8 * channel;
  *color = (*color & ~(Color{255} << shift)) | (static_cast<Color>(LeadingNumber(value)) & 255U) << shift;
  return true;
}

bool SetAutoAction(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetSwitch(Button(state), &HighlightButton::AutoAction, IsOn(value));
}
bool SetButtonScheme(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetNumber(Button(state), &HighlightButton::ColorScheme, value);
}
constexpr std::array Links{&HighlightButton::Up, &HighlightButton::Down, &HighlightButton::Left,
                           &HighlightButton::Right};
bool SetLink(ReaderState& state, std::string_view value, std::size_t which) {
  return SetText(Button(state), Links[which], value);
}
constexpr std::array Corners{&HighlightArea::X1, &HighlightArea::Y1, &HighlightArea::X2, &HighlightArea::Y2};
bool SetCorner(ReaderState& state, std::string_view value, std::size_t which) {
  HighlightButton* button = Button(state);
  if (button == nullptr) {
    return false;
  }
  button->Areas[state.Area].*Corners[which] = LeadingNumber(value);
  return true;
}

constexpr std::array Keys{
    Word{"forced start", SetForced, 0, 1, Takes::YesNo},
    Word{"forced", SetForced, 0, 1, Takes::YesNo},
    Word{"origin", SetOrigin},
    Word{"displayarea", SetDisplayArea},
    Word{"start", SetStart, 0, 1, Takes::Timecode},
    Word{"duration", SetDuration, 0, 1, Takes::Timecode},
    Word{"data end time", SetDuration, 0, 1, Takes::Timecode},
    Word{"conversion(bg)", SetConversion, 0},
    Word{"conversion(p)", SetConversion, 1},
    Word{"conversion(e2)", SetConversion, 2},
    Word{"conversion(e1)", SetConversion, 3},
    Word{"color", SetPictureQuad, 0},
    Word{"contrast", SetPictureQuad, 1},
    Word{"color 1(e2)", SetQuadValue, 0, 1, Takes::Number},
    Word{"color 2(e1)", SetQuadValue, 1, 1, Takes::Number},
    Word{"color 3(p)", SetQuadValue, 2, 1, Takes::Number},
    Word{"color 4(bg)", SetQuadValue, 3, 1, Takes::Number},
    Word{"red", SetChannel, 0, 1, Takes::Number},
    Word{"green", SetChannel, 1, 1, Takes::Number},
    Word{"blue", SetChannel, 2, 1, Takes::Number},
    Word{"start time to video", SetHighlightTime, 0, 1, Takes::Timecode},
    Word{"selection end time", SetHighlightTime, 1, 1, Takes::Timecode},
    Word{"forced action", SetHighlightNumber, 0, 1, Takes::Number},
    Word{"forced select", SetHighlightNumber, 1, 1, Takes::Number},
    Word{"offset", SetHighlightNumber, 2, 1, Takes::Number},
    Word{"button mode *", SetButtonMode, 1, 3},
    Word{"buttonmode*", SetButtonMode, 1, 3},
    Word{"selection color", SetSchemeQuad, 0},
    Word{"selection contrast", SetSchemeQuad, 1},
    Word{"action color", SetSchemeQuad, 2},
    Word{"action contrast", SetSchemeQuad, 3},
    Word{"autoaction", SetAutoAction, 0, 1, Takes::YesNo},
    Word{"color scheme", SetButtonScheme, 0, 1, Takes::Number},
    Word{"up", SetLink, 0},
    Word{"down", SetLink, 1},
    Word{"left", SetLink, 2},
    Word{"right", SetLink, 3},
    Word{"x1", SetCorner, 0, 1, Takes::Number},
    Word{"y1", SetCorner, 1, 1, Takes::Number},
    Word{"x2", SetCorner, 2, 1, Takes::Number},
    Word{"y2", SetCorner, 3, 1, Takes::Number},
};

}  // namespace

std::span<const Word> OverlayKeys() {
  return Keys;
}

bool SetNumericalButtons(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetHighlightNumber(state, value, 3);
}

bool SetButtonNumber(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetNumber(Button(state), &HighlightButton::Number, value);
}

bool SetArea(ReaderState& state, std::string_view value, std::size_t number) {
  HighlightButton* button = Button(state);
  if (button == nullptr || number < 1 || number > button->Areas.size()) {
    return false;
  }
  state.Area = number - 1;
  if (Contains(value, ",")) {
    const auto [x1, y1, x2, y2] = CommaNumbers<4>(value);
    button->Areas[state.Area] = {.X1 = x1, .X2 = x2, .Y1 = y1, .Y2 = y2};
  }
  return true;
}

}  // namespace quorvelant
