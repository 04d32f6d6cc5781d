// The streams of a set's two domains, as the heads of its own IFO and of the Video Manager's list describe
// them: the same rows at other places.
#pragma once

#include <string_view>

#include "disc/record.h"
#include "ifo/domain_records.h"

namespace quorvelant {

// A menu has one stream of each kind at most.
struct MenuStreamRows {
  const disc::Field<disc::Number, 2>& Video;
  const disc::Field<disc::Number, 1>& AudioCount;
  const disc::Field<disc::Number, 8>& Audio;
  const disc::Field<disc::Number, 1>& SubCount;
};

struct TitleStreamRows {
  const disc::Field<disc::Number, 2>& Video;
  const disc::Field<disc::Number, 1>& AudioCount;
  const disc::Field<disc::Number, 8, 8>& Audio;
  const disc::Field<disc::Number, 1>& SubCount;
  const disc::Field<disc::Number, 6, 32>& Subs;
};

// `standard` is the project's, for a domain without any picture.
void PutStreams(const MenuStreamRows& rows, const VTS_P& entry, const DomainRecords& menu,
                std::string_view standard, const Rules& rules, ByteSpan head);
void PutStreams(const TitleStreamRows& rows, const VTS_P& entry, const DomainRecords& titles,
                std::string_view standard, const Rules& rules, ByteSpan head);

}  // namespace quorvelant
