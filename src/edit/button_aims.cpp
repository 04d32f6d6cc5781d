#include "edit/button_aims.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <utility>

#include "edit/button_edits.h"
#include "edit/change.h"
#include "edit/command_lists.h"
#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "edit/messages.h"
#include "edit/tree.h"
#include "model/keys.h"
#include "model/menu_kind.h"
#include "model/walk.h"
#include "vm/command_choices.h"

namespace quorvelant {

namespace {

constexpr std::int32_t TitleMenuId = 2;
constexpr std::int32_t RootMenuId = 3;

// What leads from one place of the disc to others.
class LeadingText {
 public:
  LeadingText(const Project& project, const Rules& rules, std::string_view from)
      : project_(project), rules_(rules), names_(project, rules), stand_(StandOf(project, from)) {}

  std::optional<std::string> To(std::string_view target) {
    if (!stand_ || stand_->Entry == nullptr) {
      return std::nullopt;
    }
    if (target == FirstPgcKey) {
      return ToSpace(SystemSpace::FirstPlay, 0, 0);
    }
    if (const Cell_P* cell = LiveCell(project_, target)) {
      return ToCell(*cell, target);
    }
    if (const PG_P* program = LiveProgram(project_, target)) {
      return ToProgram(*program, target);
    }
    if (LivePgc(project_, target) != nullptr) {
      return ToPgc(target);
    }
    if (const Title_P* title = LiveTitle(project_, target)) {
      return ToTitle(*title, target);
    }
    return LiveEntry(project_, target) != nullptr || LiveLanguage(project_, target) != nullptr
               ? ToMenus(target)
               : std::nullopt;
  }

 private:
  [[nodiscard]] CommandDomain Here() const { return DomainOf(*stand_); }
  [[nodiscard]] bool InOwnEntry(std::string_view key) const {
    return std::cmp_equal(TitleSetEntry(key), stand_->EntryNumber);
  }

  std::optional<std::string> Named(TargetKind kind, Move move, const std::string& name) {
    if (!MayStandIn(Here(), move) || !LeadsTo(names_, kind, name)) {
      return std::nullopt;
    }
    CommandFields fields = FieldsTo(kind, name);
    if (kind == TargetKind::VmgPgc && Here() == CommandDomain::Titles) {
      fields.Command.What = Instruction::CallSs;
    }
    return CommandText(fields);
  }

  // A menu of a set, by its live number, or of the Video Manager.
  std::optional<std::string> ToSpace(SystemSpace space, std::int32_t set, std::int32_t menu) {
    if (!spaces_) {
      spaces_ = SystemSpaceChoices(project_, rules_, *stand_);
    }
    const auto found = std::ranges::find_if(*spaces_, [&](const CommandFields& fields) {
      const ParsedCommand& jump = fields.Command;
      return jump.Space == space &&
             (space != SystemSpace::SetMenu || (jump.TitleSet == set && jump.MenuId == menu));
    });
    return found == spaces_->end() ? std::nullopt : std::optional(CommandText(*found));
  }

  std::optional<std::string> ToTitle(const Title_P& title, std::string_view key) {
    auto text =
        InOwnEntry(key) ? Named(TargetKind::JumpSetTitle, Move::JumpSetTitle, title.TitleName) : std::nullopt;
    return text ? text : Named(TargetKind::JumpTitle, Move::JumpTitle, title.TitleName);
  }

  // The number of a title set as commands count; in titles, where calls reach their own set alone, 0.
  [[nodiscard]] std::int32_t SetNumber(std::size_t entry) const {
    std::int32_t number = 0;
    for (std::size_t i = 2; i <= entry; ++i) {
      number += IsLive(*project_.Disc.Item(i)) ? 1 : 0;
    }
    return Here() == CommandDomain::Titles ? 0 : number;
  }

  std::optional<std::string> ToMenuPgc(const CommandStand& at) {
    if (stand_->Language != nullptr && at.Language == stand_->Language) {
      return Named(TargetKind::LinkPgc, Move::Link, at.Chain->PGCName);
    }
    if (at.EntryNumber == 1) {
      return Named(TargetKind::VmgPgc, Move::None, at.Chain->PGCName);
    }
    const auto kind = MenuKindOf(at.Chain->MenuType).Category;
    const bool reaches = Here() != CommandDomain::Titles || InOwnEntry(at.Key());
    constexpr std::int32_t MenuBits = 0x0F;
    return kind == 0 || !reaches ? std::nullopt
                                 : ToSpace(SystemSpace::SetMenu, SetNumber(at.EntryNumber), kind & MenuBits);
  }

  std::optional<std::string> ToPgc(std::string_view key) {
    const auto at = StandOf(project_, key);
    if (!at || at->Entry == nullptr) {
      return std::nullopt;
    }
    if (at->Title == nullptr) {
      return ToMenuPgc(*at);
    }
    if (Here() == CommandDomain::Titles && at->Entry == stand_->Entry) {
      return Named(TargetKind::LinkPgc, Move::Link, at->Chain->PGCName);
    }
    if (Live(at->Title->PGC).front() == at->Chain) {
      return ToTitle(*at->Title, at->Title->Key);
    }
    const auto programs = Live(at->Chain->PG);
    return programs.empty() ? std::nullopt : ToProgram(*programs.front(), programs.front()->Key);
  }

