#include "edit/display_maps.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/text.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

using SubMapOfPgc = std::array<std::int32_t, SubStreamCount> PGC_P::*;
struct DisplayMap {
  std::string_view Word;  // a mode's words begin with it: "letter" is "letterbox"
  SubMapOfPgc Map;
};
constexpr std::array<DisplayMap, 4> Maps{{{"normal", &PGC_P::NormalAssignments},
                                          {"wide", &PGC_P::WideAssignments},
                                          {"letter", &PGC_P::LetterAssignments},
                                          {"pan", &PGC_P::PanAssignments}}};

// A mode is one word or two with "/" between, in any order.
bool ShowsIn(const SubtitleStream& stream, std::string_view word) {
  const std::string mode = Lower(stream.DisplayMode);
  return std::ranges::any_of(Split(mode, "/"),
                             [word](std::string_view one) { return Trim(one).starts_with(word); });
}

std::int32_t StreamFor(const SubtitleStream& stream, std::string_view word, const Track& track) {
  if (ShowsIn(stream, word)) {
    return stream.StreamNumber;
  }
  for (const SubtitleStream* other : Live(track.SubStreams)) {
    if (other->Language == stream.Language && other->Extension == stream.Extension && ShowsIn(*other, word)) {
      return other->StreamNumber;
    }
  }
  return stream.StreamNumber;
}

}  // namespace

void MapDisplayModes(PGC_P& chain, const Track& track, bool isMenu) {
  if (!track.HasSubs) {
    return;
  }
  const std::size_t most = isMenu ? 1 : SubStreamCount;
  for (const SubtitleStream* stream : Live(track.SubStreams)) {
    if (stream->StreamNumber < 0 || static_cast<std::size_t>(stream->StreamNumber) >= most) {
      continue;
    }
    for (const DisplayMap& map : Maps) {
      (chain.*map.Map)[static_cast<std::size_t>(stream->StreamNumber)] = StreamFor(*stream, map.Word, track);
    }
  }
}

}  // namespace quorvelant
