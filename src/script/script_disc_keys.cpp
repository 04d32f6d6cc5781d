// Keys of the disc's structure: links, cells, commands, policies, stream maps, palettes.
#include <array>

#include "base/text.h"
#include "model/cls_dvd.h"
#include "model/default_structure.h"
#include "script/script_reader.h"
#include "script/script_tables.h"
#include "script/script_values.h"

namespace quorvelant {

namespace {

// --- PGC ---

bool SetPgcNumber(ReaderState& state, std::string_view value, std::size_t still) {
  return SetNumber(state.Pgc, still != 0 ? &PGC_P::StillTime : &PGC_P::Repeat, value);
}
bool SetPlayBack(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  constexpr std::array<std::string_view, 3> Modes{"sequential playback", "random playback",
                                                  "shuffle playback"};
  for (std::size_t mode = 0; mode < Modes.size(); ++mode) {
    if (state.Pgc != nullptr && IsWord(value, Modes[mode])) {
      state.Pgc->PlayBackMode = static_cast<PlayBack>(mode);
    }
  }
  return state.Pgc != nullptr;
}
bool SetPaletteName(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetText(state.Pgc, &PGC_P::PaletteName, value);
}
constexpr std::array PgcLinks{&PGC_P::NextPGC, &PGC_P::PrevPGC, &PGC_P::GoUpPGC};
bool SetPgcLink(ReaderState& state, std::string_view value, std::size_t which) {
  if (state.Pgc == nullptr) {
    return false;
  }
  const bool none = Trim(value).empty() || IsWord(value, "none") || IsWord(value, "nonexistent");
  state.Pgc->*PgcLinks[which] = none ? "none" : value;
  return true;
}
bool SetMenuType(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (state.Pgc == nullptr) {
    return false;
  }
  state.Pgc->MenuType = state.IsScenarist && Trim(value).empty() ? "No Menu" : value;
  return true;
}
// A code, or in the other dialect a language's name.
bool SetLanguageUnit(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (state.Language == nullptr) {
    return false;
  }
  const std::string_view code = CLsDVD::LangNameToLangCode(Trim(value));
  state.Language->Language = code.empty() ? value : code;
  return true;
}

// --- entry ---

bool SetLetterBoxed(ReaderState& state, std::string_view value, std::size_t menu) {
  return SetSwitch(state.Entry, menu != 0 ? &VTS_P::MenuLetterBoxed : &VTS_P::TitleLetterBoxed,
                   IsWord(value, "letterboxed"));
}
bool SetCameraMode(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetSwitch(state.Entry, &VTS_P::TitleCameraMode, IsWord(value, "film mode") || IsWord(value, "film"));
}

// --- cell ---

constexpr std::array CellNumbers{&Cell_P::StillTime, &Cell_P::CellCommand};
bool SetCellNumber(ReaderState& state, std::string_view value, std::size_t which) {
  return SetNumber(state.Cell, CellNumbers[which], value);
}
bool SetScene(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetText(state.Cell, &Cell_P::SceneUsed, value);
}
bool SetSeamless(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetSwitch(state.Cell, &Cell_P::Seamless, IsWord(value, "seamless") || IsWord(value, "1"));
}
bool SetRestricted(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetSwitch(state.Cell, &Cell_P::RestrictedAccess, IsWord(value, "prohibited") || IsOn(value));
}

// --- commands ---

bool AddTo(ReaderState& state, std::string_view value) {
  constexpr std::string_view Prefix = "COMMAND=";
  if (state.Commands == nullptr) {
    return false;
  }
  if (state.IsScenarist && value.starts_with(Prefix)) {
    value.remove_prefix(Prefix.size());
  }
  AddCommand(*state.Commands, state.CommandWord, std::string(value));
  return true;
}
bool AddPgcCommand(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return AddTo(state, value);
}
// Without an entry of its own a button command opens one.
bool AddButtonCommand(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (state.Cell == nullptr) {
    return false;
  }
  if (state.Cell->ButtonCommands.empty()) {
    state.Cell->ButtonCommands.emplace_back();
  }
  state.Commands = &state.Cell->ButtonCommands.back().Commands;
  state.CommandWord = "Button";
  return AddTo(state, value);
}
// The name that the command ahead is to point at.
bool SetToAction(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (state.Commands == nullptr || state.Commands->empty()) {
    return false;
  }
  state.Commands->back().To_Action = Lower(Trim(value));
  state.TargetsStored = true;
  return true;
}

// --- policies and maps ---

bool SetCustom(ReaderState& state, std::string_view value, std::size_t sub) {
  return SetSwitch(state.Title, sub != 0 ? &Title_P::SubCustom : &Title_P::Custom, IsWord(value, "custom"));
}
bool SetAudioPolicy(ReaderState& state, std::string_view value, std::size_t stream) {
  if (state.Title == nullptr) {
    return false;
  }
  state.Title->AudioAssignments[stream] = !IsWord(value, "no");
  return true;
}
bool SetSubPolicy(ReaderState& state, std::string_view value, std::size_t stream) {
  if (state.Title == nullptr) {
    return false;
  }
  state.Title->SubAssignments[stream] = !IsWord(value, "no");
  return true;
}
// Whether a disc has the stream; why not is said.
bool HasStream(ReaderState& state, std::size_t stream, std::size_t count) {
  if (stream >= count) {
    state.SkipReason = NumberTooLarge;
  }
  return stream < count;
}
bool SetAudioDecoding(ReaderState& state, std::string_view value, std::size_t stream) {
  if (state.Pgc == nullptr || !HasStream(state, stream, AudioStreamCount)) {
    return false;
  }
  state.Pgc->AudioAssignments[stream] = LeadingNumber(value);
  return true;
}
constexpr std::array SubMaps{&PGC_P::NormalAssignments, &PGC_P::PanAssignments, &PGC_P::WideAssignments,
                             &PGC_P::LetterAssignments};
template <std::size_t Map>
bool SetSubDecoding(ReaderState& state, std::string_view value, std::size_t stream) {
  const std::size_t entry = stream != 0 ? stream : state.DecodingBlock;
  if (state.Pgc == nullptr || !HasStream(state, entry, SubStreamCount)) {
    return false;
  }
  (state.Pgc->*SubMaps[Map])[entry] = LeadingNumber(value);
  return true;
}
bool OpenSubDecoding(ReaderState& state, std::string_view /*value*/, std::size_t stream) {
  state.DecodingBlock = stream;
  return state.Pgc != nullptr && HasStream(state, stream, SubStreamCount);
}

// --- stream attributes of the other dialect ---

// A block for each stream, with its number or counted.
bool OpenAttribute(ReaderState& state, std::string_view value, std::size_t sub) {
  using Attribute = ReaderState::Attribute;
  const Attribute kind = sub != 0 ? Attribute::SubPicture : Attribute::Audio;
  const std::string_view trimmed = Trim(value);
  const bool numbered = !trimmed.empty() && trimmed.front() >= '0' && trimmed.front() <= '9';
  const auto next = state.AttributeBefore == kind ? state.AttributeNumber + 1 : 0;
  state.AttributeNumber = numbered ? static_cast<std::size_t>(LeadingNumber(trimmed)) : next;
  state.AttributeOf = kind;
  state.AttributeBefore = kind;
  return true;
}
bool SetExtensionCode(ReaderState& state, std::string_view value, std::size_t sub) {
  const std::size_t count = sub != 0 ? SubStreamCount : AudioStreamCount;
  if (state.Entry == nullptr || state.AttributeNumber >= count) {
    return false;
  }
  const std::string_view name =
      sub != 0 ? CLsDVD::ConvertSubExtensions(Trim(value)) : CLsDVD::ConvertExtensions(Trim(value));
  std::string& entry = sub != 0 ? state.Entry->SubExtension[state.AttributeNumber]
                                : state.Entry->AudioExtension[state.AttributeNumber];
  if (!name.empty()) {
    entry = name;
  }
  return true;
}

// --- palettes and settings ---

bool SetPaletteColor(ReaderState& state, std::string_view value, std::size_t entry) {
  if (state.Open != Segment::Palette || !state.Palette) {
    return false;
  }
  state.Color = ColorTarget::PaletteEntry;
  state.PaletteEntry = entry;
  if (Contains(value, ",")) {
    state.Palette->PaletteColors[entry] = CommaColor(value);
  }
  return true;
}

bool SetFolder(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  constexpr std::string_view Name = "VIDEO_TS";
  std::string folder(Trim(value));
  if (folder.empty()) {
    return true;  // an empty line says nothing
  }
  if (folder.ends_with('\\') || folder.ends_with('/')) {
    folder += Name;
  }
  if (!Upper(folder).ends_with(Name)) {
    folder.append(Contains(folder, "/") && !Contains(folder, "\\") ? "/" : "\\").append(Name);
  }
  state.Target.DestinationFolder = std::move(folder);
  return true;
}

constexpr std::array Keys{
    Word{"repeat times", SetPgcNumber, 0, 1, Takes::Number},
    Word{"repeat", SetPgcNumber, 0, 1, Takes::Number},
    Word{"pg playback mode", SetPlayBack, 0, 1, Takes::PlayBack},
    Word{"playback mode", SetPlayBack, 0, 1, Takes::PlayBack},
    Word{"stilltime", SetPgcNumber, 1, 1, Takes::Number},
    Word{"pgc still time", SetPgcNumber, 1, 1, Takes::Number},
    Word{"paletteused", SetPaletteName},
    Word{"palette", SetPaletteName},
    Word{"nextpgc", SetPgcLink, 0},
    Word{"next pgc", SetPgcLink, 0},
    Word{"prevpgc", SetPgcLink, 1},
    Word{"prev pgc", SetPgcLink, 1},
    Word{"gouppgc", SetPgcLink, 2},
    Word{"goup pgc", SetPgcLink, 2},
    Word{"menutype", SetMenuType, 0, 1, Takes::MenuType},
    Word{"menu id", SetMenuType},
    Word{"lu", SetLanguageUnit, 0, 1, Takes::LanguageCode},
    Word{"language name", SetLanguageUnit, 0, 1, Takes::LanguageCode},
    Word{"source picture letterboxed", SetLetterBoxed, 0},
    Word{"title source picture letterboxed", SetLetterBoxed, 0},
    Word{"menu source picture letterboxed", SetLetterBoxed, 1},
    Word{"film camera mode", SetCameraMode},
    Word{"camera mode", SetCameraMode},
    Word{"usingscene", SetScene},
    Word{"linked scene", SetScene},
    Word{"cellstilltime", SetCellNumber, 0, 1, Takes::Number},
    Word{"cell still time", SetCellNumber, 0, 1, Takes::Number},
    Word{"cell command", SetCellNumber, 1, 1, Takes::Number},
    Word{"restrict cell access", SetRestricted},
    Word{"access restriction flag", SetRestricted},
    Word{"seamless flag", SetSeamless},
    Word{"command", AddPgcCommand},
    Word{"button command", AddButtonCommand},
    Word{"to action", SetToAction},
    Word{"audio custom policy", SetCustom, 0},
    Word{"audio availability flag policy", SetCustom, 0},
    Word{"subpicture custom policy", SetCustom, 1},
    Word{"subpicture availability flag policy", SetCustom, 1},
    Word{"audio stream *", SetAudioPolicy, 0, AudioStreamCount, Takes::YesNo},
    Word{"subpicture stream *", SetSubPolicy, 0, SubStreamCount, Takes::YesNo},
    Word{"audio stream * decodes", SetAudioDecoding, 0, AudioStreamCount, Takes::Number},
    Word{"audio attribute", OpenAttribute, 0},
    Word{"subpicture attribute", OpenAttribute, 1},
    Word{"audio language code extension", SetExtensionCode, 0},
    Word{"subpicture language code extension", SetExtensionCode, 1},
    Word{"color *", SetPaletteColor, 0, 16},
    Word{"*", SetPaletteColor, 0, 16},
    Word{"defaultfolder", SetFolder},
    Word{"dvd root directory", SetFolder},
};

constexpr std::array NumberSigns{
    Word{"item=subpicture stream decoding for track", OpenSubDecoding},
    Word{"decoding stream number", SetAudioDecoding, 0, 1, Takes::Number},
    Word{"decoding stream number for 4:3", SetSubDecoding<0>, 0, 1, Takes::Number},
    Word{"decoding stream number for pan-scan", SetSubDecoding<1>, 0, 1, Takes::Number},
    Word{"decoding stream number for wide", SetSubDecoding<2>, 0, 1, Takes::Number},
    Word{"decoding stream number for letterbox", SetSubDecoding<3>, 0, 1, Takes::Number},
    Word{"subpicture track for 4:3 decodes", SetSubDecoding<0>, 0, 1, Takes::Number},
    Word{"subpicture track for panscan decodes", SetSubDecoding<1>, 0, 1, Takes::Number},
    Word{"subpicture track for wide decodes", SetSubDecoding<2>, 0, 1, Takes::Number},
    Word{"subpicture track for letter decodes", SetSubDecoding<3>, 0, 1, Takes::Number},
    Word{"button", SetButtonNumber, 0, 1, Takes::Number},
    Word{"numerical button", SetNumericalButtons, 0, 1, Takes::Number},
    Word{"highlight area", SetArea},
};

}  // namespace

std::span<const Word> DiscKeys() {
  return Keys;
}
std::span<const Word> NumberSignWords() {
  return NumberSigns;
}

bool PassOver(ReaderState& /*state*/, std::string_view /*value*/, std::size_t /*number*/) {
  return true;
}

}  // namespace quorvelant
