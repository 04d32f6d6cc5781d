#include "vm/name_index.h"

#include <algorithm>

#include "model/walk.h"

namespace quorvelant {

namespace {

std::int32_t Number(std::size_t count) {
  return static_cast<std::int32_t>(count);
}

// A live PGC with its numbers among live ones.
struct CountedPgc {
  const PGC_P* Chain = nullptr;
  bool OfManager = false;
  std::size_t Title = 0;         // its number within the set; 0 in menus
  std::size_t Number = 0;        // within the language or title
  std::size_t DomainNumber = 0;  // through all of the domain
};

void CountPgcs(const Collection<PGC_P>& chains, const CountedPgc& before, std::vector<CountedPgc>& counted) {
  std::size_t number = 0;
  for (const PGC_P* chain : Live(chains)) {
    ++number;
    counted.push_back({chain, before.OfManager, before.Title, number, before.DomainNumber + number});
  }
}

std::vector<CountedPgc> CountPgcs(const Project& project) {
  std::vector<CountedPgc> counted;
  const VTS_P* manager = project.Disc.Item(1);
  for (const VTS_P* entry : Live(project.Disc)) {
    const std::size_t first = counted.size();
    CountedPgc before{.OfManager = entry == manager};
    for (const Lang_P* language : Live(entry->Lang)) {
      CountPgcs(language->PGC, before, counted);
      before.DomainNumber = counted.size() - first;
    }
    const std::size_t firstOfTitles = counted.size();
    for (const Title_P* title : Live(entry->Title)) {
      ++before.Title;
      before.DomainNumber = counted.size() - firstOfTitles;
      CountPgcs(title->PGC, before, counted);
    }
  }
  return counted;
}

// Collects the names of one kind: the first of equal names stays. The members walk as players and script
// readers search; what is removed has neither name nor number.
class NameCollector {
 public:
  NameCollector(const Project& project, const Rules& rules, NameTable& names)
      : project_(project), pgcs_(CountPgcs(project)), rules_(rules), names_(names) {}

  void Pgcs() {
    for (const CountedPgc& at : pgcs_) {
      const bool through = at.Title > 0 && rules_.PgcCountsThroughTable;
      Add(at.Chain->PGCName, through ? at.DomainNumber : at.Number);
    }
  }

  void VmgPgcs() {
    for (const CountedPgc& at : pgcs_) {
      if (at.OfManager && at.Title == 0) {
        Add(at.Chain->PGCName, rules_.VmgPgcCountsWithinUnit ? at.Number : at.DomainNumber);
      }
    }
  }

  void Titles(bool withinSet) {
    std::size_t number = 0;
    for (const VTS_P* set : Live(project_.Disc)) {
      number = withinSet ? 0 : number;
      for (const Title_P* title : Live(set->Title)) {
        Add(title->TitleName, ++number);
      }
    }
  }

  // Programs of titles, counted through the title.
  void Parts() {
    std::size_t number = 0;
    for (const CountedPgc& at : pgcs_) {
      if (at.Title > 0) {
        number = at.Number == 1 ? 0 : number;
        for (const PG_P* program : Live(at.Chain->PG)) {
          if (IsCounted(*program)) {
            Add(program->PGName, ++number, at.Title);
          }
        }
      }
    }
  }

  void Programs() {
    for (const CountedPgc& at : pgcs_) {
      std::size_t number = 0;
      for (const PG_P* program : Live(at.Chain->PG)) {
        if (IsCounted(*program)) {
          Add(program->PGName, ++number);
        }
      }
    }
  }

  void Cells() {
    for (const CountedPgc& at : pgcs_) {
      CellsOf(*at.Chain, true);
    }
  }

  void ResumeCells() {
    for (const CountedPgc& at : pgcs_) {
      if (at.Title > 0) {
        CellsOf(*at.Chain, rules_.ResumeCellCountsThroughPgc);
      }
    }
  }

  // Elements seen, and the highest of their numbers.
  std::size_t Count() const { return order_; }
  std::size_t Most() const { return most_; }

 private:
  bool IsCounted(const PG_P& program) const {
    return !rules_.EmptyProgramsUncounted || std::ranges::any_of(program.Cell, IsLive);
  }

  void CellsOf(const PGC_P& chain, bool throughPgc) {
    std::size_t number = 0;
    for (const PG_P* program : Live(chain.PG)) {
      number = throughPgc ? number : 0;
      for (const Cell_P* cell : Live(program->Cell)) {
        Add(cell->CellName, ++number);
      }
    }
  }

  void Add(const std::string& name, std::size_t number, std::size_t title = 0) {
    ++order_;
    most_ = std::max(most_, number);
    if (!name.empty()) {
      names_.Add({order_, Number(number), Number(title), &name});
    }
  }

