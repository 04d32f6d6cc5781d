// The VOB files that share one count of sectors, and findings by such a sector.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "verify/disc_finding.h"
#include "verify/disc_source.h"
#include "verify/messages.h"

namespace quorvelant {

struct VobFile {
  const DiscSourceFile* File = nullptr;
  std::uint32_t First = 0;  // its first sector in the set
  std::uint32_t Sectors = 0;
};

// A menu VOB, or the VOBs 1 to 9 of a title set.
struct VobSetFiles {
  std::vector<VobFile> Files;

  [[nodiscard]] std::uint32_t Sectors() const {
    return Files.empty() ? 0 : Files.back().First + Files.back().Sectors;
  }
};

class VobTeller {
 public:
  VobTeller(const VobSetFiles& files, DiscFindings& findings) : files_(&files), findings_(&findings) {}

  // `offset` counts bytes of the sector.
  template <class Expected, class Seen>
  [[gnu::cold]] void Tell(const MessageKind& kind, std::uint32_t sector, std::size_t offset,
                          const std::string& table, std::string_view field, const Expected& expected,
                          const Seen& seen) const {
    findings_->Add(kind, SpotOf(sector, offset), table, field, fmt::format("{}", expected),
                   fmt::format("{}", seen));
  }

  // So many sectors of one file, which were not read.
  void TellUnread(std::uint32_t sector, std::uint32_t count, const std::string& why) const {
    DiscSpot spot = SpotOf(sector, 0);
    spot.Offset.reset();
    spot.Sectors = count;
    findings_->Add(message::Unread, std::move(spot), "reading", "", "data", why);
  }

 private:
  [[nodiscard]] DiscSpot SpotOf(std::uint32_t sector, std::size_t offset) const {
    const auto after = std::ranges::upper_bound(files_->Files, sector, {}, &VobFile::First);
    if (after == files_->Files.begin()) {
      return {};
    }
    const VobFile& file = *std::prev(after);
    return {
        .File = file.File->Name, .Sector = sector - file.First, .Offset = static_cast<std::uint32_t>(offset)};
  }

  const VobSetFiles* files_;
  DiscFindings* findings_;
};

}  // namespace quorvelant
