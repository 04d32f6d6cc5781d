// Keys of source material: tracks, their files, streams and scenes.
#include <algorithm>
#include <array>
#include <limits>

#include "base/text.h"
#include "base/timecode.h"
#include "model/cls_dvd.h"
#include "script/script_tables.h"
#include "script/script_values.h"

namespace quorvelant {

namespace {

// A second scene of one name ends the load: cells find their scene by it.
bool NameScene(ReaderState& state, std::string_view name) {
  Scene* scene = state.OpenScene();
  if (scene == nullptr) {
    return false;
  }
  scene->Name = name;
  const ScenePlace place{state.Target.Tracks.Count() - 1, state.OpenTrack()->Scenes.size() - 1};
  state.SceneRepeated = !state.Scenes.emplace(name, place).second;
  return true;
}

bool SetVideoFile(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  Track* track = state.OpenTrack();
  if (track == nullptr || track->VideoPlays.empty()) {
    return false;
  }
  track->VideoPlays.back().File = value;
  return true;
}
bool SetAudioFile(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  AudioStream* stream = state.OpenAudio();
  if (stream == nullptr || stream->AudioPlays.empty()) {
    return false;
  }
  stream->AudioPlays.back().File = value;
  return true;
}
bool SetSubFolder(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  state.SubFolder = value;
  while (state.SubFolder.ends_with('\\') || state.SubFolder.ends_with('/')) {
    state.SubFolder.pop_back();
  }
  return true;
}

// --- tracks ---

bool SetFrameCount(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  return SetNumber(state.OpenTrack(), &Track::FrameCount, value);
}
bool SetExtend(ReaderState& state, std::string_view value, std::size_t subtitle) {
  Track* track = state.OpenTrack();
  if (track == nullptr) {
    return false;
  }
  (subtitle != 0 ? track->ExtendFinalSubtitle : track->ExtendSlideForAudio) = IsOn(value);
  return true;
}
bool SetSlideDuration(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  Track* track = state.OpenTrack();
  if (track == nullptr || track->VideoPlays.empty()) {
    return false;
  }
  VideoPlay& play = track->VideoPlays.back();
  play.SlideDuration = ColonTimecode(value);
  play.DurationSet = track->TrackType != "Motion" && !play.SlideDuration.empty();
  return true;
}
// A data file may give its picture size in place of the standard.
std::string StandardOf(std::string_view resolution) {
  const std::string text = Upper(Trim(resolution));
  if (Contains(text, "576") || Contains(text, "288")) {
    return "PAL";
  }
  return Contains(text, "480") || Contains(text, "240") ? "NTSC" : text;
}
bool SetResolution(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (DataFile_P* data = state.OpenData()) {
    data->Resolution = StandardOf(value);
    return true;
  }
  Track* track = state.OpenTrack();
  if (track == nullptr) {
    return false;
  }
  track->Standard = Upper(Trim(value));
  return true;
}
bool SetAspect(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  const std::string aspect = IsWord(value, "4 : 3") ? "4:3" : IsWord(value, "16 : 9") ? "16:9" : "";
  if (DataFile_P* data = state.OpenData()) {
    data->AspectRatio = aspect;
  }
  return true;
}
bool SetDisplayMode(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  Track* track = state.OpenTrack();
  if (track == nullptr) {
    return false;
  }
  std::string mode(IsWord(value, "letter") ? "LetterBox" : value);
  const bool ofStream = state.Open == Segment::SubPicture || state.Open == Segment::SubPlay;
  if (!ofStream) {
    track->DisplayMode = std::move(mode);
  } else if (SubtitleStream* stream = state.OpenSubtitles()) {
    stream->DisplayMode = std::move(mode);
  }
  return true;
}

// --- streams ---

bool IsSubtitle(const ReaderState& state) {
  return state.Open == Segment::SubPicture || state.Open == Segment::SubPlay;
}
bool IsAudio(const ReaderState& state) {
  return state.Open == Segment::Audio || (state.Open == Segment::DataAudio && !state.InDataFolder);
}

// The language of the open stream attribute of a title; nullptr where none is open.
std::string* AttributeLanguage(ReaderState& state) {
  using Attribute = ReaderState::Attribute;
  const std::size_t count = state.AttributeOf == Attribute::Audio        ? AudioStreamCount
                            : state.AttributeOf == Attribute::SubPicture ? SubStreamCount
                                                                         : 0;
  if (state.Title == nullptr || state.AttributeNumber >= count) {
    return nullptr;
  }
  if (state.Languages.empty() || state.Languages.back().Title != state.Title) {
    state.Languages.push_back({state.Title, {}});
  }
  ScriptLanguages& languages = state.Languages.back().Streams;
  return state.AttributeOf == Attribute::Audio ? &languages.Audio[state.AttributeNumber]
                                               : &languages.SubPicture[state.AttributeNumber];
}

bool SetLanguage(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  std::string language(IsWord(value, "not specified") ? "None Specified" : value);
  if (std::string* attribute = AttributeLanguage(state)) {
    *attribute = std::move(language);
    return true;
  }
  if (IsSubtitle(state)) {
    state.OpenSubtitles()->Language = std::move(language);
    return true;
  }
  if (IsAudio(state)) {
    state.OpenAudio()->Language = std::move(language);
    return true;
  }
  return false;
}
// A number is a row of the vocabulary.
std::string ExtensionText(std::string_view value, std::span<const std::string_view> names) {
  const std::string_view trimmed = Trim(value);
  const bool isNumber = !trimmed.empty() && trimmed.find_first_not_of("0123456789") == std::string_view::npos;
  const auto row = isNumber ? static_cast<std::size_t>(LeadingNumber(trimmed)) : names.size();
  return std::string(row < names.size() ? names[row] : value);
}
bool SetAudioExtension(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (!IsAudio(state)) {
    return false;
  }
  state.OpenAudio()->Extension = ExtensionText(value, CLsDVD::AudioArray());
  return true;
}
bool SetSubExtension(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (!IsSubtitle(state)) {
    return false;
  }
  state.OpenSubtitles()->Extension = ExtensionText(value, CLsDVD::SubArray());
  return true;
}
bool SetDelay(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (!IsAudio(state)) {
    return false;
  }
  state.OpenAudio()->Delay = LeadingNumber(value);
  return true;
}
bool SetPcmFlag(ReaderState& state, std::string_view value, std::size_t mute) {
  const std::int32_t flag = IsOn(value) ? 1 : 0;
  if (DataFile_P* data = state.OpenData()) {
    (mute != 0 ? data->Mute : data->Emphasis) = flag;
    return true;
  }
  if (!IsAudio(state)) {
    return false;
  }
  AudioStream& stream = *state.OpenAudio();
  (mute != 0 ? stream.Mute : stream.Emphasis) = flag;
  return true;
}
bool SetStreamNumber(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (IsSubtitle(state)) {
    SubtitleStream& stream = *state.OpenSubtitles();
    stream.StreamNumber = LeadingNumber(value);
    stream.StreamNumberFixed = true;
  } else if (IsAudio(state)) {
    AudioStream& stream = *state.OpenAudio();
    stream.StreamNumber = LeadingNumber(value);
    stream.StreamNumberFixed = true;
  } else {
    return false;
  }
  state.StreamNumbersGiven = true;
  return true;
}
bool SetDropFrame(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (!IsSubtitle(state)) {
    return false;
  }
  state.OpenSubtitles()->DropFrame = IsOn(value) ? 1 : LeadingNumber(value);
  return true;
}

// --- scenes ---

bool SetSceneTime(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  Scene* scene = state.Open == Segment::Scene ? state.OpenScene() : nullptr;
  if (scene == nullptr) {
    return false;
  }
  const Track& track = *state.OpenTrack();
  const std::string timecode = ColonTimecode(value);
  scene->Frame = SceneFrame(timecode, FramesPerSecond(track.Standard));
  if (track.Standard.empty()) {
    state.PendingTimes.push_back({{state.Target.Tracks.Count() - 1, track.Scenes.size() - 1}, timecode});
  }
  return true;
}

constexpr std::array Keys{
    Word{"name", SetName},
    Word{"file", SetFile},
    Word{"subpath", SetSubFolder},
    Word{"videofile", SetVideoFile},
    Word{"audiofile", SetAudioFile},
    Word{"framecount", SetFrameCount, 0, 1, Takes::Number},
    Word{"extendslideforaudio", SetExtend, 0, 1, Takes::YesNo},
    Word{"extendfinalsubtitle", SetExtend, 1, 1, Takes::YesNo},
    Word{"slideduration", SetSlideDuration, 0, 1, Takes::Timecode},
    Word{"resolution", SetResolution, 0, 1, Takes::Standard},
    Word{"videostandard", PassOver},
    Word{"aspect ratio", SetAspect},
    Word{"display mode", SetDisplayMode, 0, 1, Takes::DisplayMode},
    Word{"displaymode", SetDisplayMode, 0, 1, Takes::DisplayMode},
    Word{"isrc in", PassOver},
    Word{"language", SetLanguage, 0, 1, Takes::Language},
    Word{"audiolanguage", SetLanguage, 0, 1, Takes::Language},
    Word{"sublanguage", SetLanguage, 0, 1, Takes::Language},
    Word{"audioextension", SetAudioExtension, 0, 1, Takes::AudioExtension},
    Word{"subextension", SetSubExtension, 0, 1, Takes::SubExtension},
    Word{"delay", SetDelay, 0, 1, Takes::Number},
    Word{"emphasis", SetPcmFlag, 0, 1, Takes::YesNo},
    Word{"mute", SetPcmFlag, 1, 1, Takes::YesNo},
    Word{"streamnumber", SetStreamNumber, 0, 1, Takes::Number},
    Word{"stream number", SetStreamNumber, 0, 1, Takes::Number},
    Word{"dropframe", SetDropFrame},
    Word{"scenetime", SetSceneTime, 0, 1, Takes::Timecode},
    Word{"scene time", SetSceneTime, 0, 1, Takes::Timecode},
};

}  // namespace

std::span<const Word> SourceKeys() {
  return Keys;
}

bool SetName(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  switch (state.Open) {
    case Segment::DataVideo:
    case Segment::DataAudio:
    case Segment::DataSub:
    case Segment::SubPlay:
      return NameDataFile(state, value);
    case Segment::Track:
      state.OpenTrack()->TrackName = value;
      return true;
    case Segment::Audio:
      state.OpenAudio()->StreamName = value;
      return true;
    case Segment::SubPicture:
      state.OpenSubtitles()->StreamName = value;
      return true;
    case Segment::Scene:
      return NameScene(state, value);
    case Segment::Button:
      state.OpenButton()->Name = value;
      return true;
    case Segment::Entry:
      state.Entry->VTSName = value;
      return true;
    case Segment::Title:
      state.Title->TitleName = value;
      return true;
    case Segment::Pgc:
      state.Pgc->PGCName = value;
      return true;
    case Segment::Program:
      state.Program->PGName = value;
      return true;
    case Segment::Cell:
      state.Cell->CellName = value;
      return true;
    case Segment::Palette:
      state.Palette->Key = value;
      return true;
    case Segment::FirstPlay:
    case Segment::Language:
    case Segment::Highlight:
      return true;  // named by their place
    default:
      return false;
  }
}

}  // namespace quorvelant
