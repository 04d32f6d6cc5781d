#include <algorithm>

#include "ifo/attributes.h"
#include "ifo/table_layout.h"
#include "ifo/title_search.h"

namespace quorvelant {
namespace {

void PutRecord(const WrittenSet& set, std::string_view standard, ByteSpan record) {
  using namespace set_attributes;  // NOLINT(google-build-using-namespace): the rows below
  Put(record, Last, ByteOffset{Size - 1});
  Put(record, MenuVideo, VideoAttributes(*set.Entry, Domain::Menu, standard));
  if (!set.Menu->Audio.empty()) {
    Put(record, MenuAudioCount, Number{1});
    Put(record, MenuAudio, AudioAttributes(set.Menu->Audio.front(), Domain::Menu));
  }
  Put(record, MenuSubCount, Number{set.Menu->Subs.empty() ? 0U : 1U});
  Put(record, TitleVideo, VideoAttributes(*set.Entry, Domain::Title, standard));
  const std::size_t audio = std::min(set.Title->Audio.size(), AudioStreamCount);
  Put(record, TitleAudioCount, Number{audio});
  for (std::size_t i = 0; i < audio; ++i) {
    Put(record, TitleAudio, AudioAttributes(set.Title->Audio[i], Domain::Title), i);
  }
  const std::size_t subs = std::min(set.Title->Subs.size(), SubStreamCount);
  Put(record, TitleSubCount, Number{subs});
  for (std::size_t i = 0; i < subs; ++i) {
    Put(record, TitleSub, SubpictureAttributes(set.Title->Subs[i]), i);
  }
}

}  // namespace

Bytes BuildSetAttributes(std::span<const WrittenSet> sets, std::string_view projectStandard) {
  const std::size_t records = table_head::Size + 4 * sets.size();
  Bytes bytes(records + set_attributes::Size * sets.size());
  Put(bytes, table_head::Count, Number{sets.size()});
  Put(bytes, table_head::Last, ByteOffset{static_cast<std::uint32_t>(bytes.size() - 1)});
  for (std::size_t i = 0; i < sets.size(); ++i) {
    const std::size_t start = records + set_attributes::Size * i;
    PutBytes(bytes, table_head::Size + 4 * i, 4, start);
    PutRecord(sets[i], projectStandard, ByteSpan(bytes).subspan(start, set_attributes::Size));
  }
  return bytes;
}

}  // namespace quorvelant
