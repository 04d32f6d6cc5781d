// All tracks of one domain share its stream numbers. Here the tracks of a domain are gathered and their
// streams merged into two maps, which decide what is multiplexed and what the attribute tables say. The maps
// are built anew at each use.
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
#include "base/user_interface.h"
#include "model/project.h"
#include "model/walk.h"

namespace quorvelant {

// One track of a domain, in the order of first use. No empty rows: row 0 is the first track.
struct TrackListRow {
  std::string TrackName;
  std::size_t Index = 0;  // in `Tracks`
  bool operator==(const TrackListRow&) const = default;
};
using TrackList = std::vector<TrackListRow>;

// One audio stream number of a domain. Row 0 is the first stream met.
struct AudioMapRow {
  std::string Language;
  std::int32_t SampleRate = 0;  // kHz, 0 unknown
  std::string Extension;
  std::int32_t ChannelCount = 0;
  std::string Format;         // "AC3", "PCM", "DTS"
  std::int32_t UseCount = 1;  // streams of the domain's tracks that fall on this row
  std::int32_t StreamNumber = 0;
  std::int32_t Quantisation = 0;  // bits, 0 where it has no meaning
  bool operator==(const AudioMapRow&) const = default;
};
using AudioMap = std::vector<AudioMapRow>;

struct SubMapRow {
  std::string Language;
  std::string Extension;
  std::string DisplayMode;
  std::int32_t DropFrame = 0;
  std::int32_t UseCount = 1;
  std::int32_t StreamNumber = 0;
  bool operator==(const SubMapRow&) const = default;
};
using SubMap = std::vector<SubMapRow>;

// How many AC3 or PCM streams and how many subpicture streams a domain carries at most.
struct CarriedMost {
  int Audio = 2;
  int Subs = 4;
};
[[nodiscard]] CarriedMost MostCarried(const Rules& rules);

// The tracks of the live cells of an entry's languages or titles, each once. A cell without a known track
// is passed over.
TrackList BuildTrackList(const VTS_P& entry, Domain domain, const Tracks& tracks);
TrackList BuildMenuTrackList(const VTS_P& entry, const Tracks& tracks);
TrackList BuildTitleTrackList(const VTS_P& entry, const Tracks& tracks);

// The map of the listed tracks. Sets `MuxThisStream` of every live stream that it looks at: players get all
// that have a number (and are no DTS). Traditionally the count of new rows so far decides: a stream met when
// that count has passed the limit is not multiplexed, even when its row was met before. The map keeps all
// rows. A stream of the first track is never merged.
AudioMap BuildAudioMap(const TrackList& list, Tracks& tracks, const Rules& rules);
SubMap BuildSubMap(const TrackList& list, Tracks& tracks, const Rules& rules);
// The same without marks.
AudioMap ViewAudioMap(const TrackList& list, const Tracks& tracks);
SubMap ViewSubMap(const TrackList& list, const Tracks& tracks);

// The subpicture stream numbers that no live stream of the track uses, in order: the first is the one to
// offer. Empty for a track without subtitles.
std::vector<std::int32_t> GetSubStreamID(const Track& track);

// The extensions of the streams of an entry's title domain, the only one whose extensions reach the disc, by
// stream number; "Unspecified" where there is no stream.
struct StreamExtensions {
  StreamExtensions();
  std::array<std::string, AudioStreamCount> Audio;
  std::array<std::string, SubStreamCount> Sub;
};
[[nodiscard]] StreamExtensions TitleExtensions(const VTS_P& entry, const Tracks& tracks);

// Tracks by the names of their scenes; of equal names the first track's is found. The views point into the
// tracks' scenes.
using SceneIndex = std::unordered_map<std::string_view, std::size_t>;
SceneIndex IndexScenes(const Tracks& tracks);

// Scripts of the other dialect give extensions with the title set, and languages with the title, not with
// the streams. These carry them to the streams of the tracks that hold the scenes of the titles' cells,
// stream k of a track taking entry k.
void CarryScriptExtensions(Project& project);
// The languages that a title's stream policy names, by stream; an empty entry, "None Specified" and "Not
// Specified" (in any case) are not carried over.
struct ScriptLanguages {
  std::array<std::string, AudioStreamCount> Audio;
  std::array<std::string, SubStreamCount> SubPicture;
};
void CarryScriptLanguages(Tracks& tracks, const SceneIndex& scenes, const Title_P& title,
                          const ScriptLanguages& languages);
// An empty language of any stream becomes "English", an empty extension "Unspecified".
void FillStreamDefaults(Tracks& tracks);

// The page that shows an entry's maps.
struct StreamMapLine {
  enum class Role { Head, Section, Stream };
  Role Kind = Role::Stream;
  std::int32_t Number = -1;  // stream number; -1 for heads, sections and lines that match no number
  std::string Text;          // language, "--Not Used--", "Error" or "????"
  bool operator==(const StreamMapLine&) const = default;
};
struct StreamMapPage {
  std::vector<StreamMapLine> Lines;
  std::optional<Message> Box;  // the title domain has too many streams
};
// A line for each number up to the highest in use. A row whose number another row has, or that no disc
// can hold, follows as "Error" (audio) or "????" (subpicture).
StreamMapPage ShowStreamMaps(const VTS_P& entry, const Tracks& tracks);

}  // namespace quorvelant