  const Project& project_;
  std::vector<CountedPgc> pgcs_;
  const Rules& rules_;
  NameTable& names_;
  std::size_t order_ = 0;
  std::size_t most_ = 0;
};

constexpr int NameEnd = -1;

// The next byte of a name that counts, in lower case, or `NameEnd`. `at` moves past it.
int NextLetter(std::string_view name, std::size_t& at) {
  while (at < name.size() && name[at] == ' ') {
    ++at;
  }
  if (at == name.size()) {
    return NameEnd;
  }
  const int letter = static_cast<unsigned char>(name[at++]);
  return letter >= 'A' && letter <= 'Z' ? letter + 32 : letter;
}

std::uint32_t HashOf(std::string_view name) {
  // FNV-1a, with a last mix since the table takes the low bits.
  std::uint64_t hash = 0xCBF29CE484222325U;
  std::size_t at = 0;
  for (int letter = NextLetter(name, at); letter != NameEnd; letter = NextLetter(name, at)) {
    hash = (hash ^ static_cast<unsigned>(letter)) * 0x100000001B3U;
  }
  return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}

}  // namespace

bool SameName(std::string_view a, std::string_view b) {
  std::size_t atA = 0;
  std::size_t atB = 0;
  int letter = NameEnd;
  do {
    letter = NextLetter(a, atA);
    if (letter != NextLetter(b, atB)) {
      return false;
    }
  } while (letter != NameEnd);
  return true;
}

// The slot that holds the name, or the free one where it belongs.
std::size_t NameTable::SlotOf(std::uint32_t hash, std::string_view name) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  while (slots_[at].Place != 0 &&
         (slots_[at].Hash != hash || !SameName(*targets_[slots_[at].Place - 1].Name, name))) {
    at = (at + 1) & mask;
  }
  return at;
}

void NameTable::Grow() {
  std::vector<Slot> old(std::max<std::size_t>(64, slots_.size() * 2));
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.Place != 0) {
      std::size_t at = slot.Hash & mask;
      while (slots_[at].Place != 0) {
        at = (at + 1) & mask;
      }
      slots_[at] = slot;
    }
  }
}

void NameTable::Add(const NamedTarget& target) {
  if (slots_.size() < 2 * (targets_.size() + 1)) {
    Grow();
  }
  const std::uint32_t hash = HashOf(*target.Name);
  Slot& slot = slots_[SlotOf(hash, *target.Name)];
  if (slot.Place == 0) {
    targets_.push_back(target);
    slot = {hash, static_cast<std::uint32_t>(targets_.size())};
  }
}

const NamedTarget* NameTable::Find(std::string_view name) const {
  std::size_t first = 0;
  if (slots_.empty() || NextLetter(name, first) == NameEnd) {
    return nullptr;
  }
  const Slot& slot = slots_[SlotOf(HashOf(name), name)];
  return slot.Place == 0 ? nullptr : &targets_[slot.Place - 1];
}

NameIndex::Kind& NameIndex::KindOf(TargetKind kind) {
  // The timer's PGC is searched as a linked one is.
  Kind& wanted = kinds_[static_cast<std::size_t>(kind == TargetKind::TimerPgc ? TargetKind::LinkPgc : kind)];
  if (wanted.Built) {
    return wanted;
  }
  wanted.Built = true;
  NameCollector collect(project_, rules_, wanted.Names);
  switch (kind) {
    case TargetKind::LinkPgc:
    case TargetKind::TimerPgc:
      collect.Pgcs();
      break;
    case TargetKind::LinkProgram:
      collect.Programs();
      break;
    case TargetKind::LinkPart:
    case TargetKind::JumpSetPart:
      collect.Parts();
      break;
    case TargetKind::LinkCell:
      collect.Cells();
      break;
    case TargetKind::JumpTitle:
    case TargetKind::JumpSetTitle:
      collect.Titles(kind == TargetKind::JumpSetTitle);
      break;
    case TargetKind::VmgPgc:
      collect.VmgPgcs();
      break;
    case TargetKind::ResumeCell:
      collect.ResumeCells();
      break;
  }
  wanted.Most = Number(kind == TargetKind::VmgPgc ? collect.Count() : collect.Most());
  return wanted;
}

const NamedTarget* NameIndex::Find(TargetKind kind, std::string_view name, std::string_view stored) {
  const NameTable& names = KindOf(kind).Names;
  const NamedTarget* byName = names.Find(name);
  const NamedTarget* byStored = names.Find(stored);
  if (byName == nullptr || byStored == nullptr) {
    return byName != nullptr ? byName : byStored;
  }
  return byStored->Order < byName->Order ? byStored : byName;
}

std::int32_t NameIndex::Most(TargetKind kind) {
  return KindOf(kind).Most;
}

}  // namespace quorvelant
