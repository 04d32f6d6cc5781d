// Checks the navigation packs of a whole VOB against its sectors.
#pragma once

#include <cstdint>
#include <span>

#include "verify/vob_place.h"
#include "verify/vob_state.h"

namespace quorvelant {

struct NavCheckOrder {
  const VobTeller& Teller;
  bool IsNtsc = false;
  bool IsOurs = false;  // this program's discs keep what others leave open
};

// `tags` by sector of the VOB set (vob_state.h).
void CheckNavRecords(const VobState& vob, std::span<const std::uint8_t> tags, const NavCheckOrder& order);

// How a BCD time agrees with a span of 90 kHz ticks.
enum class TimeAgreement { None, RealSeconds, Frames };
[[nodiscard]] TimeAgreement Agreement(const IfoTime& time, std::int64_t ticks, bool ntsc);

}  // namespace quorvelant
