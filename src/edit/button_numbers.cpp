#include "edit/button_numbers.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "edit/live_elements.h"
#include "model/keys.h"
#include "model/walk.h"
#include "vm/command_builder.h"
#include "vm/command_target.h"
#include "vm/pgc_links.h"

namespace quorvelant {

namespace {

// Codes of sub-instructions that arrive at a cell of the PGC.
enum Arrival : std::int32_t { TopC = 1, NextC = 2, PrevC = 3, TopPg = 5, NextPg = 6, PrevPg = 7, TopPgc = 9 };

bool MaySelect(std::string_view text) {
  const std::string lower = Lower(text);
  return Contains(lower, "button") || Contains(lower, "hl_b");
}

bool Plays(const Cell_P* cell, const RenumberedSet& set) {
  return cell != nullptr && std::cmp_equal(cell->SegmentUsed, set.Track) &&
         std::cmp_equal(cell->pScene, set.Scene);
}

template <class Cells>
const Cell_P* FirstOf(const Cells& cells) {
  return cells.empty() ? nullptr : cells.front();
}

const Cell_P* FirstCellOf(const PGC_P* chain) {
  return chain == nullptr ? nullptr : FirstOf(LiveCells(*chain));
}

// Where a link arrives that names a PGC, program or cell.
const Cell_P* FirstCellAt(const Project& project, std::string_view key) {
  if (const Cell_P* cell = LiveCell(project, key)) {
    return cell;
  }
  const PG_P* program = LiveProgram(project, key);
  return program != nullptr ? FirstOf(Live(program->Cell)) : FirstCellOf(LivePgc(project, key));
}

// The commands of one PGC. `links` are those of its entry.
class PgcCommands {
 public:
  PgcCommands(const Project& project, const PGC_P& chain, const std::vector<PgcLink>& links,
              const CommandAims& aims, const RenumberedSet& set)
      : project_(project), chain_(chain), links_(links), aims_(aims), set_(set), cells_(LiveCells(chain)) {
    allPlay_ =
        !cells_.empty() && std::ranges::all_of(cells_, [&](const Cell_P* cell) { return Plays(cell, set); });
  }

  void Follow(std::vector<CommandEdit>& edits) const {
    FollowList({chain_.Key, ListKind::Pre}, chain_.PreCommands, nullptr, edits);
    FollowList({chain_.Key, ListKind::Post}, chain_.PostCommands, nullptr, edits);
    FollowList({chain_.Key, ListKind::Cell}, chain_.CellCommands, nullptr, edits);
    for (const Cell_P* cell : cells_) {
      for (std::size_t play = 0; play < cell->ButtonCommands.size(); ++play) {
        FollowList({cell->Key, ListKind::Button, play}, cell->ButtonCommands[play].Commands, cell, edits);
      }
    }
  }

 private:
  void FollowList(CommandPlace place, const CommandList& list, const Cell_P* own,
                  std::vector<CommandEdit>& edits) const {
    for (place.Position = 0; place.Position < list.size(); ++place.Position) {
      const VMICommand_P& command = list[place.Position];
      auto fields =
          command.Deleted || !MaySelect(command.FullCommand) ? std::nullopt : FieldsOf(command.FullCommand);
      if (fields && FollowFields(*fields, command.FullCommand, own)) {
        edits.push_back({place, CommandText(*fields)});
      }
    }
  }

  // Whether a button of the command has another number now.
  bool FollowFields(CommandFields& fields, std::string_view text, const Cell_P* own) const {
    ParsedCommand& command = fields.Command;
    bool moved = false;
    for (LinkTarget* link : {&command.Link, command.LinkAfterSet ? &*command.LinkAfterSet : nullptr}) {
      if (link != nullptr && IsRenumbered(link->Button) && ArrivesAtSet(*link, text, own)) {
        link->Button = NewNumber(link->Button);
        moved = true;
      }
    }
    const bool sets = command.What == Instruction::SetHlBtnn && command.Source.Is(OperandKind::Number);
    if (sets && allPlay_ && IsRenumbered(command.Source.Number)) {
      command.Source.Number = std::max(NewNumber(command.Source.Number), 1);
      moved = true;
    }
    return moved;
  }

