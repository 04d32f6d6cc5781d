// Keys: dotted paths that address every part of the disc and of the source material, and the names that
// stand beside them.
//
//   disc     "FirstPGC", "VMG1.LANGUAGE1.PGC1", "VTS2.TITLE1.PGC1.PG3.CELL1.HP1"
//   sources  "Track.4", "Track.4.Video1", "Track.4.Audio1.AudioPlay2", "Track.4.Sub1", "Track.4.Scene3"
//
// Numbers within a key count from 1, but for the number of a track, which is its index in `Tracks`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/my_dvd.h"
#include "model/tracks.h"

namespace quorvelant {

inline constexpr std::string_view FirstPgcKey = "FirstPGC";

// The number after a level's word, 0 where the key has no such level. Every key is split on "." and the
// level stands in a fixed piece of it.
int TitleSetEntry(std::string_view key);  // number of the entry in `MyDVD`: 1 Video Manager, n+1 title set n
int TitleNumber(std::string_view key);
int LanguageNumber(std::string_view key);
int PgcNumber(std::string_view key);
int ProgramNumber(std::string_view key);
int CellNumber(std::string_view key);
int HighlightNumber(std::string_view key);
// Whether a key lies in the title domain; every other one is of a menu.
bool InTitleDomain(std::string_view key);

// The key of an entry of `MyDVD`: "VMG1", "VTS1", ...
std::string EntryKey(int entry);
// A parent's key with one more level.
std::string LanguageKey(std::string_view parent, int number);
std::string TitleKey(std::string_view parent, int number);
std::string PgcKey(std::string_view parent, int number);
std::string ProgramKey(std::string_view parent, int number);
std::string CellKey(std::string_view parent, int number);
std::string HighlightKey(std::string_view parent, int number);

// What a key addresses, by its numbers; nullptr where the disc holds no such element. Removed elements are
// found too: their numbers stay taken.
VTS_P* FindEntry(MyDVD& disc, std::string_view key);
const VTS_P* FindEntry(const MyDVD& disc, std::string_view key);
Lang_P* FindLanguage(MyDVD& disc, std::string_view key);
const Lang_P* FindLanguage(const MyDVD& disc, std::string_view key);
Title_P* FindTitle(MyDVD& disc, std::string_view key);
const Title_P* FindTitle(const MyDVD& disc, std::string_view key);
PGC_P* FindPgc(MyDVD& disc, std::string_view key);
const PGC_P* FindPgc(const MyDVD& disc, std::string_view key);
PG_P* FindProgram(MyDVD& disc, std::string_view key);
const PG_P* FindProgram(const MyDVD& disc, std::string_view key);
Cell_P* FindCell(MyDVD& disc, std::string_view key);
const Cell_P* FindCell(const MyDVD& disc, std::string_view key);

// Gives the commands of a cell's buttons their keys, which count through all its plays.
void KeyButtons(Cell_P& cell);

// The names a new element is given, by its place. `languageName` is a name of the vocabulary.
inline constexpr std::string_view FirstPgcName = "First PGC";
std::string EntryName(int entry);  // "Video Manager", "VTS1"
std::string LanguageUnitName(int entry, std::string_view languageName);
std::string MenuPgcName(int entry, std::string_view languageName, int number);
std::string TitleName(int entry, int title);
std::string TitlePgcName(int entry, int title, int number);

// The tree of the source material. The mark that a node has no file yet:
inline constexpr std::string_view EmptyMark = "(Empty)";
inline constexpr std::string_view SegmentsKey = "Segments";
inline constexpr std::string_view SegmentsText = "Segment List";
// A folder's key is the track type it holds; its text, e.g. "Motion Video Segments"; empty for no folder.
std::string_view FolderText(std::string_view trackType);

std::string TrackKey(std::size_t track);
// The key of child `number` of a list: the list's key without "Streams", then the number.
std::string ChildKey(std::string_view listKey, std::size_t number);
std::string VideoListKey(std::size_t track);
std::string AudioListKey(std::size_t track);
std::string SubListKey(std::size_t track);
std::string VideoPlayKey(std::size_t track, std::size_t number);
std::string AudioStreamKey(std::size_t track, std::size_t number);
std::string AudioPlayKey(std::size_t track, std::size_t stream, std::size_t number);
std::string SubStreamKey(std::size_t track, std::size_t number);
std::string HighStreamKey(std::size_t track, std::size_t number = 1);
std::string SceneKey(std::size_t track, std::size_t number);

inline constexpr std::string_view VideoListText = "Video Play List";
inline constexpr std::string_view AudioListText = "Audio Streams";
inline constexpr std::string_view SubListText = "Subtitle Streams";
inline constexpr std::string_view HighStreamText = "HighLight Stream";
// The texts of nodes; `number` counts from 1. A play without a file bears the mark, later its file's name.
std::string VideoPlayText(const VideoPlay& play, std::size_t number);
std::string AudioPlayText(const AudioPlay& play, std::size_t number);
std::string AudioStreamText(const AudioStream& stream, std::size_t number);
std::string SubStreamText(const SubtitleStream& stream, std::size_t number);

// A source key taken apart, field by field, so that "Track.10" is never taken for "Track.1".
struct SourceKey {
  enum class Node {
    Track,
    VideoList,
    AudioList,
    SubList,
    VideoPlay,
    AudioStream,
    AudioPlay,
    SubStream,
    HighStream,
    Scene
  };
  Node Kind = Node::Track;
  std::size_t Track = 0;   // index in `Tracks`
  std::size_t Number = 0;  // of the stream, play or scene, from 1; 0 for a track or a list
  std::size_t Play = 0;    // of an audio play within its stream, from 1
  bool operator==(const SourceKey&) const = default;
};
// Nothing where the text is no key of this form. Words are matched exactly.
std::optional<SourceKey> ParseSourceKey(std::string_view key);

}  // namespace quorvelant
