#include "model/stream_maps.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

#include "base/text.h"
#include "model/cls_dvd.h"

namespace quorvelant {

namespace {

constexpr std::string_view NeverMuxed = "DTS";
constexpr std::string_view NoneSpecified = "None Specified";
constexpr std::string_view NotSpecified = "Not Specified";

bool KnownTrack(const Cell_P& cell, const Tracks& tracks) {
  return cell.SegmentUsed >= 0 && static_cast<std::size_t>(cell.SegmentUsed) < tracks.Count();
}

AudioMapRow RowOf(const AudioStream& stream) {
  return {.Language = stream.Language,
          .SampleRate = stream.Traits.SampleRate,
          .Extension = stream.Extension,
          .ChannelCount = stream.Traits.ChannelCount,
          .Format = stream.Format,
          .UseCount = 1,
          .StreamNumber = stream.StreamNumber,
          .Quantisation = stream.Traits.Quantisation};
}

SubMapRow RowOf(const SubtitleStream& stream) {
  return {.Language = stream.Language,
          .Extension = stream.Extension,
          .DisplayMode = stream.DisplayMode,
          .DropFrame = stream.DropFrame,
          .UseCount = 1,
          .StreamNumber = stream.StreamNumber};
}

// Whether a disc has this stream number.
bool IsNumber(std::int32_t number, std::size_t numbers) {
  return number >= 0 && static_cast<std::size_t>(number) < numbers;
}

// What the two maps differ in.
struct AudioKind {
  using Row = AudioMapRow;
  static constexpr int CarriedMost::*Most = &CarriedMost::Audio;
  static bool Has(const Track& track) { return track.HasAudio; }
  static auto& Streams(auto& track) { return track.AudioStreams; }
  static bool CanMux(const AudioStream& stream) {
    return stream.Format != NeverMuxed && IsNumber(stream.StreamNumber, AudioStreamCount);
  }
};
struct SubKind {
  using Row = SubMapRow;
  static constexpr int CarriedMost::*Most = &CarriedMost::Subs;
  static bool Has(const Track& track) { return track.HasSubs; }
  static auto& Streams(auto& track) { return track.SubStreams; }
  static bool CanMux(const SubtitleStream& stream) { return IsNumber(stream.StreamNumber, SubStreamCount); }
};

// Builds a map. `mark` learns of each live stream whether it is multiplexed. Traditionally the answer follows
// the count of rows so far and not the stream's own row: old discs rely on this order.
template <class Kind, class AnyTracks, class Mark>
std::vector<typename Kind::Row> BuildMap(const TrackList& list, AnyTracks& tracks, const Rules& rules,
                                         const Mark& mark) {
  const int most = MostCarried(rules).*Kind::Most;
  std::vector<typename Kind::Row> map;
  std::unordered_map<std::int32_t, std::size_t> rowOfNumber;
  int newStreams = 0;
  bool firstTrack = true;
  for (const TrackListRow& listed : list) {
    auto& track = tracks[listed.Index];
    if (!Kind::Has(track)) {
      continue;
    }
    for (auto* listedStream : Live(Kind::Streams(track))) {
      auto& stream = *listedStream;
      const auto hit = rowOfNumber.find(stream.StreamNumber);
      if (!firstTrack && hit != rowOfNumber.end()) {
        ++map[hit->second].UseCount;
      } else {
        rowOfNumber.emplace(stream.StreamNumber, map.size());
        map.push_back(RowOf(stream));
        newStreams += Kind::CanMux(stream) ? 1 : 0;
      }
      mark(stream, Kind::CanMux(stream) && (rules.AllStreamsMuxed || newStreams <= most));
    }
    firstTrack = false;
  }
  return map;
}

constexpr auto SetMark = [](auto& stream, bool mux) { stream.MuxThisStream = mux; };
constexpr auto NoMark = [](const auto&, bool) {};

template <std::size_t Count, class Streams>
void CarryTo(Streams& streams, const std::array<std::string, Count>& extensions) {
  for (std::size_t k = 0; k < std::min(Count, streams.size()); ++k) {
    streams[k].Extension = extensions[k];
  }
}

template <std::size_t Count, class Streams>
void CarryLanguages(Streams& streams, const std::array<std::string, Count>& languages) {
  for (std::size_t k = 0; k < std::min(Count, streams.size()); ++k) {
    const std::string& language = languages[k];
    if (!language.empty() && !EqualNoCase(language, NoneSpecified) && !EqualNoCase(language, NotSpecified)) {
      streams[k].Language = language;
    }
  }
}

}  // namespace

CarriedMost MostCarried(const Rules& rules) {
  constexpr CarriedMost All{static_cast<int>(AudioStreamCount), static_cast<int>(SubStreamCount)};
  return rules.AllStreamsMuxed ? All : CarriedMost{};
}

TrackList BuildTrackList(const VTS_P& entry, Domain domain, const Tracks& tracks) {
  TrackList list;
  std::vector<bool> listed(tracks.Count());
  for (const Cell_P* cell : LiveCells(entry, domain)) {
    if (!KnownTrack(*cell, tracks)) {
      continue;
    }
    const auto index = static_cast<std::size_t>(cell->SegmentUsed);
    if (!listed[index]) {
      listed[index] = true;
      list.push_back({cell->TrackName, index});
    }
  }
  return list;
}

TrackList BuildMenuTrackList(const VTS_P& entry, const Tracks& tracks) {
  return BuildTrackList(entry, Domain::Menu, tracks);
}

TrackList BuildTitleTrackList(const VTS_P& entry, const Tracks& tracks) {
  return BuildTrackList(entry, Domain::Title, tracks);
}

AudioMap BuildAudioMap(const TrackList& list, Tracks& tracks, const Rules& rules) {
  return BuildMap<AudioKind>(list, tracks, rules, SetMark);
}

SubMap BuildSubMap(const TrackList& list, Tracks& tracks, const Rules& rules) {
  return BuildMap<SubKind>(list, tracks, rules, SetMark);
}

AudioMap ViewAudioMap(const TrackList& list, const Tracks& tracks) {
  return BuildMap<AudioKind>(list, tracks, Rules::Players, NoMark);
}

SubMap ViewSubMap(const TrackList& list, const Tracks& tracks) {
  return BuildMap<SubKind>(list, tracks, Rules::Players, NoMark);
}

std::vector<std::int32_t> GetSubStreamID(const Track& track) {
  std::vector<std::int32_t> free;
  std::array<bool, SubStreamCount> used{};
  const auto streams = Live(track.SubStreams);
  for (const SubtitleStream* stream : streams) {
    if (IsNumber(stream->StreamNumber, SubStreamCount)) {
      used[static_cast<std::size_t>(stream->StreamNumber)] = true;
    }
  }
  for (std::size_t number = 0; !streams.empty() && number < SubStreamCount; ++number) {
    if (!used[number]) {
      free.push_back(static_cast<std::int32_t>(number));
    }
  }
  return free;
}

StreamExtensions::StreamExtensions() {
  Audio.fill("Unspecified");
  Sub.fill("Unspecified");
}

StreamExtensions TitleExtensions(const VTS_P& entry, const Tracks& tracks) {
  StreamExtensions extensions;
  const TrackList list = BuildTitleTrackList(entry, tracks);
  for (const AudioMapRow& row : ViewAudioMap(list, tracks)) {
    if (IsNumber(row.StreamNumber, AudioStreamCount)) {
      extensions.Audio[static_cast<std::size_t>(row.StreamNumber)] =
          CLsDVD::AudioArray()[CLsDVD::ExtensionIndex(row.Extension)];
    }
  }
  for (const SubMapRow& row : ViewSubMap(list, tracks)) {
    if (IsNumber(row.StreamNumber, SubStreamCount)) {
      extensions.Sub[static_cast<std::size_t>(row.StreamNumber)] =
          CLsDVD::SubArray()[CLsDVD::SubExtensionIndex(row.Extension)];
    }
  }
  return extensions;
}

SceneIndex IndexScenes(const Tracks& tracks) {
  SceneIndex owners;
  for (std::size_t i = 0; i < tracks.Count(); ++i) {
    for (const Scene& scene : tracks[i].Scenes) {
      owners.emplace(scene.Name, i);
    }
  }
  return owners;
}

void CarryScriptExtensions(Project& project) {
  const auto owners = IndexScenes(project.Tracks);
  for (std::size_t number = 2; number <= project.Disc.Count(); ++number) {
    const VTS_P& set = *project.Disc.Item(number);
    for (const Cell_P* cell : LiveCells(set, Domain::Title)) {
      const auto owner = owners.find(cell->SceneUsed);
      if (owner != owners.end()) {
        CarryTo(project.Tracks[owner->second].SubStreams, set.SubExtension);
        CarryTo(project.Tracks[owner->second].AudioStreams, set.AudioExtension);
      }
    }
  }
}

void CarryScriptLanguages(Tracks& tracks, const SceneIndex& scenes, const Title_P& title,
                          const ScriptLanguages& languages) {
  for (const PGC_P* chain : Live(title.PGC)) {
    for (const Cell_P* cell : LiveCells(*chain)) {
      const auto owner = scenes.find(cell->SceneUsed);
      if (owner != scenes.end()) {
        CarryLanguages(tracks[owner->second].AudioStreams, languages.Audio);
        CarryLanguages(tracks[owner->second].SubStreams, languages.SubPicture);
      }
    }
  }
}

void FillStreamDefaults(Tracks& tracks) {
  const auto fill = [](auto& streams) {
    for (auto& stream : streams) {
      if (stream.Language.empty()) {
        stream.Language = "English";
      }
      if (stream.Extension.empty()) {
        stream.Extension = "Unspecified";
      }
    }
  };
  for (Track& track : tracks) {
    fill(track.AudioStreams);
    fill(track.SubStreams);
  }
}

}  // namespace quorvelant