  [[nodiscard]] bool IsRenumbered(std::int32_t number) const {
    return number >= 1 && std::cmp_less_equal(number, set_.Numbers.size()) && NewNumber(number) != number;
  }
  [[nodiscard]] std::int32_t NewNumber(std::int32_t number) const {
    return set_.Numbers[static_cast<std::size_t>(number) - 1];
  }

  [[nodiscard]] bool ArrivesAtSet(const LinkTarget& link, std::string_view text, const Cell_P* own) const {
    if (link.Kind == LinkKind::SubInstruction) {
      return SubArrives(link.Number, own);
    }
    const auto aims = aims_.Of(text, own != nullptr ? own->Key : chain_.Key);
    return std::ranges::any_of(aims, [&](const CommandReferenceAim& aim) {
      const ReferenceKind kind = aim.Text.Kind;
      const bool isLink = kind == ReferenceKind::LinkProgram || kind == ReferenceKind::LinkPart ||
                          kind == ReferenceKind::LinkCell;
      return isLink && Plays(FirstCellAt(project_, aim.Key), set_);
    });
  }

  [[nodiscard]] bool SubArrives(std::int32_t code, const Cell_P* own) const {
    switch (code) {
      case TopPgc:
        return Plays(FirstOf(cells_), set_);
      case NextPgcCode:
        return Plays(FirstCellOf(LinkedPgc(PgcLinkKind::Next)), set_);
      case PrevPgcCode:
        return Plays(FirstCellOf(LinkedPgc(PgcLinkKind::Previous)), set_);
      case GoUpPgcCode:
        return Plays(FirstCellOf(LinkedPgc(PgcLinkKind::GoUp)), set_);
      case TopC:
      case NextC:
      case PrevC:
      case TopPg:
      case NextPg:
      case PrevPg:
        return own == nullptr ? allPlay_ : Plays(CellFrom(*own, code), set_);
      default:
        return false;
    }
  }

  [[nodiscard]] const PGC_P* LinkedPgc(PgcLinkKind kind) const {
    const auto link = std::ranges::find_if(
        links_, [&](const PgcLink& one) { return one.Pgc == chain_.Key && one.Kind == kind; });
    return link == links_.end() ? nullptr : LivePgc(project_, link->Target);
  }

  // Where a move from this cell arrives; nullptr beyond the ends.
  [[nodiscard]] const Cell_P* CellFrom(const Cell_P& own, std::int32_t code) const {
    std::vector<std::pair<std::size_t, const Cell_P*>> cells;  // with the number of their program
    std::size_t at = 0;
    std::size_t number = 0;
    for (const PG_P* program : Live(chain_.PG)) {
      const std::size_t before = cells.size();
      for (const Cell_P* cell : Live(program->Cell)) {
        at = cell == &own ? cells.size() : at;
        cells.emplace_back(number, cell);
      }
      number += cells.size() > before ? 1U : 0U;
    }
    if (code == TopC || code == NextC || code == PrevC) {
      const std::size_t to = code == TopC ? at : code == NextC ? at + 1 : at - 1;
      return to < cells.size() ? cells[to].second : nullptr;
    }
    const std::size_t here = cells[at].first;
    const std::size_t program = code == TopPg ? here : code == NextPg ? here + 1 : here - 1;
    const auto found = std::ranges::find(cells, program, [](const auto& cell) { return cell.first; });
    return found == cells.end() ? nullptr : found->second;
  }

  const Project& project_;
  const PGC_P& chain_;
  const std::vector<PgcLink>& links_;
  const CommandAims& aims_;
  const RenumberedSet& set_;
  std::vector<const Cell_P*> cells_;
  bool allPlay_ = false;
};

}  // namespace

std::vector<CommandEdit> FollowButtons(const Project& project, const CommandAims& aims,
                                       const RenumberedSet& set) {
  std::vector<CommandEdit> edits;
  bool moves = false;
  for (std::size_t i = 0; i < set.Numbers.size(); ++i) {
    moves = moves || std::cmp_not_equal(set.Numbers[i], i + 1);
  }
  if (!moves) {
    return edits;
  }
  const VTS_P* entry = nullptr;
  std::vector<PgcLink> links;
  for (const auto& at : LivePgcs(project)) {
    if (at.Entry != entry) {
      entry = at.Entry;
      links = LinksTo(project, entry->Key, false);
    }
    PgcCommands(project, *at.Chain, links, aims, set).Follow(edits);
  }
  return edits;
}

}  // namespace quorvelant
