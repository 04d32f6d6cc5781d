#include "script/special_keys.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "model/cls_dvd.h"
#include "model/default_structure.h"
#include "script/item_names.h"
#include "script/open_item.h"
#include "script/script_reader.h"
#include "script/vocabulary.h"

namespace quorvelant {

namespace {

bool PassOver(ReaderState& /*state*/, std::string_view /*value*/, std::size_t /*number*/) {
  return true;
}

// --- names and files ---

bool ReadName(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  switch (state.Open) {
    case Segment::DataVideo:
    case Segment::DataAudio:
    case Segment::DataSub:
    case Segment::SubPlay:
      return NameDataFile(state, value);
    case Segment::FirstPlay:
    case Segment::Language:
    case Segment::Highlight:
      return true;  // named by their place
    default:
      return false;
  }
}

bool ReadSubFolder(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  std::string& folder = state.Data.SubFolder;
  folder = value;
  while (folder.ends_with('\\') || folder.ends_with('/')) {
    folder.pop_back();
  }
  return true;
}

bool ReadAspect(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (DataFile_P* data = state.OpenData()) {
    data->AspectRatio = IsWord(value, "4 : 3") ? "4:3" : IsWord(value, "16 : 9") ? "16:9" : "";
  }
  return true;
}

// --- stream attributes of the other dialect ---

using AttributeKind = AttributePlace::Kind;

std::size_t StreamCount(AttributeKind kind) {
  switch (kind) {
    case AttributeKind::Audio:
      return AudioStreamCount;
    case AttributeKind::SubPicture:
      return SubStreamCount;
    case AttributeKind::None:
      break;
  }
  return 0;
}

// A block for each stream, with its number or counted.
bool OpenAttribute(ReaderState& state, AttributeKind kind, std::string_view value) {
  const std::string_view trimmed = Trim(value);
  const bool numbered = !trimmed.empty() && trimmed.front() >= '0' && trimmed.front() <= '9';
  const std::size_t next = state.Attribute.Before == kind ? state.Attribute.Number + 1 : 0;
  const std::size_t number = numbered ? static_cast<std::size_t>(LeadingNumber(trimmed)) : next;
  state.Attribute = {.Of = kind, .Before = kind, .Number = number};
  return true;
}
bool OpenAudioAttribute(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return OpenAttribute(state, AttributeKind::Audio, value);
}
bool OpenSubAttribute(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return OpenAttribute(state, AttributeKind::SubPicture, value);
}

// The language of the open attribute of a title.
bool ReadAttributeLanguage(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  const Title_P* title = state.Disc.Title;
  const AttributePlace& attribute = state.Attribute;
  if (title == nullptr || attribute.Number >= StreamCount(attribute.Of)) {
    return false;
  }
  if (state.Languages.empty() || state.Languages.back().Title != title) {
    state.Languages.push_back({title, {}});
  }
  ScriptLanguages& languages = state.Languages.back().Streams;
  std::string& language = attribute.Of == AttributeKind::Audio ? languages.Audio[attribute.Number]
                                                               : languages.SubPicture[attribute.Number];
  language =
      TextOf(Takes::Language, state.Rules.BlanksAroundWords ? Trim(value) : value, state.Traits.IsScenarist);
  return true;
}

// The extension of an attribute of a title set; an unknown word leaves it as it is.
bool SetExtension(ReaderState& state, AttributeKind kind, std::string_view name) {
  VTS_P* entry = state.Disc.Entry;
  const std::size_t number = state.Attribute.Number;
  if (entry == nullptr || number >= StreamCount(kind)) {
    return false;
  }
  if (!name.empty()) {
    (kind == AttributeKind::Audio ? entry->AudioExtension[number] : entry->SubExtension[number]) = name;
  }
  return true;
}
bool ReadAudioExtensionCode(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetExtension(state, AttributeKind::Audio, CLsDVD::ConvertExtensions(Trim(value)));
}
bool ReadSubExtensionCode(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetExtension(state, AttributeKind::SubPicture, CLsDVD::ConvertSubExtensions(Trim(value)));
}

// --- colours that lines of their own give ---

// One value of the open quad; `which` counts E2, E1, P, Bg.
bool ReadQuadValue(ReaderState& state, std::string_view value, std::size_t which) {
  const QuadTarget& quad = state.Overlay.Quad;
  std::int32_t* number = nullptr;
  if (quad.OfSubtitle != nullptr) {
    SubPicturePlay* play = OpenItem(state);
    number = play == nullptr ? nullptr : &(play->*(*quad.OfSubtitle)[which]);
  } else if (quad.OfScheme != nullptr) {
    ColorScheme* scheme = OpenItem(state);
    number = scheme == nullptr ? nullptr : &(scheme->*quad.OfScheme)[which];
  }
  if (number != nullptr) {
    *number = LeadingNumber(value);
  }
  return number != nullptr;
}

// One byte of the open colour, counted from red.
bool ReadChannel(ReaderState& state, std::string_view value, std::size_t channel) {
  const ColorTarget& target = state.Overlay.Color;
  Color* color = nullptr;
  if (target.OfPalette && state.Overlay.Palette) {
    color = &state.Overlay.Palette->PaletteColors[*target.OfPalette];
  } else if (target.OfSubtitle != nullptr) {
    SubPicturePlay* play = OpenItem(state);
    color = play == nullptr ? nullptr : &(play->*target.OfSubtitle);
  }
  if (color != nullptr) {
    *color = WithChannel(*color, channel, LeadingNumber(value));
  }
  return color != nullptr;
}

// --- the disc ---

// The other dialect leaves the word out where a PGC is no menu; its own words are not judged.
bool ReadMenuId(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (state.Disc.Pgc == nullptr) {
    return false;
  }
  state.Disc.Pgc->MenuType = TextOf(Takes::MenuType, value, state.Traits.IsScenarist);
  return true;
}

bool OpenSubMap(ReaderState& state, std::string_view /*value*/, std::size_t stream) {
  state.Disc.DecodingBlock = stream;
  if (state.Disc.Pgc != nullptr && stream >= SubStreamCount) {
    state.Outcome.SkipReason = NumberTooLarge;
  }
  return state.Disc.Pgc != nullptr && stream < SubStreamCount;
}

bool ReadCommand(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  constexpr std::string_view Prefix = "COMMAND=";
  CommandList* commands = state.OpenCommands();
  if (commands == nullptr) {
    return false;
  }
  if (++state.Disc.CommandCount > ItemWord::ManyUses) {
    state.Outcome.TooMany = fmt::format("{} commands", ItemWord::ManyUses);
    return false;
  }
  if (state.Traits.IsScenarist && value.starts_with(Prefix)) {
    value.remove_prefix(Prefix.size());
  }
  AddCommand(*commands, state.Disc.Commands.Word, std::string(value));
  return true;
}
// Without an entry of its own a button command opens one.
bool ReadButtonCommand(ReaderState& state, std::string_view value, std::size_t number) {
  Cell_P* cell = state.Disc.Cell;
  if (cell == nullptr) {
    return false;
  }
  if (cell->ButtonCommands.empty()) {
    cell->ButtonCommands.emplace_back();
  }
  state.Disc.Commands = {.OfPgc = nullptr, .OfCell = cell, .Word = "Button"};
  return ReadCommand(state, value, number);
}
// The name that the last command is to point at.
bool ReadToAction(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  CommandList* commands = state.OpenCommands();
  if (commands == nullptr || commands->empty()) {
    return false;
  }
  commands->back().To_Action = Lower(Trim(value));
  state.Traits.TargetsStored = true;
  return true;
}

// --- subtitles ---

constexpr std::string_view OriginWins =
    "Origin and DisplayArea give different corners, and the bitmap shows at the Origin";
constexpr std::string_view LaterWins =
    "Origin and DisplayArea give different corners, and the bitmap shows at the later one";

void SettleCorner(ReaderState& state, SubPicturePlay& play) {
  const OverlayCorners& corners = state.Overlay.Corners;
  if (!corners.Origin || !corners.Area || corners.Origin == corners.Area) {
    return;
  }
  state.Outcome.Doubt = state.Rules.OriginPlacesBitmaps ? OriginWins : LaterWins;
  if (state.Rules.OriginPlacesBitmaps) {
    play.X1 = (*corners.Origin)[0];
    play.Y1 = (*corners.Origin)[1];
  }
}

constexpr std::array Keys{
    SpecialKey{"Name", ReadName},
    SpecialKey{"SubPath", ReadSubFolder},
    SpecialKey{"VideoStandard", PassOver},
    SpecialKey{"Aspect Ratio", ReadAspect},
    SpecialKey{"ISRC In", PassOver},
    SpecialKey{"Audio Attribute", OpenAudioAttribute},
    SpecialKey{"SubPicture Attribute", OpenSubAttribute},
    SpecialKey{"Language|AudioLanguage|SubLanguage", ReadAttributeLanguage, 0, Takes::Language},
    SpecialKey{"Audio Language Code Extension", ReadAudioExtensionCode},
    SpecialKey{"SubPicture Language Code Extension", ReadSubExtensionCode},
    SpecialKey{"Color 1(E2)", ReadQuadValue, 0, Takes::Number},
    SpecialKey{"Color 2(E1)", ReadQuadValue, 1, Takes::Number},
    SpecialKey{"Color 3(P)", ReadQuadValue, 2, Takes::Number},
    SpecialKey{"Color 4(Bg)", ReadQuadValue, 3, Takes::Number},
    SpecialKey{"Red", ReadChannel, 0, Takes::Number},
    SpecialKey{"Green", ReadChannel, 1, Takes::Number},
    SpecialKey{"Blue", ReadChannel, 2, Takes::Number},
    SpecialKey{"Menu ID", ReadMenuId},
    SpecialKey{item::SubMap, OpenSubMap},
    SpecialKey{item::Command, ReadCommand},
    SpecialKey{item::ButtonCommand, ReadButtonCommand},
    SpecialKey{"To Action", ReadToAction},
};

}  // namespace

std::span<const SpecialKey> SpecialKeys() {
  return Keys;
}

bool ReadSceneTime(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  Scene* scene = OpenItem(state);
  if (scene == nullptr) {
    return false;
  }
  const Track& track = *state.LastTrack();
  const std::string timecode = ColonTimecode(value);
  scene->Frame = SceneFrame(timecode, FramesPerSecond(track.Standard));
  if (track.Standard.empty()) {
    state.Scenes.PendingTimes.push_back(
        {{state.Target.Tracks.Count() - 1, track.Scenes.size() - 1}, timecode});
  }
  return true;
}

bool ReadFolder(ReaderState& state, std::string_view value, std::size_t /*number*/) {
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

void EnterScene(ReaderState& state, Scene& scene) {
  const ScenePlace place{state.Target.Tracks.Count() - 1, state.LastTrack()->Scenes.size() - 1};
  state.Outcome.SceneRepeated = !state.Scenes.ByName.emplace(scene.Name, place).second;
}

void FixDuration(ReaderState& state, VideoPlay& play) {
  play.DurationSet = state.LastTrack()->TrackType != "Motion" && !play.SlideDuration.empty();
}

void StandardOfSize(ReaderState& /*state*/, DataFile_P& data) {
  if (Contains(data.Resolution, "576") || Contains(data.Resolution, "288")) {
    data.Resolution = "PAL";
  } else if (Contains(data.Resolution, "480") || Contains(data.Resolution, "240")) {
    data.Resolution = "NTSC";
  }
}

void TakeOrigin(ReaderState& state, SubPicturePlay& play) {
  state.Overlay.Corners.Origin = {play.X1, play.Y1};
  SettleCorner(state, play);
}

void TakeArea(ReaderState& state, SubPicturePlay& play) {
  state.Overlay.Corners.Area = {play.X1, play.Y1};
  SettleCorner(state, play);
}

bool ReadSubDecodes(ReaderState& state, std::string_view value, std::size_t number) {
  PGC_P* chain = state.Disc.Pgc;
  if (chain == nullptr || number >= SubStreamCount) {
    return false;
  }
  for (auto* map : {&chain->NormalAssignments, &chain->PanAssignments, &chain->WideAssignments,
                    &chain->LetterAssignments}) {
    map->at(number) = LeadingNumber(value);
  }
  return true;
}

void CountDropFrames(ReaderState& state, std::string& timecode) {
  const SubtitleStream* stream = state.LastSubtitles();
  if (state.Rules.DropFramesCounted) {  // when the standards are known; until then a ";" stays
    timecode = Contains(state.Line.Value, ";") ? std::string(Trim(state.Line.Value)) : timecode;
    return;
  }
  if (!state.Traits.IsScenarist || state.Data.Listed || stream == nullptr || stream->DropFrame == 0 ||
      !EqualNoCase(state.LastTrack()->Standard, "ntsc")) {
    return;
  }
  timecode = WithoutDropFrames(timecode);
}

std::string ShowSceneTime(const Scene& scene, int framesPerSecond) {
  return FramesToTimecode(scene.Frame, framesPerSecond);
}

std::string ShowDuration(const SubPicturePlay& play, int framesPerSecond) {
  return play.End.empty() ? play.Duration
                          : FramesToTimecode(TimecodeToFrames(play.End, framesPerSecond) -
                                                 TimecodeToFrames(play.Start, framesPerSecond),
                                             framesPerSecond);
}

std::string WithoutDropFrames(std::string_view timecode) {
  constexpr int Rate = 30;
  return FramesToTimecode(CorrectDropFrame(TimecodeToFrames(timecode, Rate), DropFrame::Remove), Rate);
}

}  // namespace quorvelant
