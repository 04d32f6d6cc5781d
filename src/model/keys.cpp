#include "model/keys.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "base/text.h"

namespace quorvelant {

namespace {

// Piece `index` of a key, empty after the last.
std::string_view Piece(std::string_view key, std::size_t index) {
  for (; index > 0; --index) {
    const std::size_t dot = key.find('.');
    if (dot == std::string_view::npos) {
      return {};
    }
    key.remove_prefix(dot + 1);
  }
  return key.substr(0, key.find('.'));
}

// The number after `word` in piece `index`; 0 where the piece does not begin with the word.
int NumberBehind(std::string_view key, std::size_t index, std::string_view word) {
  const std::string_view piece = Piece(key, index);
  return piece.starts_with(word) ? std::max(LeadingNumber(piece.substr(word.size())), 0) : 0;
}

std::string Below(std::string_view parent, std::string_view word, int number) {
  return fmt::format("{}.{}{}", parent, word, number);
}

// The plain decimal number that is all of `text`; nothing for any other text.
std::optional<std::size_t> WholeNumber(std::string_view text) {
  const bool digits =
      !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  const std::int32_t value = digits ? LeadingNumber(text) : 0;
  if (!digits || value == std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(value);
}

std::string_view FileName(std::string_view path) {
  const std::size_t slash = path.find_last_of("/\\");
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string PlayText(std::string_view what, const std::string& file, std::size_t number) {
  return file.empty() ? fmt::format("{} {} {}", what, number, EmptyMark) : std::string(FileName(file));
}

// What may follow "Track.N.", each with the word before its number.
struct NodeWord {
  std::string_view Word;
  SourceKey::Node Kind;
};
constexpr std::array NumberedNodes{
    NodeWord{"Video", SourceKey::Node::VideoPlay}, NodeWord{"Audio", SourceKey::Node::AudioStream},
    NodeWord{"Sub", SourceKey::Node::SubStream}, NodeWord{"High", SourceKey::Node::HighStream},
    NodeWord{"Scene", SourceKey::Node::Scene}};
constexpr std::array ListNodes{NodeWord{"VideoStreams", SourceKey::Node::VideoList},
                               NodeWord{"AudioStreams", SourceKey::Node::AudioList},
                               NodeWord{"SubStreams", SourceKey::Node::SubList}};
constexpr std::string_view StreamsWord = "Streams";
constexpr std::string_view AudioPlayWord = "AudioPlay";

std::optional<SourceKey> ParseChild(std::size_t track, std::string_view piece) {
  for (const NodeWord& list : ListNodes) {
    if (piece == list.Word) {
      return SourceKey{list.Kind, track, 0, 0};
    }
  }
  for (const NodeWord& node : NumberedNodes) {
    const auto number =
        piece.starts_with(node.Word) ? WholeNumber(piece.substr(node.Word.size())) : std::nullopt;
    if (number && *number >= 1) {
      return SourceKey{node.Kind, track, *number, 0};
    }
  }
  return std::nullopt;
}

}  // namespace

int TitleSetEntry(std::string_view key) {
  const std::string_view piece = Piece(key, 0);
  if (Contains(piece, "VTS")) {
    const int number = NumberBehind(key, 0, "VTS");
    return number > 0 && number < std::numeric_limits<std::int32_t>::max() ? number + 1 : 0;
  }
  return NumberBehind(key, 0, "VMG");
}
int TitleNumber(std::string_view key) {
  return NumberBehind(key, 1, "TITLE");
}
int LanguageNumber(std::string_view key) {
  return NumberBehind(key, 1, "LANGUAGE");
}
int PgcNumber(std::string_view key) {
  return NumberBehind(key, 2, "PGC");
}
int ProgramNumber(std::string_view key) {
  return NumberBehind(key, 3, "PG");
}
int CellNumber(std::string_view key) {
  return NumberBehind(key, 4, "CELL");
}
int HighlightNumber(std::string_view key) {
  return NumberBehind(key, 5, "HP");
}
bool InTitleDomain(std::string_view key) {
  return Contains(key, "TITLE");
}

std::string EntryKey(int entry) {
  return entry == 1 ? "VMG1" : fmt::format("VTS{}", entry - 1);
}
std::string LanguageKey(std::string_view parent, int number) {
  return Below(parent, "LANGUAGE", number);
}
std::string TitleKey(std::string_view parent, int number) {
  return Below(parent, "TITLE", number);
}
std::string PgcKey(std::string_view parent, int number) {
  return Below(parent, "PGC", number);
}
std::string ProgramKey(std::string_view parent, int number) {
  return Below(parent, "PG", number);
}
std::string CellKey(std::string_view parent, int number) {
  return Below(parent, "CELL", number);
}
std::string HighlightKey(std::string_view parent, int number) {
  return Below(parent, "HP", number);
}

namespace {

// `Disc` is `MyDVD` or `const MyDVD`.
template <class Disc>
auto* EntryIn(Disc& disc, std::string_view key) {
  return disc.Item(static_cast<std::size_t>(TitleSetEntry(key)));
}
// The child of that number in a list of the parent; nullptr where there is no parent.
template <class Parent, class List>
auto* ChildIn(Parent* parent, List list, int number) {
  return parent == nullptr ? nullptr : (parent->*list).Item(static_cast<std::size_t>(number));
}
template <class Disc>
auto* LanguageIn(Disc& disc, std::string_view key) {
  return ChildIn(EntryIn(disc, key), &VTS_P::Lang, LanguageNumber(key));
}
template <class Disc>
auto* TitleIn(Disc& disc, std::string_view key) {
  return ChildIn(EntryIn(disc, key), &VTS_P::Title, TitleNumber(key));
}
template <class Disc>
auto* PgcIn(Disc& disc, std::string_view key) {
  return InTitleDomain(key) ? ChildIn(TitleIn(disc, key), &Title_P::PGC, PgcNumber(key))
                            : ChildIn(LanguageIn(disc, key), &Lang_P::PGC, PgcNumber(key));
}
template <class Disc>
auto* ProgramIn(Disc& disc, std::string_view key) {
  return ChildIn(PgcIn(disc, key), &PGC_P::PG, ProgramNumber(key));
}
template <class Disc>
auto* CellIn(Disc& disc, std::string_view key) {
  return ChildIn(ProgramIn(disc, key), &PG_P::Cell, CellNumber(key));
}

}  // namespace

VTS_P* FindEntry(MyDVD& disc, std::string_view key) {
  return EntryIn(disc, key);
}
const VTS_P* FindEntry(const MyDVD& disc, std::string_view key) {
  return EntryIn(disc, key);
}
Lang_P* FindLanguage(MyDVD& disc, std::string_view key) {
  return LanguageIn(disc, key);
}
const Lang_P* FindLanguage(const MyDVD& disc, std::string_view key) {
  return LanguageIn(disc, key);
}
Title_P* FindTitle(MyDVD& disc, std::string_view key) {
  return TitleIn(disc, key);
}
const Title_P* FindTitle(const MyDVD& disc, std::string_view key) {
  return TitleIn(disc, key);
}
PGC_P* FindPgc(MyDVD& disc, std::string_view key) {
  return PgcIn(disc, key);
}
const PGC_P* FindPgc(const MyDVD& disc, std::string_view key) {
  return PgcIn(disc, key);
}
PG_P* FindProgram(MyDVD& disc, std::string_view key) {
  return ProgramIn(disc, key);
}
const PG_P* FindProgram(const MyDVD& disc, std::string_view key) {
  return ProgramIn(disc, key);
}
Cell_P* FindCell(MyDVD& disc, std::string_view key) {
  return CellIn(disc, key);
}
const Cell_P* FindCell(const MyDVD& disc, std::string_view key) {
  return CellIn(disc, key);
}

std::string EntryName(int entry) {
  return entry == 1 ? "Video Manager" : fmt::format("VTS{}", entry - 1);
}
std::string LanguageUnitName(int entry, std::string_view languageName) {
  return fmt::format("{}_{}", entry == 1 ? "VMG" : EntryName(entry), languageName);
}
std::string MenuPgcName(int entry, std::string_view languageName, int number) {
  return fmt::format("{}_PGC{}", LanguageUnitName(entry, languageName), number);
}
std::string TitleName(int entry, int title) {
  return fmt::format("{}_Title{}", EntryName(entry), title);
}
std::string TitlePgcName(int entry, int title, int number) {
  return fmt::format("{}_PGC{}", TitleName(entry, title), number);
}

std::string_view FolderText(std::string_view trackType) {
  if (trackType == "Motion") {
    return "Motion Video Segments";
  }
  if (trackType == "Still") {
    return "Still Video Segments";
  }
  return trackType == "SlideShow" ? "SlideShow Segments" : "";
}

std::string TrackKey(std::size_t track) {
  return fmt::format("Track.{}", track);
}
std::string ChildKey(std::string_view listKey, std::size_t number) {
  return Replace(listKey, StreamsWord, "") + std::to_string(number);
}
std::string VideoListKey(std::size_t track) {
  return TrackKey(track) + ".VideoStreams";
}
std::string AudioListKey(std::size_t track) {
  return TrackKey(track) + ".AudioStreams";
}
std::string SubListKey(std::size_t track) {
  return TrackKey(track) + ".SubStreams";
}
std::string VideoPlayKey(std::size_t track, std::size_t number) {
  return ChildKey(VideoListKey(track), number);
}
std::string AudioStreamKey(std::size_t track, std::size_t number) {
  return ChildKey(AudioListKey(track), number);
}
std::string AudioPlayKey(std::size_t track, std::size_t stream, std::size_t number) {
  return fmt::format("{}.{}{}", AudioStreamKey(track, stream), AudioPlayWord, number);
}
std::string SubStreamKey(std::size_t track, std::size_t number) {
  return ChildKey(SubListKey(track), number);
}
std::string HighStreamKey(std::size_t track, std::size_t number) {
  return fmt::format("{}.High{}", TrackKey(track), number);
}
std::string SceneKey(std::size_t track, std::size_t number) {
  return fmt::format("{}.Scene{}", TrackKey(track), number);
}

std::string VideoPlayText(const VideoPlay& play, std::size_t number) {
  return PlayText("Video Play", play.File, number);
}
std::string AudioPlayText(const AudioPlay& play, std::size_t number) {
  return PlayText("Audio Play", play.File, number);
}
std::string AudioStreamText(const AudioStream& stream, std::size_t number) {
  return fmt::format("Audio Stream {} (Lan={}) (Ext={})", number, stream.Language, stream.Extension);
}
std::string SubStreamText(const SubtitleStream& stream, std::size_t number) {
  if (stream.SubPlays.empty()) {
    return fmt::format("Subtitle Stream {} {}", number, EmptyMark);
  }
  return fmt::format("Subtitle Stream {} (Lan={}) (Ext={}) (Dis={})", number, stream.Language,
                     stream.Extension, stream.DisplayMode);
}

std::optional<SourceKey> ParseSourceKey(std::string_view key) {
  const std::vector<std::string_view> pieces = Split(key, ".");
  const auto track = pieces.size() >= 2 && pieces[0] == "Track" ? WholeNumber(pieces[1]) : std::nullopt;
  if (!track || pieces.size() > 4) {
    return std::nullopt;
  }
  if (pieces.size() == 2) {
    return SourceKey{SourceKey::Node::Track, *track, 0, 0};
  }
  std::optional<SourceKey> child = ParseChild(*track, pieces[2]);
  if (!child || pieces.size() == 3) {
    return child;
  }
  const auto play = child->Kind == SourceKey::Node::AudioStream && pieces[3].starts_with(AudioPlayWord)
                        ? WholeNumber(pieces[3].substr(AudioPlayWord.size()))
                        : std::nullopt;
  if (!play || *play < 1) {
    return std::nullopt;
  }
  child->Kind = SourceKey::Node::AudioPlay;
  child->Play = *play;
  return child;
}

void KeyButtons(Cell_P& cell) {
  std::size_t number = 0;
  for (ButtonCommands_P& play : cell.ButtonCommands) {
    for (VMICommand_P& command : play.Commands) {
      command.Key = fmt::format("Button{}", ++number);
    }
  }
}

}  // namespace quorvelant