  std::optional<std::string> ToProgram(const PG_P& program, std::string_view key) {
    const auto at = StandOf(project_, key);
    if (!at) {
      return std::nullopt;
    }
    if (at->Chain == stand_->Chain) {
      return Named(TargetKind::LinkProgram, Move::Link, program.PGName);
    }
    if (at->Title == nullptr) {
      return Live(at->Chain->PG).front() == &program ? ToMenuPgc(*at) : std::nullopt;
    }
    auto text = at->Entry == stand_->Entry ? Named(TargetKind::JumpSetPart, Move::JumpSetPart, program.PGName)
                                           : std::nullopt;
    const bool isFirst = Live(at->Title->PGC).front() == at->Chain && Live(at->Chain->PG).front() == &program;
    return text || !isFirst ? text : ToTitle(*at->Title, at->Title->Key);
  }

  std::optional<std::string> ToCell(const Cell_P& cell, std::string_view key) {
    const auto at = StandOf(project_, key);
    if (at && at->Chain == stand_->Chain) {
      return Named(TargetKind::LinkCell, Move::Link, cell.CellName);
    }
    for (const PG_P* program : at ? Live(at->Chain->PG) : std::vector<const PG_P*>()) {
      const auto cells = Live(program->Cell);
      if (!cells.empty() && cells.front() == &cell) {
        return ToProgram(*program, program->Key);
      }
    }
    return std::nullopt;
  }

  // A title set or the Video Manager by its first menu; a set without one by its first title.
  std::optional<std::string> ToMenus(std::string_view key) {
    const VTS_P* const entry = LiveEntry(project_, EntryKey(TitleSetEntry(key)));
    const bool isManager = TitleSetEntry(key) == 1;
    const auto number = static_cast<std::size_t>(TitleSetEntry(key));
    const bool reaches = isManager || Here() != CommandDomain::Titles || InOwnEntry(key);
    auto text = isManager ? ToSpace(SystemSpace::TitleMenu, 0, TitleMenuId)
                : reaches ? ToSpace(SystemSpace::SetMenu, SetNumber(number), RootMenuId)
                          : std::nullopt;
    const auto titles = entry != nullptr ? Live(entry->Title) : std::vector<const Title_P*>();
    return text || titles.empty() ? text : ToTitle(*titles.front(), titles.front()->Key);
  }

  const Project& project_;
  const Rules& rules_;
  NameIndex names_;
  std::optional<CommandStand> stand_;
  std::optional<std::vector<CommandFields>> spaces_;
};

// A node and those below it, as far as something leads there.
void AddAims(const TreeNode& node, const Project& project, LeadingText& text, std::set<std::string>& known,
             std::vector<ButtonAim>& aims) {
  const bool isOffered = node.Kind == "title" || node.Kind == "pgc" || node.Kind == "program";
  // The first PGC of a title, and its first chapter, are the title.
  if (const auto command = isOffered ? text.To(node.Key) : std::nullopt;
      command && known.insert(*command).second) {
    const std::string_view kind = node.Kind == "title" ? "Title" : node.Kind == "pgc" ? "PGC" : "Chapter";
    aims.push_back({node.Key, fmt::format("{} {}", kind, NameOfElement(project, node.Key))});
  }
  for (const TreeNode& child : node.Children) {
    AddAims(child, project, text, known, aims);
  }
}

}  // namespace

std::optional<std::string> TextLeadingTo(const Project& project, const Rules& rules, std::string_view from,
                                         std::string_view target) {
  return LeadingText(project, rules, from).To(target);
}

Outcome AimButton(EditSession& session, std::size_t track, const ButtonPlace& button,
                  std::string_view target) {
  const std::vector<CommandPlace> places = CommandsOfButton(session.Work(), track, button);
  if (places.empty()) {
    return Outcome::Refused(
        MessageOf(message::ButtonsUnplaced, TrackKey(track), session.Work().Tracks[track].TrackName));
  }
  Change change(session, "Button Command");
  for (const CommandPlace& place : places) {
    if (FindCommand(session.Work(), place) == nullptr) {
      continue;  // a cell that says nothing, beside one that speaks
    }
    const auto text = TextLeadingTo(session.Work(), session.RulesInForce(), place.Key, target);
    if (!text) {
      return Outcome::Refused(
          MessageOf(message::ButtonCannotLead, place.Key, NameOfElement(session.Work(), target), place.Key));
    }
    if (Outcome set = SetCommand(session, place, *text); !set.IsDone()) {
      return set;
    }
  }
  return change.Commit(std::string(target));
}

std::vector<ButtonAim> AimsAt(const Project& project, const Rules& rules, std::size_t track,
                              std::int64_t frame) {
  std::vector<ButtonAim> aims;
  const auto cells = CellsPlaying(project, track, SceneAt(project.Tracks[track], frame));
  if (!cells.empty()) {
    LeadingText text(project, rules, cells.front()->Key);
    std::set<std::string> known;
    AddAims(StructureTree(project), project, text, known, aims);
  }
  return aims;
}

std::string NameOfAim(const Project& project, std::string_view key) {
  return key == FirstPgcKey ? std::string(FirstPgcName) : NameOfElement(project, key);
}

}  // namespace quorvelant
