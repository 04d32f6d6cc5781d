#include "verify/title_check.h"

#include <algorithm>
#include <set>

#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"
#include "verify/ifo_view.h"

namespace quorvelant {
namespace {

int AnglesOf(const IfoChain& chain) {
  int most = 1;
  int run = 1;
  for (const IfoCell& cell : chain.Cells) {
    run = cell.BlockMode() >= 2 ? run + 1 : 1;
    most = std::max(most, run);
  }
  return most;
}

class TitleCheck {
 public:
  TitleCheck(const IfoTables& manager, const std::vector<const IfoTables*>& sets, DiscFindings& findings)
      : manager_(&manager), sets_(&sets), findings_(&findings), teller_(manager.Name, findings) {}

  void Run() {
    if (manager_->TitleSets != static_cast<int>(sets_->size())) {
      teller_.Tell(message::TitleWrong, vmgi::TitleSets.Offset, "VMGI_MAT", "VTS_Ns", sets_->size(),
                   manager_->TitleSets);
    }
    for (std::size_t i = 0; i < manager_->Titles.size(); ++i) {
      CheckTitle(manager_->Titles[i], fmt::format("TT_SRPT title {}", i + 1));
    }
    CheckSetStarts();
    for (const IfoTables* set : *sets_) {
      if (set != nullptr) {
        CheckParts(*set, IfoTeller(set->Name, *findings_));
      }
    }
    CheckAttributes();
  }

 private:
  [[nodiscard]] const IfoTables* SetOf(int number) const {
    const bool there = number >= 1 && number <= static_cast<int>(sets_->size());
    return there ? (*sets_)[static_cast<std::size_t>(number) - 1] : nullptr;
  }

  void CheckTitle(const IfoTitle& title, const std::string& name) {
    using namespace title_entry;  // NOLINT(google-build-using-namespace): the rows of one record
    const auto bad = [&](std::size_t offset, std::string_view field, const auto& expected, const auto& seen) {
      teller_.Tell(message::TitleWrong, title.At + static_cast<std::uint32_t>(offset), name, field, expected,
                   seen);
    };
    const IfoTables* set = SetOf(title.Set);
    const bool named = title.Set >= 1 && title.Set <= static_cast<int>(sets_->size());
    if (set == nullptr && named) {
      return;  // that its tables are lost is told
    }
    if (set == nullptr) {
      bad(TitleSet.Offset, TitleSet.Name, fmt::format("1 to {}", sets_->size()), title.Set);
      return;
    }
    if (title.InSet < 1 || title.InSet > static_cast<int>(set->Parts.size())) {
      bad(TitleInSet.Offset, TitleInSet.Name, fmt::format("1 to {}", set->Parts.size()), title.InSet);
      return;
    }
    if (!seen_.insert({title.Set, title.InSet}).second) {
      bad(TitleInSet.Offset, TitleInSet.Name, "a title once", "twice");
    }
    const auto& parts = set->Parts[static_cast<std::size_t>(title.InSet) - 1];
    if (title.Parts != static_cast<int>(parts.size())) {
      bad(Chapters.Offset, Chapters.Name, parts.size(), title.Parts);
    }
    std::set<unsigned> chains;
    for (const IfoPart& part : parts) {
      chains.insert(part.Chain);
    }
    if (chains.size() > 1 && (title.PlaybackType & NotSequential) == 0) {
      bad(PlaybackType.Offset, PlaybackType.Name, "not one sequential PGC",
          fmt::format("0x{:02X}", title.PlaybackType));
    }
    const bool known = !parts.empty() && parts[0].Chain >= 1 && parts[0].Chain <= set->Chains.size();
    const int angles = known ? AnglesOf(set->Chains[parts[0].Chain - 1U]) : title.Angles;
    if (title.Angles != angles) {
      bad(Angles.Offset, Angles.Name, angles, title.Angles);
    }
  }

  // Sets follow on one another; room between them does no harm.
  void CheckSetStarts() {
    std::uint64_t end = std::uint64_t{manager_->LastSector} + 1;
    for (std::size_t i = 0; i < sets_->size(); ++i) {
      const IfoTables* set = (*sets_)[i];
      std::optional<std::uint32_t> start;
      for (const IfoTitle& title : manager_->Titles) {
        if (title.Set != static_cast<int>(i) + 1) {
          continue;
        }
        const auto at = title.At + static_cast<std::uint32_t>(title_entry::SetStart.Offset);
        if (title.SetStart < end || (start && *start != title.SetStart)) {
          teller_.Tell(message::TitleWrong, at, "TT_SRPT", "VTS_SA", start ? std::uint64_t{*start} : end,
                       title.SetStart);
        } else if (!start && title.SetStart > end) {
          teller_.Tell(manager_->IsOurs ? message::TitleWrong : message::TitleLoose, at, "TT_SRPT", "VTS_SA",
                       end, title.SetStart);
        }
        start = start.value_or(title.SetStart);
      }
      end = start.value_or(end) + (set != nullptr ? std::uint64_t{set->LastSector} + 1 : 0);
    }
  }

