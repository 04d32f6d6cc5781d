#include "vm/numbered_target.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"

namespace quorvelant {

namespace {

// "ptt_2 @ vts_ttn_1": program and title.
std::optional<NumberedTarget> ReadNumberedPart(std::string_view name) {
  const std::string key = NameKey(name);
  const std::size_t at = std::min(key.find('@'), key.size());
  const auto part = NumberAfter(std::string_view(key).substr(0, at), "ptt_");
  const auto title = NumberAfter(std::string_view(key).substr(std::min(at + 1, key.size())), "vts_ttn_");
  return part && title ? std::optional(NumberedTarget{*part, *title}) : std::nullopt;
}

}  // namespace

std::optional<std::int32_t> PlainNumber(std::string_view text) {
  const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
  return digits ? std::optional(LeadingNumber(text)) : std::nullopt;
}

std::optional<std::int32_t> NumberAfter(std::string_view text, std::string_view word) {
  return text.starts_with(word) ? PlainNumber(text.substr(word.size())) : std::nullopt;
}

std::optional<NumberedTarget> ReadNumberedTarget(TargetKind kind, std::string_view name) {
  if (kind == TargetKind::JumpSetPart) {
    return ReadNumberedPart(name);
  }
  auto number = PlainNumber(name);
  if (!number && kind == TargetKind::VmgPgc) {
    number = NumberAfter(name, PgcWord);
  }
  return number ? std::optional(NumberedTarget{.Number = *number}) : std::nullopt;
}

std::string NumberedTargetText(TargetKind kind, std::string_view former, const NumberedTarget& target) {
  if (kind == TargetKind::JumpSetPart) {
    return fmt::format("ptt_{} @ vts_ttn_{}", target.Number, target.Title);
  }
  return fmt::format("{}{}", former.starts_with(PgcWord) ? PgcWord : "", target.Number);
}

}  // namespace quorvelant
