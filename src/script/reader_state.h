// What changes while the lines of a script are read.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/rules.h"
#include "model/project.h"
#include "model/stream_maps.h"

namespace quorvelant {

// The open item: says whose "Name=", "Duration=" or "DisplayMode=" a line is. It stays open after the item's
// "}", until the next item opens.
enum class Segment {
  None,
  DataVideo,  // a file of the data folder, or a play that names one
  DataAudio,
  DataSub,
  SubPlay,
  Track,
  Audio,
  SubPicture,
  Scene,
  Highlight,
  Button,
  Entry,
  FirstPlay,
  Language,
  Title,
  Pgc,
  Program,
  Cell,
  Palette
};

// --- one line ---

struct ScriptLine {
  std::string_view Lower;  // in lower case, without tabs and blanks around it; of a long one the key alone
  std::string_view Value;  // all that stands after its first "=", case kept
};

// What reading a line came to, beside whether anything took it.
struct LineOutcome {
  std::string_view SkipReason;  // why it was passed over
  std::string_view Doubt;       // what is odd about its value; empty where nothing is
  std::string_view Stage;       // status words that it asks for
  std::string TooMany;          // what the script holds too many of; ends the reading
  bool SceneRepeated = false;   // ends it as well
};

// --- the data folder of the other dialect ---

// One file. Plays name it.
struct DataFile_P {
  std::string FileName;            // the name by which plays refer to it
  std::string FilePath;            // the file
  std::string FileType;            // "Motion", "Still"
  std::string AudioType;           // "AC3", "PCM", "DTS"
  std::vector<std::string> Parts;  // the files of a multi-part list, in order; empty for a plain file
  SubPicturePlay Subtitle;         // colours, position and duration of a bitmap
  std::string Resolution;
  std::string AspectRatio;
  std::int32_t Emphasis = 0;
  std::int32_t Mute = 0;
};

// Files of one kind; with equal names the first is found.
struct DataFiles {
  std::vector<DataFile_P> Files;
  std::unordered_map<std::string, std::size_t> Numbers;

  DataFile_P& Add() { return Files.emplace_back(); }
  void NameLast(std::string_view name);
  const DataFile_P* Find(std::string_view name) const;
};

struct DataFolder {
  bool Listed = false;    // its files are being listed
  std::string SubFolder;  // of subtitle bitmaps
  DataFiles Video;
  DataFiles Audio;
  DataFiles Subs;
};

// --- scenes ---

struct ScenePlace {
  std::size_t Track = 0;
  std::size_t Scene = 0;
  bool Removed = false;  // by the chapter analysis, which said so
};

// A scene whose time waits for its track's standard.
struct PendingTime {
  ScenePlace Place;
  std::string Timecode;
};

struct SceneList {
  std::unordered_map<std::string, ScenePlace> ByName;  // all that were read so far
  std::vector<PendingTime> PendingTimes;
};

// --- what is open over the picture ---

// The four numbers that the next "Color 1(E2)=" lines fill: a subtitle's, or a scheme's.
struct QuadTarget {
  const std::array<std::int32_t SubPicturePlay::*, 4>* OfSubtitle = nullptr;  // E2, E1, P, Bg
  ColorQuad ColorScheme::*OfScheme = nullptr;
};

// The colour whose bytes the next "Red=" lines fill: a subtitle's, or an entry of the open palette.
struct ColorTarget {
  Color SubPicturePlay::*OfSubtitle = nullptr;
  std::optional<std::size_t> OfPalette;
};

// The corners that an item's lines give, as far as they have been read.
struct OverlayCorners {
  std::optional<std::array<std::int32_t, 2>> Origin;
  std::optional<std::array<std::int32_t, 2>> Area;
};

struct OverlayPlace {
  std::optional<std::size_t> Scheme;  // of the open highlight, 0 to 2
  std::size_t Area = 0;               // of the open button
  QuadTarget Quad;
  ColorTarget Color;
  OverlayCorners Corners;            // of the open subtitle
  std::optional<Palette_P> Palette;  // joins the project when it is complete
};

// --- what is open of the disc ---

// Where "Command=" goes.
struct ReaderCommandPlace {
  CommandList PGC_P::*OfPgc = nullptr;  // of the open PGC
  Cell_P* OfCell = nullptr;             // or the last button entry of a cell
  std::string_view Word;                // of the commands' keys
};

enum class UopPlace { None, Scene, Cell, Pgc };

// The elements live in collections, which keep their addresses. nullptr where none is open.
struct ReaderDiscPlace {
  VTS_P* Entry = nullptr;
  Lang_P* Language = nullptr;
  Title_P* Title = nullptr;
  PGC_P* Pgc = nullptr;
  PG_P* Program = nullptr;
  Cell_P* Cell = nullptr;
  ReaderCommandPlace Commands;
  UopPlace Uops = UopPlace::None;  // whose operations "...=Prohibited" prohibits
  bool TitleUops = false;          // or the open title's, where no other's are open
  std::size_t DecodingBlock = 0;   // stream number of the open subpicture decoding block
  std::size_t PgcCount = 0;
  std::size_t CommandCount = 0;
};

// The attribute block of the other dialect that is open.
struct AttributePlace {
  enum class Kind { None, Audio, SubPicture };
  Kind Of = Kind::None;
  Kind Before = Kind::None;  // to count blocks without numbers
  std::size_t Number = 0;
};

struct TitleLanguages {
  const Title_P* Title;
  ScriptLanguages Streams;
};

// What the script turns out to hold somewhere.
struct ScriptTraits {
  bool IsScenarist = false;         // a data folder: it is of the other dialect
  bool StreamNumbersGiven = false;  // a stream with its number
  bool TargetsStored = false;       // a command with the name that it is to point at
};

struct ItemWord;  // vocabulary.h

// The last element of a list of what `owner` points at; nullptr where there is none.
template <class Owner, class T>
T* LastOf(Owner* owner, std::vector<T> Owner::*list) {
  return owner == nullptr || (owner->*list).empty() ? nullptr : &(owner->*list).back();
}

struct ReaderState {
  ReaderState(Project& target, const quorvelant::Rules& rules) : Target(target), Rules(rules) {}

  Project& Target;
  quorvelant::Rules Rules;
  ScriptLine Line;
  LineOutcome Outcome;
  Segment Open = Segment::None;
  ScriptTraits Traits;
  DataFolder Data;
  SceneList Scenes;
  OverlayPlace Overlay;
  ReaderDiscPlace Disc;
  AttributePlace Attribute;
  std::vector<TitleLanguages> Languages;
  std::unordered_map<const ItemWord*, std::size_t> Uses;  // of each line that opens something

  // The last one read; nullptr where there is none.
  Track* LastTrack();
  VideoPlay* LastVideoPlay();
  AudioStream* LastAudio();
  SubtitleStream* LastSubtitles();
  SubPicturePlay* LastSubPlay();
  HighlightPlay* LastHighlight();
  // The open file of the data folder, of the kind that `Open` says.
  DataFile_P* OpenData();
  // Nullptr where no command list is open.
  CommandList* OpenCommands() const;
  UopMask* OpenUops();

  // Opens an item.
  void Enter(Segment segment);
  // The open palette joins the project.
  void ClosePalette();
  // "}": the inner blocks end.
  void CloseBlock();
};

}  // namespace quorvelant
