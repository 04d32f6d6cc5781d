#include "check/decoding_check.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "check/messages.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

bool IsCarried(const AudioStream& stream) {
  return !stream.Removed && (stream.Format == "AC3" || stream.Format == "PCM");
}
bool IsCarried(const SubtitleStream& stream) {
  return !stream.Removed;
}

template <class Stream>
std::set<std::int32_t> NumbersOf(const std::vector<Stream>& streams, std::size_t most) {
  std::set<std::int32_t> numbers;
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

  // `allowed` is the title's own policy.
  template <std::size_t Count>
  void Check(std::string_view what, const std::set<std::int32_t>& numbers,
             const std::array<std::int32_t, Count>& map, bool custom,
             const std::array<bool, Count>& allowed) {
    for (const std::int32_t number : numbers) {
      const auto index = static_cast<std::size_t>(number);
      const bool offered = !custom || allowed.at(index);
      if (offered && !numbers.contains(map.at(index))) {
        constexpr std::string_view NoSound = "there is no sound";
        constexpr std::string_view NoSubtitles = "no subtitles show";
        findings_.push_back(MessageOf(
            message::DecodingMissing, chain_.Key, chain_.PGCName.empty() ? chain_.Key : chain_.PGCName, what,
            number, map.at(index), track_.TrackName, what == "audio" ? NoSound : NoSubtitles));
      }
    }
  }

 private:
  const PGC_P& chain_;
  const Track& track_;
  Findings& findings_;
};

void CheckChain(const Title_P& title, const PGC_P& chain, const Project& project, Findings& findings) {
  std::set<std::int32_t> tracks;
  for (const Cell_P* cell : LiveCells(chain)) {
    if (cell->SegmentUsed >= 0) {
      tracks.insert(cell->SegmentUsed);
    }
  }
  for (const std::int32_t index : tracks) {
    const Track& track = project.Tracks[static_cast<std::size_t>(index)];
    ChainChecker checker(chain, track, findings);
    checker.Check("audio", NumbersOf(track.AudioStreams, AudioStreamCount), chain.AudioAssignments,
                  title.Custom, title.AudioAssignments);
    const bool wide = track.Aspect == "16:9";
    checker.Check("subpicture", NumbersOf(track.SubStreams, SubStreamCount),
                  wide ? chain.WideAssignments : chain.NormalAssignments, title.SubCustom,
                  title.SubAssignments);
  }
}

}  // namespace

Findings CheckDecoding(const Project& project) {
  Findings findings;
  for (const VTS_P* entry : Live(project.Disc)) {
    for (const Title_P* title : Live(entry->Title)) {
      for (const PGC_P* chain : Live(title->PGC)) {
        CheckChain(*title, *chain, project, findings);
      }
    }
  }
  return findings;
}

}  // namespace quorvelant
