#include "vm/name_index.h"

#include <algorithm>

#include "model/walk.h"

namespace quorvelant {

namespace {

std::int32_t Number(std::size_t count) {
  return static_cast<std::int32_t>(count);
}

// Collects the names of one kind: the first of equal names stays, and every element takes a place in the
// walk. The members walk as players and script readers search.
class NameCollector {
 public:
  NameCollector(const Project& project, const Rules& rules, NameTable& names)
      : project_(project), pgcs_(AllPgcs(project)), rules_(rules), names_(names) {}

  void Pgcs() {
    for (const auto& at : pgcs_) {
      const bool through = at.In() == Domain::Title && rules_.PgcCountsThroughTable;
      Add(at.Chain->PGCName, at.IsLive, through ? at.DomainNumber : at.Number);
    }
  }

  void VmgPgcs() {
    for (const auto& at : pgcs_) {
      if (at.EntryNumber == 1 && at.In() == Domain::Menu) {
        Add(at.Chain->PGCName, at.IsLive, rules_.VmgPgcCountsWithinUnit ? at.Number : at.DomainNumber);
      }
    }
  }

  void Titles(bool withinSet) {
    std::size_t number = 0;
    for (const VTS_P& set : project_.Disc) {
      number = withinSet ? 0 : number;
      for (const Title_P& title : set.Title) {
        Add(title.TitleName, IsLive(set) && IsLive(title), ++number);
      }
    }
  }

  // Programs of titles, counted through the title.
  void Parts() {
    std::size_t number = 0;
    for (const auto& at : pgcs_) {
      if (at.In() == Domain::Title) {
        number = at.Number == 1 ? 0 : number;
        for (const PG_P& program : at.Chain->PG) {
          if (IsCounted(program)) {
            Add(program.PGName, at.IsLive && IsLive(program), ++number, at.UnitNumber);
          }
        }
      }
    }
  }

  void Programs() {
    for (const auto& at : pgcs_) {
      std::size_t number = 0;
      for (const PG_P& program : at.Chain->PG) {
        if (IsCounted(program)) {
          Add(program.PGName, at.IsLive && IsLive(program), ++number);
        }
      }
    }
  }

  void Cells() {
    for (const auto& at : pgcs_) {
      CellsOf(at, true);
    }
  }

  void ResumeCells() {
    for (const auto& at : pgcs_) {
      if (at.In() == Domain::Title) {
        CellsOf(at, rules_.ResumeCellCountsThroughPgc);
      }
    }
  }

  // Elements seen, and the highest of their numbers.
  std::size_t Count() const { return order_; }
  std::size_t Most() const { return most_; }

 private:
  // Removed programs keep their numbers, as all removed elements do.
  bool IsCounted(const PG_P& program) const {
    return !rules_.EmptyProgramsUncounted || program.Removed || std::ranges::any_of(program.Cell, IsLive);
  }

  void CellsOf(const PlacedPgc<const PGC_P>& at, bool throughPgc) {
    std::size_t number = 0;
    for (const PG_P& program : at.Chain->PG) {
      number = throughPgc ? number : 0;
      for (const Cell_P& cell : program.Cell) {
        Add(cell.CellName, at.IsLive && IsLive(program) && IsLive(cell), ++number);
      }
    }
  }

  void Add(const std::string& name, bool live, std::size_t number, std::size_t title = 0) {
    ++order_;
    most_ = std::max(most_, number);
    if (!live || name.empty()) {
      return;
    }
    names_.Add({order_, Number(number), Number(title), &name});
  }

  const Project& project_;
  std::vector<PlacedPgc<const PGC_P>> pgcs_;  // removed ones too: their numbers count
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

}  // namespace

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
