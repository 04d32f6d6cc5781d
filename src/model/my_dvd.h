// The disc as its author sees it: Video Manager, title sets, languages, titles, program chains,
// programs, cells and their commands. Every level is a collection of `_P` elements.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "disc/limits.h"
#include "model/collection.h"
#include "model/tracks.h"
#include "model/uops.h"

namespace quorvelant {

// One navigation command: its text, its eight bytes as 16 hexadecimal digits, and what it points at.
struct VMICommand_P {
  std::string Key;          // "Pre1", "Post1", "Cell1", "Button1" (through all plays), "FirstPGC1"
  std::string FullCommand;  // the text
  std::string CommandHex;   // empty until it could be encoded once
  bool Deleted = false;
  std::string To_Action;   // the name to point at whatever the text says
  std::string Naming;      // the target found by the last resolve
  std::string LinkNaming;  // the same for the link part of a compound command
  bool operator==(const VMICommand_P&) const = default;
};
using CommandList = std::vector<VMICommand_P>;

// The button commands of one "Menu Play" entry of a cell.
struct ButtonCommands_P {
  CommandList Commands;
  bool operator==(const ButtonCommands_P&) const = default;
};

struct Cell_P {
  std::string Key;
  bool Removed = false;
  std::int32_t SegmentUsed = -1;  // index in Tracks, -1 while the scene is unknown
  std::string TrackName;
  UopMask Uops;
  std::int32_t StillTime = 0;  // seconds, 255 for ever
  std::int32_t iStill = 0;
  std::int32_t pScene = 0;  // index of the scene in the track, from 0
  bool Seamless = false;
  bool EnableSeamlessFlag = false;
  bool SetSeamlessIfPossible = false;
  std::int32_t PlayMode = 0;
  std::string CellName;
  std::string SceneUsed;         // scene name: the link to the source
  std::int32_t CellCommand = 0;  // number in the PGC's cell commands, 0 for none
  bool RestrictedAccess = false;
  std::vector<ButtonCommands_P> ButtonCommands;
  bool operator==(const Cell_P&) const = default;
};

struct PG_P {
  std::string Key;
  bool Removed = false;
  std::string PGName;
  Collection<Cell_P> Cell;
  bool operator==(const PG_P&) const = default;
};

enum class PlayBack : std::int32_t { Sequential = 0, Random = 1, Shuffle = 2 };

struct PGC_P {
  PGC_P();  // every map entry is its own index

  std::string Key;
  std::string PGCName;
  bool Removed = false;
  std::int32_t iVTS = 0;
  std::int32_t iLang = 0;
  std::int32_t iTitle = 0;
  UopMask Uops;
  PlayBack PlayBackMode = PlayBack::Sequential;
  std::string PaletteName = "Default";
  std::string NextPGC = "none";  // PGC names
  std::string PrevPGC = "none";
  std::string GoUpPGC = "none";
  std::int32_t StillTime = 0;
  std::string MenuType;                                           // "Root", "TitleMenu", ..., "None"
  std::int32_t Repeat = 0;                                        // of random or shuffle mode
  std::array<std::int32_t, AudioStreamCount> AudioAssignments{};  // the decoding map
  std::array<std::int32_t, SubStreamCount> NormalAssignments{};   // subpicture stream for 4:3
  std::array<std::int32_t, SubStreamCount> PanAssignments{};
  std::array<std::int32_t, SubStreamCount> WideAssignments{};
  std::array<std::int32_t, SubStreamCount> LetterAssignments{};
  Collection<PG_P> PG;
  CommandList PreCommands;
  CommandList PostCommands;
  CommandList CellCommands;
  bool operator==(const PGC_P&) const = default;
};

struct Lang_P {
  std::string Key;
  bool Removed = false;
  std::string Language;  // two-letter code
  Collection<PGC_P> PGC;
  bool operator==(const Lang_P&) const = default;
};

struct Title_P {
  std::string Key;
  bool Removed = false;
  std::string TitleName;
  bool SequentialPGC = false;  // set by the authoring driver
  bool UOPPTTPlay = false;     // part-of-title play is prohibited
  bool UOPTimePlay = false;    // time play is prohibited
  std::array<bool, AudioStreamCount> AudioAssignments{};
  bool Custom = false;  // custom audio policy; otherwise the maximum policy
  std::array<bool, SubStreamCount> SubAssignments{};
  bool SubCustom = false;
  Collection<PGC_P> PGC;
  bool operator==(const Title_P&) const = default;
};

// Video attributes of one domain, taken from the tracks placed in it.
struct VideoInfo_P {
  std::string Standard;
  std::string Resolution;
  std::string Aspect;
  bool Pan = false;
  bool Letter = false;
  std::string Coding;
  bool Set = false;  // a track was placed here
  bool operator==(const VideoInfo_P&) const = default;
};

struct VTS_P {
  VTS_P();

  std::string Key;  // "VMG1", "VTS1", ...
  bool Removed = false;
  std::string VTSName;
  bool TitleLetterBoxed = false;
  bool MenuLetterBoxed = false;
  bool TitleCameraMode = false;                              // film mode
  std::array<std::string, AudioStreamCount> AudioExtension;  // "Unspecified"
  std::array<std::string, SubStreamCount> SubExtension;
  VideoInfo_P VTSMenuInfo;
  VideoInfo_P VTSTitleInfo;
  Collection<Lang_P> Lang;
  Collection<Title_P> Title;

  // "PAL" or "NTSC": of the first track placed here; empty before.
  const std::string& Standard() const;
  bool operator==(const VTS_P&) const = default;
};

// Entry 1 is the Video Manager, entry n+1 title set n.
using MyDVD = Collection<VTS_P>;

}  // namespace quorvelant
