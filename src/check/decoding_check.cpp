#include "check/decoding_check.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "check/messages.h"
#include "model/stream_maps.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

bool IsCarried(const AudioStream& stream) {
  return !stream.Removed && (stream.Format == "AC3" || stream.Format == "PCM");
}
bool IsCarried(const SubtitleStream& stream) {
  return !stream.Removed;
}

using Numbers = std::set<std::int32_t>;

template <class Stream>
Numbers NumbersOf(const std::vector<Stream>& streams, std::size_t most) {
  Numbers numbers;
  for (const Stream& stream : streams) {
    if (IsCarried(stream) && stream.StreamNumber >= 0 &&
        static_cast<std::size_t>(stream.StreamNumber) < most) {
      numbers.insert(stream.StreamNumber);
    }
  }
  return numbers;
}

// One chain with one track of its cells.
class ChainChecker {
 public:
  ChainChecker(const PGC_P& chain, const Track& track, Findings& findings)
      : chain_(chain), track_(track), findings_(findings) {}

  // Of the `offered` streams, whether those that the map plays for them are among the track's.
  template <std::size_t Count>
  void Check(std::string_view what, const Numbers& offered, const Numbers& numbers,
             const std::array<std::int32_t, Count>& map) {
    for (const std::int32_t number : offered) {
      const std::int32_t played = map.at(static_cast<std::size_t>(number));
      if (!numbers.contains(played)) {
        constexpr std::string_view NoSound = "there is no sound";
        constexpr std::string_view NoSubtitles = "no subtitles show";
        findings_.push_back(MessageOf(message::DecodingMissing, chain_.Key,
                                      chain_.PGCName.empty() ? chain_.Key : chain_.PGCName, what, number,
                                      played, track_.TrackName, what == "audio" ? NoSound : NoSubtitles));
      }
    }
  }

 private:
  const PGC_P& chain_;
  const Track& track_;
  Findings& findings_;
};

// The streams of a track that viewers of a title can choose: what its own policy leaves.
template <std::size_t Count>
Numbers Allowed(Numbers numbers, bool custom, const std::array<bool, Count>& allowed) {
  std::erase_if(numbers,
                [&](std::int32_t number) { return custom && !allowed.at(static_cast<std::size_t>(number)); });
  return numbers;
}

// A menu has one stream of each kind, the first of its domain.
template <class Map>
Numbers First(const Map& map, const Numbers& numbers) {
  const bool has = !map.empty() && numbers.contains(map.front().StreamNumber);
  return has ? Numbers{map.front().StreamNumber} : Numbers{};
}

class DecodingChecker {
 public:
  explicit DecodingChecker(const Project& project) : project_(project) {}

  Findings Run() {
    for (const auto& at : LivePgcs(project_)) {
      for (const std::int32_t index : TracksOf(*at.Chain)) {
        Check(*at.Chain, at.Title, *at.Entry, project_.Tracks[static_cast<std::size_t>(index)]);
      }
    }
    return std::move(findings_);
  }

 private:
  static Numbers TracksOf(const PGC_P& chain) {
    Numbers tracks;
    for (const Cell_P* cell : LiveCells(chain)) {
      if (cell->SegmentUsed >= 0) {
        tracks.insert(cell->SegmentUsed);
      }
    }
    return tracks;
  }

  void Check(const PGC_P& chain, const Title_P* title, const VTS_P& entry, const Track& track) {
    const Numbers audio = NumbersOf(track.AudioStreams, AudioStreamCount);
    const Numbers subs = NumbersOf(track.SubStreams, SubStreamCount);
    const auto& subMap = track.Aspect == "16:9" ? chain.WideAssignments : chain.NormalAssignments;
    ChainChecker checker(chain, track, findings_);
    if (title != nullptr) {
      checker.Check("audio", Allowed(audio, title->Custom, title->AudioAssignments), audio,
                    chain.AudioAssignments);
      checker.Check("subpicture", Allowed(subs, title->SubCustom, title->SubAssignments), subs, subMap);
      return;
    }
    ViewMenus(entry);
    checker.Check("audio", First(menuAudio_, audio), audio, chain.AudioAssignments);
    checker.Check("subpicture", First(menuSubs_, subs), subs, subMap);
  }

  void ViewMenus(const VTS_P& entry) {
    if (menusOf_ == &entry) {
      return;
    }
    menusOf_ = &entry;
    const TrackList list = BuildTrackList(entry, Domain::Menu, project_.Tracks);
    menuAudio_ = ViewAudioMap(list, project_.Tracks);
    menuSubs_ = ViewSubMap(list, project_.Tracks);
  }

  const Project& project_;
  Findings findings_;
  const VTS_P* menusOf_ = nullptr;  // the entry whose menus have these streams
  AudioMap menuAudio_;
  SubMap menuSubs_;
};

}  // namespace

Findings CheckDecoding(const Project& project) {
  return DecodingChecker(project).Run();
}

}  // namespace quorvelant
