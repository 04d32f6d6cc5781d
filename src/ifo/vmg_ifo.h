// VIDEO_TS.IFO whole.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "base/bytes.h"
#include "ifo/domain_records.h"
#include "ifo/title_search.h"

namespace quorvelant {

// The regions in which the disc may play: entry i is region i + 1. Region 7 has no setting.
using AllowedRegions = std::array<bool, 8>;
inline constexpr AllowedRegions AllRegions{true, true, true, true, true, true, false, true};

// The disc's region mask, in which a set bit forbids; region 7 is always forbidden.
std::uint8_t RegionMaskOf(const AllowedRegions& allowed);

// The file, a multiple of 2048 bytes. `menu.Menu` holds the Video Manager's menus (`menu.Title` is not
// looked at); `sets` are the live title sets, number 1 first.
Bytes BuildVideoManagerIfo(const EntryRecords& menu, std::span<const WrittenSet> sets,
                           std::uint8_t regionMask);

}  // namespace quorvelant
