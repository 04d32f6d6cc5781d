#include "verify/disc_finding.h"

#include <fmt/format.h>

#include <algorithm>

#include "verify/messages.h"

namespace quorvelant {

std::string SpotText(const DiscSpot& spot) {
  std::string text = spot.File.empty() ? "" : "/" + spot.File;
  if (spot.Sector && spot.Sectors.value_or(1) > 1) {
    text += fmt::format(" sectors {} to {}", *spot.Sector, *spot.Sector + *spot.Sectors - 1);
  } else if (spot.Sector) {
    text += fmt::format(" sector {}", *spot.Sector);
  }
  if (spot.Offset) {
    text += fmt::format(" byte 0x{:X}", *spot.Offset);
  }
  return text;
}

Message MessageOfFinding(const DiscFinding& finding, const std::string& disc) {
  const std::string subject =
      finding.Field.empty() ? finding.Table : fmt::format("{}, {}", finding.Table, finding.Field);
  std::string seen = finding.Seen;
  if (finding.More > 0) {
    seen += fmt::format(" (and {} more)", finding.More);
  }
  return MessageOf(*finding.Kind, disc + SpotText(finding.Spot), subject, finding.Expected, seen);
}

void DiscFindings::Add(const MessageKind& kind, DiscSpot spot, std::string table, std::string_view field,
                       std::string expected, std::string seen) {
  Listed& ofKind = kinds_[{&kind, spot.File}];
  Listed& ofField = fields_[{&kind, spot.File, std::string(field)}];
  const bool isUnread = &kind == &message::Unread;
  const std::size_t ofOneField = kind.Level == Severity::Information ? MostNotes : MostListed;
  if (ofField.Count >= (isUnread ? MostUnread : ofOneField)) {
    ++findings_[ofField.Last].More;
    return;
  }
  if (ofKind.Count >= (isUnread ? MostUnread : MostOfKind)) {
    ++findings_[ofField.Count > 0 ? ofField.Last : ofKind.Last].More;
    return;
  }
  for (Listed* each : {&ofKind, &ofField}) {
    ++each->Count;
    each->Last = findings_.size();
  }
  findings_.push_back({.Kind = &kind,
                       .Spot = std::move(spot),
                       .Table = std::move(table),
                       .Field = std::string(field),
                       .Expected = std::move(expected),
                       .Seen = std::move(seen)});
}

bool DiscFindings::HasFaults() const {
  return Count(Severity::Error) + Count(Severity::Warning) > 0;
}

std::size_t DiscFindings::Count(Severity level) const {
  return static_cast<std::size_t>(
      std::ranges::count_if(findings_, [&](const DiscFinding& each) { return each.Kind->Level == level; }));
}

}  // namespace quorvelant
