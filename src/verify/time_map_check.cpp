#include "verify/time_map_check.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <set>

#include "disc/table_layout.h"
#include "disc/vtsi_layout.h"

namespace quorvelant {
namespace {

constexpr std::int64_t Second = 90000;
constexpr std::int64_t NtscSecond = 90090;  // thirty frames

// The VOBUs of a chain, in the order and at the times that it plays them.
struct ChainLine {
  std::vector<std::int64_t> Starts = {};
  std::vector<const VobuFacts*> Vobus = {};
  std::int64_t Total = 0;
};

ChainLine LineOf(const IfoChain& chain, const VobSetFacts& facts) {
  ChainLine line;
  for (const IfoCell& cell : chain.Cells) {
    if (cell.BlockMode() >= 2) {
      continue;
    }
    auto vobu = std::ranges::lower_bound(facts.Vobus, cell.First, {}, &VobuFacts::Sector);
    for (; vobu != facts.Vobus.end() && vobu->Sector <= cell.LastVobu; ++vobu) {
      if (vobu->VobId == cell.VobId && vobu->CellId == cell.CellId) {
        line.Starts.push_back(line.Total);
        line.Vobus.push_back(&*vobu);
        line.Total += std::int64_t{vobu->EndPtm} - vobu->StartPtm;
      }
    }
  }
  return line;
}

// Ticks between a time and when the VOBU at `sector` plays.
std::int64_t Away(const ChainLine& line, std::int64_t time, std::uint32_t sector) {
  const auto after = std::ranges::upper_bound(line.Starts, time);
  const auto index = static_cast<std::size_t>(std::max<std::ptrdiff_t>(after - line.Starts.begin() - 1, 0));
  if (line.Vobus[index]->Sector == sector) {
    return 0;
  }
  std::int64_t best = std::numeric_limits<std::int64_t>::max();
  for (std::size_t i = 0; i < line.Vobus.size(); ++i) {
    if (line.Vobus[i]->Sector == sector) {
      const std::int64_t end = i + 1 < line.Starts.size() ? line.Starts[i + 1] : line.Total;
      best = std::min(
          best, line.Starts[i] > time ? line.Starts[i] - time : std::max<std::int64_t>(1, time - end + 1));
    }
  }
  return best;
}

class TimeMapCheck {
 public:
  TimeMapCheck(const IfoTimeMap& map, const IfoChain& chain, const VobSetFacts& facts,
               const IfoTables& tables, const IfoTeller& teller)
      : map_(&map),
        facts_(&facts),
        line_(LineOf(chain, facts)),
        ntsc_(tables.TitleStreams.Video.IsNtsc()),
        ours_(tables.IsOurs),
        teller_(&teller),
        name_(fmt::format("VTS_TMAP {}", chain.Number)) {}

  void Run() const {
    constexpr std::int64_t WorthMap = 10;  // seconds
    if (map_->Entries.empty()) {
      if (line_.Total > WorthMap * Second) {
        Tell(message::TimeMapLoose, 2, "MAP_EN_Ns", "entries for time search", 0);
      }
      return;
    }
    if (line_.Starts.empty()) {
      return;
    }
    CheckCount();
    for (std::size_t i = 0; i < map_->Entries.size(); ++i) {
      CheckEntry(i);
    }
  }

 private:
  template <class Expected, class Seen>
  void Tell(const MessageKind& kind, std::size_t offset, std::string_view field, const Expected& expected,
            const Seen& seen) const {
    teller_->Tell(kind, map_->At + static_cast<std::uint32_t>(offset), name_, field, expected, seen);
  }
  // Units count real seconds, or as many frames.
  [[nodiscard]] std::set<std::int64_t> Units() const {
    return {map_->UnitSeconds * Second, map_->UnitSeconds * (ntsc_ ? NtscSecond : Second)};
  }

  void CheckCount() const {
    const auto count = static_cast<std::int64_t>(map_->Entries.size());
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    std::int64_t most = 0;
    for (const std::int64_t unit : Units()) {
      least = std::min(least, (line_.Total - 1) / unit);
      most = std::max(most, (line_.Total - 1) / unit + 1);
    }
    if (count < least - 1 || count > most) {
      Tell(message::TimeMapWrong, 2, "MAP_EN_Ns",
           fmt::format("{} to {} units of {} s", least, most, map_->UnitSeconds), count);
    } else if (count < least) {
      Tell(message::TimeMapLoose, 2, "MAP_EN_Ns", fmt::format("{} or more", least), count);
    }
  }

  void CheckEntry(std::size_t index) const {
    const std::uint32_t entry = map_->Entries[index];
    const std::uint32_t sector = entry & ~time_map::LastOfVob;
    const std::size_t offset = time_map::Size + 4 * index;
    const std::string field = fmt::format("MAP_EN {}", index + 1);
    std::int64_t off = std::numeric_limits<std::int64_t>::max();
    for (const std::int64_t unit : Units()) {
      off = std::min(off, Away(line_, static_cast<std::int64_t>(index + 1) * unit, sector));
    }
    if (off > map_->UnitSeconds * Second / 2) {
      Tell(message::TimeMapWrong, offset, field,
           fmt::format("the VOBU shown at {} s", (index + 1) * static_cast<std::size_t>(map_->UnitSeconds)),
           fmt::format("sector {}", sector));
    } else if (off > 0) {
      Tell(message::TimeMapLoose, offset, field, "the VOBU that has the time",
           fmt::format("sector {}", sector));
    }
    CheckFlag(index, offset, field);
  }

  // Bit 31: the clock may start anew before the next entry. Some set it at each cell, this program where the
  // VOB ends.
  void CheckFlag(std::size_t index, std::size_t offset, const std::string& field) const {
    const auto& entries = map_->Entries;
    if (index + 1 >= entries.size()) {
      return;
    }
    const auto vobOf = [&](std::uint32_t entry) {
      const std::uint32_t sector = entry & ~time_map::LastOfVob;
      const auto found = std::ranges::lower_bound(facts_->Vobus, sector, {}, &VobuFacts::Sector);
      return found == facts_->Vobus.end() ? 0U : unsigned{found->VobId};
    };
    const bool flagged = (entries[index] & time_map::LastOfVob) != 0;
    const bool changes = vobOf(entries[index]) != vobOf(entries[index + 1]);
    if (changes ? !flagged : flagged && ours_) {
      Tell(ours_ ? message::TimeMapWrong : message::TimeMapLoose, offset, field,
           changes ? "the flag of another VOB next" : "no flag, since the VOB goes on",
           fmt::format("0x{:08X}", entries[index]));
    }
  }

  const IfoTimeMap* map_;
  const VobSetFacts* facts_;
  ChainLine line_;
  bool ntsc_;
  bool ours_;
  const IfoTeller* teller_;
  std::string name_;
};

}  // namespace

void CheckTimeMaps(const IfoTables& tables, const VobSetFacts& facts, const IfoTeller& teller) {
  const auto& maps = *tables.TimeMaps;
  if (maps.size() != tables.Chains.size()) {
    const auto at = static_cast<std::uint32_t>(GetBytes(tables.Data, vtsi::TimeMaps.Offset, 4) * SectorBytes);
    teller.Tell(message::TimeMapWrong, at, "VTS_TMAPT", "TMAP_Ns", tables.Chains.size(), maps.size());
  }
  for (std::size_t i = 0; i < std::min(maps.size(), tables.Chains.size()); ++i) {
    TimeMapCheck(maps[i], tables.Chains[i], facts, tables, teller).Run();
  }
}

}  // namespace quorvelant
