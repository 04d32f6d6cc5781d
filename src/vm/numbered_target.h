// Numbers that stand in the place of a target's name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vm/command_parser.h"

namespace quorvelant {

struct NumberedTarget {
  std::int32_t Number = 0;
  std::int32_t Title = 1;  // JumpVTS_PTT: of the set
  bool operator==(const NumberedTarget&) const = default;
};

// "pgc_3", of a PGC of the Video Manager.
inline constexpr std::string_view PgcWord = "pgc_";

// A text of digits, as a number.
[[nodiscard]] std::optional<std::int32_t> PlainNumber(std::string_view text);
[[nodiscard]] std::optional<std::int32_t> NumberAfter(std::string_view text, std::string_view word);

// "3", of the Video Manager also "pgc_3", of JumpVTS_PTT "ptt_2 @ vts_ttn_1"; nothing for any other name,
// which is in lower case.
[[nodiscard]] std::optional<NumberedTarget> ReadNumberedTarget(TargetKind kind, std::string_view name);

// The text that reads as `target`, in the form of `former`.
[[nodiscard]] std::string NumberedTargetText(TargetKind kind, std::string_view former,
                                             const NumberedTarget& target);

}  // namespace quorvelant