  void CheckParts(const IfoTables& set, const IfoTeller& teller) const {
    const auto at = static_cast<std::uint32_t>(GetBytes(set.Data, vtsi::Chapters.Offset, 4) * SectorBytes);
    for (std::size_t t = 0; t < set.Parts.size(); ++t) {
      const int number = static_cast<int>(t) + 1;
      if (!seen_.contains({set.Set, number})) {
        teller.Tell(message::TitleWrong, at, "VTS_PTT_SRPT", fmt::format("TTU {}", number),
                    "a title of the TT_SRPT", "none");
      }
      for (std::size_t p = 0; p < set.Parts[t].size(); ++p) {
        CheckPart(set, number, static_cast<int>(p) + 1, at, teller);
      }
      if (!std::ranges::is_sorted(set.Parts[t])) {
        teller.Tell(message::TitleLoose, at, "VTS_PTT_SRPT", fmt::format("TTU {}", number), "rising programs",
                    "others");
      }
    }
    for (const IfoChain& chain : set.Chains) {
      const int title = chain.Category & 0x7F;
      if (title < 1 || title > static_cast<int>(set.Parts.size())) {
        teller.Tell(message::ChainBroken, chain.At, fmt::format("VTS_PGCIT PGC {}", chain.Number), "PGC_CAT",
                    fmt::format("title 1 to {}", set.Parts.size()), title);
      }
    }
  }

  void CheckPart(const IfoTables& set, int title, int number, std::uint32_t at,
                 const IfoTeller& teller) const {
    const IfoPart& part =
        set.Parts[static_cast<std::size_t>(title) - 1][static_cast<std::size_t>(number) - 1];
    const std::string name = fmt::format("VTS_PTT_SRPT TTU {}", title);
    if (part.Chain < 1 || part.Chain > set.Chains.size()) {
      teller.Tell(message::TitleWrong, at, name, fmt::format("PGCN of part {}", number),
                  fmt::format("1 to {}", set.Chains.size()), part.Chain);
      return;
    }
    const IfoChain& chain = set.Chains[part.Chain - 1U];
    if (part.Program < 1 || part.Program > chain.Programs.size()) {
      teller.Tell(message::TitleWrong, at, name, fmt::format("PGN of part {}", number),
                  fmt::format("1 to {}", chain.Programs.size()), part.Program);
    }
    if ((chain.Category & 0x7F) != title || (number == 1 && !chain.IsEntry())) {
      teller.Tell(message::ChainBroken, chain.At, fmt::format("VTS_PGCIT PGC {}", chain.Number), "PGC_CAT",
                  fmt::format("title {}{}", title, number == 1 ? ", its entry" : ""),
                  fmt::format("0x{:02X}", chain.Category));
    }
  }

  // The manager repeats what each set says of its streams.
  void CheckAttributes() {
    const auto& records = manager_->SetAttributes;
    if (records.size() != sets_->size()) {
      teller_.Tell(message::TitleWrong, vmgi::SetAttributes.Offset, "VTS_ATRT", "VTS_Ns", sets_->size(),
                   records.size());
    }
    for (std::size_t i = 0; i < std::min(records.size(), sets_->size()); ++i) {
      const auto& [at, bytes] = records[i];
      const IfoTables* set = (*sets_)[i];
      if (set == nullptr) {
        continue;
      }
      for (std::size_t k = set_attributes::Category.Offset; k < bytes.size(); ++k) {
        const std::size_t inSet = k < set_attributes::MenuVideo.Offset
                                      ? vtsi::Category.Offset + k - set_attributes::Category.Offset
                                      : vtsi::MenuVideo.Offset + k - set_attributes::MenuVideo.Offset;
        if (inSet < set->Data.size() && set->Data[inSet] != bytes[k]) {
          teller_.Tell(message::AttributeWrong, at + static_cast<std::uint32_t>(k),
                       fmt::format("VTS_ATR {}", i + 1), fmt::format("byte {}", k),
                       fmt::format("0x{:02X} as VTSI_MAT", set->Data[inSet]),
                       fmt::format("0x{:02X}", bytes[k]));
          break;
        }
      }
    }
  }

  const IfoTables* manager_;
  const std::vector<const IfoTables*>* sets_;
  DiscFindings* findings_;
  IfoTeller teller_;
  std::set<std::pair<int, int>> seen_;  // set and title in it
};

}  // namespace

void CheckTitles(const IfoTables& manager, const std::vector<const IfoTables*>& sets,
                 DiscFindings& findings) {
  TitleCheck(manager, sets, findings).Run();
}

}  // namespace quorvelant
