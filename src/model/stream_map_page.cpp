#include <algorithm>

#include "model/messages.h"
#include "model/stream_maps.h"

namespace quorvelant {

namespace {

constexpr std::string_view NotUsed = "--Not Used--";
constexpr std::size_t MostAudioLines = AudioStreamCount;
constexpr std::size_t MostSubLines = SubStreamCount;

// Adds a section's lines and gives their number.
template <class Row>
std::size_t AddSection(std::vector<StreamMapLine>& lines, std::string_view head, const std::vector<Row>& map,
                       std::size_t numbers, std::string_view unmatched) {
  lines.push_back({StreamMapLine::Role::Section, -1, std::string(head)});
  std::vector<const Row*> rowOfNumber;
  std::size_t strayCount = 0;
  for (const Row& row : map) {
    if (row.StreamNumber < 0 || static_cast<std::size_t>(row.StreamNumber) >= numbers) {
      ++strayCount;
      continue;
    }
    const auto number = static_cast<std::size_t>(row.StreamNumber);
    rowOfNumber.resize(std::max(rowOfNumber.size(), number + 1));
    if (rowOfNumber[number] == nullptr) {
      rowOfNumber[number] = &row;
    } else {
      ++strayCount;
    }
  }
  for (std::size_t number = 0; number < rowOfNumber.size(); ++number) {
    const Row* row = rowOfNumber[number];
    lines.push_back({StreamMapLine::Role::Stream, static_cast<std::int32_t>(number),
                     row == nullptr ? std::string(NotUsed) : row->Language});
  }
  lines.insert(lines.end(), strayCount, {StreamMapLine::Role::Stream, -1, std::string(unmatched)});
  return rowOfNumber.size() + strayCount;
}

std::optional<Message> BoxFor(std::size_t audioLines, std::size_t subLines) {
  const bool audio = audioLines > MostAudioLines;
  const bool subs = subLines > MostSubLines;
  if (!audio && !subs) {
    return std::nullopt;
  }
  if (audio && subs) {
    return MessageOf(message::TooManyStreams, {});
  }
  return MessageOf(audio ? message::TooManyAudioStreams : message::TooManySubStreams, {});
}

}  // namespace

StreamMapPage ShowStreamMaps(const VTS_P& entry, const Tracks& tracks) {
  StreamMapPage page;
  std::size_t audioLines = 0;
  std::size_t subLines = 0;
  for (const Domain domain : {Domain::Menu, Domain::Title}) {
    const TrackList list = BuildTrackList(entry, domain, tracks);
    page.Lines.push_back({StreamMapLine::Role::Head, -1, domain == Domain::Menu ? "Menu Map" : "Title Map"});
    audioLines = AddSection(page.Lines, "(Audio)", ViewAudioMap(list, tracks), AudioStreamCount, "Error");
    subLines = AddSection(page.Lines, "(Subs)", ViewSubMap(list, tracks), SubStreamCount, "????");
  }
  page.Box = BoxFor(audioLines, subLines);
  return page;
}

}  // namespace quorvelant
