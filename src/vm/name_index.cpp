#include "vm/name_index.h"

#include <algorithm>

#include "base/text.h"

namespace quorvelant {

namespace {

std::int32_t Number(std::size_t count) {
  return static_cast<std::int32_t>(count);
}

// Walks the PGCs of `units` (languages or titles), which each hold a `PGC` collection.
template <class Units, class Visit>
void EachPgc(const Units& units, const Visit& visit) {
  for (const auto& unit : units) {
    for (const PGC_P& pgc : unit.PGC) {
      visit(unit, pgc);
    }
  }
}

}  // namespace

// Collects the names of one kind: the first of equal names stays, and every element takes a place in the
// walk. The members walk as players and script readers search.
class NameCollector {
 public:
  using Names = NameIndex::Names;
  NameCollector(const Project& project, const Rules& rules, Names& names)
      : project_(project), rules_(rules), names_(names) {}

  void Pgcs() {
    for (const VTS_P& set : project_.Disc) {
      PgcsOf(set.Lang, set.Removed, false);
      PgcsOf(set.Title, set.Removed, rules_.PgcCountsThroughTable);
    }
  }

  void VmgPgcs() {
    if (const VTS_P* manager = project_.Disc.Item(1)) {
      PgcsOf(manager->Lang, manager->Removed, !rules_.VmgPgcCountsWithinUnit);
    }
  }

  void Titles(bool withinSet) {
    std::size_t number = 0;
    for (const VTS_P& set : project_.Disc) {
      number = withinSet ? 0 : number;
      for (const Title_P& title : set.Title) {
        Add(title.TitleName, set.Removed || title.Removed, ++number);
      }
    }
  }

  // Programs of titles, counted through the title.
  void Parts() {
    for (const VTS_P& set : project_.Disc) {
      std::size_t titleNumber = 0;
      for (const Title_P& title : set.Title) {
        ++titleNumber;
        std::size_t number = 0;
        for (const PGC_P& pgc : title.PGC) {
          const bool removed = set.Removed || title.Removed || pgc.Removed;
          for (const PG_P& program : pgc.PG) {
            Add(program.PGName, removed || program.Removed, ++number, titleNumber);
          }
        }
      }
    }
  }

  void Programs() {
    for (const VTS_P& set : project_.Disc) {
      const auto visit = [&](const auto& unit, const PGC_P& pgc) {
        std::size_t number = 0;
        for (const PG_P& program : pgc.PG) {
          Add(program.PGName, set.Removed || unit.Removed || pgc.Removed || program.Removed, ++number);
        }
      };
      EachPgc(set.Lang, visit);
      EachPgc(set.Title, visit);
    }
  }

  void Cells() {
    for (const VTS_P& set : project_.Disc) {
      EachPgc(set.Lang,
              [&](const Lang_P& unit, const PGC_P& pgc) { CellsOf(pgc, set.Removed || unit.Removed, true); });
      EachPgc(set.Title, [&](const Title_P& unit, const PGC_P& pgc) {
        CellsOf(pgc, set.Removed || unit.Removed, true);
      });
    }
  }

  void ResumeCells() {
    for (const VTS_P& set : project_.Disc) {
      EachPgc(set.Title, [&](const Title_P& unit, const PGC_P& pgc) {
        CellsOf(pgc, set.Removed || unit.Removed, rules_.ResumeCellCountsThroughPgc);
      });
    }
  }

 private:
  template <class Units>
  void PgcsOf(const Units& units, bool removed, bool throughUnits) {
    std::size_t number = 0;
    for (const auto& unit : units) {
      number = throughUnits ? number : 0;
      for (const PGC_P& pgc : unit.PGC) {
        Add(pgc.PGCName, removed || unit.Removed || pgc.Removed, ++number);
      }
    }
  }

  void CellsOf(const PGC_P& pgc, bool removed, bool throughPgc) {
    std::size_t number = 0;
    for (const PG_P& program : pgc.PG) {
      number = throughPgc ? number : 0;
      for (const Cell_P& cell : program.Cell) {
        Add(cell.CellName, removed || pgc.Removed || program.Removed || cell.Removed, ++number);
      }
    }
  }

  void Add(const std::string& name, bool removed, std::size_t number, std::size_t title = 0) {
    ++order_;
    if (removed || name.empty()) {
      return;
    }
    names_.try_emplace(NameKey(name), NamedTarget{order_, Number(number), Number(title), &name});
  }

  const Project& project_;
  const Rules& rules_;
  Names& names_;
  std::size_t order_ = 0;
};

NameIndex::Names& NameIndex::NamesOf(TargetKind kind) {
  // The timer's PGC is searched as a linked one is.
  const auto slot = static_cast<std::size_t>(kind == TargetKind::TimerPgc ? TargetKind::LinkPgc : kind);
  Names& names = names_[slot];
  if (built_[slot]) {
    return names;
  }
  built_[slot] = true;
  NameCollector collect(project_, rules_, names);
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
  return names;
}

const NamedTarget* NameIndex::Find(TargetKind kind, std::string_view name, std::string_view stored) {
  const Names& names = NamesOf(kind);
  const auto look = [&names](std::string_view text) -> const NamedTarget* {
    const std::string key = NameKey(text);
    const auto found = key.empty() ? names.end() : names.find(key);
    return found == names.end() ? nullptr : &found->second;
  };
  const NamedTarget* byName = look(name);
  const NamedTarget* byStored = look(stored);
  if (byName == nullptr || byStored == nullptr) {
    return byName != nullptr ? byName : byStored;
  }
  return byStored->Order < byName->Order ? byStored : byName;
}

std::size_t NameIndex::VmgPgcCount() const {
  std::size_t count = 0;
  if (const VTS_P* manager = project_.Disc.Item(1)) {
    for (const Lang_P& unit : manager->Lang) {
      count += unit.PGC.Count();
    }
  }
  return count;
}

}  // namespace quorvelant
