#include "disc/table_layout.h"
#include "ifo/stream_attributes.h"
#include "ifo/title_search.h"

namespace quorvelant {
namespace {

void PutRecord(const WrittenSet& set, std::string_view standard, const Rules& rules, ByteSpan record) {
  using namespace set_attributes;  // NOLINT(google-build-using-namespace): the rows below
  Put(record, Last, disc::ByteOffset{Size - 1});
  PutStreams(MenuStreamRows{MenuVideo, MenuAudioCount, MenuAudio, MenuSubCount}, *set.Entry, *set.Menu,
             standard, rules, record);
  PutStreams(TitleStreamRows{TitleVideo, TitleAudioCount, TitleAudio, TitleSubCount, TitleSub}, *set.Entry,
             *set.Title, standard, rules, record);
}

}  // namespace

Bytes BuildSetAttributes(std::span<const WrittenSet> sets, std::string_view projectStandard,
                         const Rules& rules) {
  const std::size_t records = table_head::Size + 4 * sets.size();
  Bytes bytes(records + set_attributes::Size * sets.size());
  Put(bytes, table_head::Count, disc::Number{sets.size()});
  Put(bytes, table_head::Last, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size() - 1)});
  for (std::size_t i = 0; i < sets.size(); ++i) {
    const std::size_t start = records + set_attributes::Size * i;
    PutBytes(bytes, table_head::Size + 4 * i, 4, start);
    PutRecord(sets[i], projectStandard, rules, ByteSpan(bytes).subspan(start, set_attributes::Size));
  }
  return bytes;
}

}  // namespace quorvelant
