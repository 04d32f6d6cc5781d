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

#include "model/project.h"
#include "model/stream_maps.h"

namespace quorvelant {

// The open item: says whose "Name=", "Duration=" or "DisplayMode=" a line is. It keeps its value behind
// the item's "}" until the next item opens.
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

// One file of the data folder of a script of the other dialect. Plays name it.
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

// Data files of one kind; with equal names the first is found.
struct DataFolder {
  std::vector<DataFile_P> Files;
  std::unordered_map<std::string, std::size_t> Numbers;

  DataFile_P& Add() { return Files.emplace_back(); }
  void NameLast(std::string_view name);
  const DataFile_P* Find(std::string_view name) const;
};

// Where a scene stands.
struct ScenePlace {
  std::size_t Track = 0;
  std::size_t Scene = 0;
  bool Removed = false;  // by the chapter analysis, which told of it
};

// A scene whose time waits for its track's standard.
struct PendingTime {
  ScenePlace Place;
  std::string Timecode;
};

// The quad that the next "Color 1(E2)=" lines fill.
enum class QuadTarget {
  None,
  PlayColor,
  PlayContrast,
  SelectionColor,
  SelectionContrast,
  ActionColor,
  ActionContrast
};
// The three bytes that the next "Red=" lines fill.
enum class ColorTarget { None, ConversionBg, ConversionP, ConversionE1, ConversionE2, PaletteEntry };

struct ReaderState {
  explicit ReaderState(Project& target) : Target(target) {}

  Project& Target;

  // The present line in lower case, without tabs and blanks around it (of a long one the key alone), and
  // all that stands behind its first "=", case kept.
  std::string_view Lower;
  std::string_view Value;

  Segment Open = Segment::None;
  bool IsScenarist = false;         // a data folder was seen
  bool InDataFolder = false;        // its files are being listed
  bool StreamNumbersGiven = false;  // at least one stream brought its number
  bool TargetsStored = false;       // at least one command brought the name that it is to point at
  bool SceneRepeated = false;
  std::string_view TooMany;     // what the script holds too many of; ends the reading
  std::string_view Stage;       // status words that the last line asks for
  std::string_view SkipReason;  // why the last line was passed over, when not for its place
  std::string_view Doubt;       // what is odd about the last line's value; empty where nothing is

  DataFolder Video;
  DataFolder Audio;
  DataFolder Subs;

  // All scenes read so far, by name.
  std::unordered_map<std::string, ScenePlace> Scenes;
  std::vector<PendingTime> PendingTimes;

  // The open highlight's scheme, 0 to 2; none open while empty.
  std::optional<std::size_t> Scheme;
  std::size_t Area = 0;
  QuadTarget Quad = QuadTarget::None;
  ColorTarget Color = ColorTarget::None;
  std::size_t PaletteEntry = 0;
  std::optional<Palette_P> Palette;  // open; joins the project when it is complete
  std::string SubFolder;             // of subtitle bitmaps

  // The open places of the disc; nullptr where none is open.
  VTS_P* Entry = nullptr;
  Lang_P* Language = nullptr;
  Title_P* Title = nullptr;
  PGC_P* Pgc = nullptr;
  PG_P* Program = nullptr;
  Cell_P* Cell = nullptr;
  CommandList* Commands = nullptr;  // where "Command=" goes
  std::string_view CommandWord;     // of its keys
  UopMask* Uops = nullptr;          // where "...=Prohibited" goes
  Title_P* TitleUops = nullptr;
  std::size_t DecodingBlock = 0;  // stream number of the open subpicture decoding block
  std::size_t PgcCount = 0;

  // The attribute block of the other dialect that is open.
  enum class Attribute { None, Audio, SubPicture } AttributeOf = Attribute::None;
  Attribute AttributeBefore = Attribute::None;  // to count blocks without numbers
  std::size_t AttributeNumber = 0;
  struct TitleLanguages {
    const Title_P* Title;
    ScriptLanguages Streams;
  };
  std::vector<TitleLanguages> Languages;

  // The last one opened; nullptr where there is none.
  Track* OpenTrack();
  AudioStream* OpenAudio();
  SubtitleStream* OpenSubtitles();
  SubPicturePlay* OpenSubPlay();
  HighlightPlay* OpenHighlight();
  HighlightButton* OpenButton();
  quorvelant::Scene* OpenScene();
  DataFile_P* OpenData();  // of the kind that `Open` says, in the data folder

  // The open palette joins the project.
  void ClosePalette();
  // "}": the inner blocks end.
  void CloseBlock();
};

}  // namespace quorvelant
