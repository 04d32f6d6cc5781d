#include "ifo/stream_attributes.h"

#include <algorithm>

#include "ifo/attributes.h"

namespace quorvelant {

void PutStreams(const MenuStreamRows& rows, const VTS_P& entry, const DomainRecords& menu,
                std::string_view standard, const Rules& rules, ByteSpan head) {
  Put(head, rows.Video, VideoAttributes(entry, Domain::Menu, standard));
  if (!menu.Audio.empty()) {
    Put(head, rows.AudioCount, disc::Number{1});
    Put(head, rows.Audio, AudioAttributes(menu.Audio.front(), Domain::Menu, rules));
  }
  Put(head, rows.SubCount, disc::Number{menu.Subs.empty() ? 0U : 1U});
}

void PutStreams(const TitleStreamRows& rows, const VTS_P& entry, const DomainRecords& titles,
                std::string_view standard, const Rules& rules, ByteSpan head) {
  Put(head, rows.Video, VideoAttributes(entry, Domain::Title, standard));
  const std::size_t audio = std::min(titles.Audio.size(), AudioStreamCount);
  Put(head, rows.AudioCount, disc::Number{audio});
  for (std::size_t i = 0; i < audio; ++i) {
    Put(head, rows.Audio, AudioAttributes(titles.Audio[i], Domain::Title, rules), i);
  }
  const std::size_t subs = std::min(titles.Subs.size(), SubStreamCount);
  Put(head, rows.SubCount, disc::Number{subs});
  for (std::size_t i = 0; i < subs; ++i) {
    Put(head, rows.Subs, SubpictureAttributes(titles.Subs[i]), i);
  }
}

}  // namespace quorvelant
