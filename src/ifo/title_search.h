// TT_SRPT: all titles of the disc.
#pragma once

#include <span>

#include "base/bytes.h"
#include "ifo/domain_records.h"

namespace quorvelant {

// One live title set: its model and what its titles became.
struct WrittenSet {
  const VTS_P* Entry = nullptr;
  const DomainRecords* Menu = nullptr;
  const DomainRecords* Title = nullptr;
};

// The start sectors of the sets stay 0 until all files are there.
Bytes BuildTitleSearch(std::span<const WrittenSet> sets);

// VTS_ATRT: the attributes of all title sets.
Bytes BuildSetAttributes(std::span<const WrittenSet> sets, std::string_view projectStandard,
                         const Rules& rules);

// TT_PB_TY of a title.
std::uint8_t PlaybackTypeOf(const Title_P& title);

}  // namespace quorvelant
