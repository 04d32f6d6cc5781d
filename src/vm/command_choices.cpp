#include "vm/command_choices.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "model/keys.h"
#include "model/menu_kind.h"
#include "vm/command_words.h"

namespace quorvelant {

namespace {

// --- names ---

LinkKind LinkOf(TargetKind kind) {
  const auto* const link = std::ranges::find_if(
      NamedLinks, [kind](const NamedLink& known) { return TargetOf(known.Kind) == kind; });
  return link == NamedLinks.end() ? LinkKind::None : link->Kind;
}

Move MoveOf(TargetKind kind) {
  switch (kind) {
    case TargetKind::JumpTitle:
      return Move::JumpTitle;
    case TargetKind::JumpSetTitle:
      return Move::JumpSetTitle;
    case TargetKind::JumpSetPart:
      return Move::JumpSetPart;
    case TargetKind::VmgPgc:
      return Move::None;  // a jump or a call, one of which may stand anywhere
    case TargetKind::ResumeCell:
    case TargetKind::TimerPgc:  // it leads on from a title only
      return Move::Call;
    case TargetKind::LinkPart:
      return Move::LinkPart;
    default:
      return Move::Link;
  }
}

// The names of live elements of one kind.
class NameLists {
 public:
  explicit NameLists(const Project& project) : project_(project) {}

  std::vector<const std::string*> Of(const CommandStand& stand, TargetKind kind) {
    switch (kind) {
      case TargetKind::LinkPgc:
      case TargetKind::TimerPgc:
        stand.Title != nullptr ? PgcsOf(stand.Entry->Title) : Pgcs(*stand.Language);
        break;
      case TargetKind::LinkProgram:
        Programs(*stand.Chain);
        break;
      case TargetKind::LinkCell:
      case TargetKind::ResumeCell:
        Cells(*stand.Chain);
        break;
      case TargetKind::LinkPart:
        Parts(*stand.Title);
        break;
      case TargetKind::JumpSetPart:
        std::ranges::for_each(Live(stand.Entry->Title), [this](const Title_P* title) { Parts(*title); });
        break;
      case TargetKind::JumpSetTitle:
        Titles(*stand.Entry);
        break;
      case TargetKind::JumpTitle:
        std::ranges::for_each(Live(project_.Disc), [this](const VTS_P* set) { Titles(*set); });
        break;
      case TargetKind::VmgPgc:
        if (const VTS_P* manager = project_.Disc.Item(1); manager != nullptr && IsLive(*manager)) {
          PgcsOf(manager->Lang);
        }
        break;
    }
    return std::move(names_);
  }

 private:
  void Titles(const VTS_P& set) {
    for (const Title_P* title : Live(set.Title)) {
      names_.push_back(&title->TitleName);
    }
  }
  template <class Unit>
  void Pgcs(const Unit& unit) {
    for (const PGC_P* chain : Live(unit.PGC)) {
      names_.push_back(&chain->PGCName);
    }
  }
  template <class Units>
  void PgcsOf(const Units& units) {
    for (const auto* unit : Live(units)) {
      Pgcs(*unit);
    }
  }
  void Parts(const Title_P& title) {
    for (const PGC_P* chain : Live(title.PGC)) {
      Programs(*chain);
    }
  }
  void Programs(const PGC_P& chain) {
    for (const PG_P* program : Live(chain.PG)) {
      names_.push_back(&program->PGName);
    }
  }
  void Cells(const PGC_P& chain) {
    for (const Cell_P* cell : LiveCells(chain)) {
      names_.push_back(&cell->CellName);
    }
  }

  const Project& project_;
  std::vector<const std::string*> names_;
};

// At most so many targets as `most`.
std::vector<std::string> FirstTargets(const Project& project, const Rules& rules, const CommandStand& stand,
                                      TargetKind kind, std::size_t most) {
  std::vector<std::string> targets;
  if (!MayStandIn(DomainOf(stand), MoveOf(kind))) {
    return targets;
  }
  NameIndex names(project, rules);
  for (const std::string* name : NameLists(project).Of(stand, kind)) {
    if (targets.size() < most && LeadsTo(names, kind, *name)) {
      targets.push_back(*name);
    }
  }
  return targets;
}

// --- First Play, menus and the Video Manager ---

bool HasMenu(const VTS_P& entry, std::int32_t menu) {
  return std::ranges::any_of(Live(entry.Lang),
                             [menu](const Lang_P* language) { return HasMenu(*language, menu); });
}

class SystemSpaceList {
 public:
  SystemSpaceList(const Project& project, const Rules& rules, const CommandStand& stand)
      : project_(project), rules_(rules), stand_(stand), calls_(DomainOf(stand) == CommandDomain::Titles) {}

  std::vector<CommandFields> Run() {
    for (const SystemSpaceTarget& target : SystemSpaceTargets) {
      Add(target);
    }
    return std::move(choices_);
  }

 private:
  void Add(const SystemSpaceTarget& target) {
    constexpr std::int32_t TitleMenuId = 2;
    const VTS_P* manager = project_.Disc.Item(1);
    switch (target.Space) {
      case SystemSpace::FirstPlay:
        Choice(target);
        break;
      case SystemSpace::TitleMenu:
        if (manager != nullptr && IsLive(*manager) && HasMenu(*manager, TitleMenuId)) {
          Choice(target);
        }
        break;
      case SystemSpace::SetMenu:
        calls_ ? AddOwnMenu(target) : AddSetMenus(target);
        break;
      case SystemSpace::VmgPgc:
        for (std::string& name : TargetsFor(project_, rules_, stand_, TargetKind::VmgPgc)) {
          Choice(target).Target = std::move(name);
        }
        break;
    }
  }

  void AddOwnMenu(const SystemSpaceTarget& target) {
    if (HasMenu(*stand_.Entry, target.MenuId)) {
      Choice(target);
    }
  }

  void AddSetMenus(const SystemSpaceTarget& target) {
    if (!MayStandIn(DomainOf(stand_), Move::JumpSetMenu)) {
      return;
    }
    std::int32_t set = 0;
    for (const VTS_P* entry : Live(project_.Disc)) {
      if (entry == project_.Disc.Item(1)) {
        continue;
      }
      ++set;
      if (HasMenu(*entry, target.MenuId)) {
        ParsedCommand& jump = Choice(target).Command;
        jump.TitleSet = set;
        jump.Title = 1;
      }
    }
  }

  CommandFields& Choice(const SystemSpaceTarget& target) {
    CommandFields& fields = choices_.emplace_back();
    fields.Command.What = calls_ ? Instruction::CallSs : Instruction::JumpSs;
    fields.Command.Space = target.Space;
    fields.Command.MenuId = target.MenuId;
    return fields;
  }

  const Project& project_;
  const Rules& rules_;
  const CommandStand& stand_;
  bool calls_;
  std::vector<CommandFields> choices_;
};

// --- defaults ---

// What the text of a new command says, of a type whose operands are no targets.
std::string_view PlainForm(CommandType type) {
  switch (type) {
    case CommandType::GoTo:
      return "GoTo 1";
    case CommandType::Break:
      return "Break";
    case CommandType::Exit:
      return "Exit";
    case CommandType::SubInstruction:
      return "RSM";
    case CommandType::SetStreams:
      return "SetSTN audio=1";
    case CommandType::SetGprm:
      return "mov GPRM0, GPRM0";
    case CommandType::ChangeGprmMode:
      return "SetGPRMMD RegisterModeGPRM0=0";
    case CommandType::SetButton:
      return "SetHL_BTNN HL_BTTN=GPRM0";
    case CommandType::SetMixing:
      return "SetAMXMD GPRM0";
    case CommandType::SetParentalLevel:
      return "SetTmpPML parental:1 command:1";
    case CommandType::Compound:
      return "mov GPRM0, GPRM0 ; If ( GPRM0 == GPRM0 ) LinkNoLink, button=0";
    default:
      return "NOP";
  }
}

std::optional<TargetKind> TargetKindOf(CommandType type, CommandDomain domain) {
  switch (type) {
    case CommandType::JumpTitle:
      return MayStandIn(domain, Move::JumpTitle) ? TargetKind::JumpTitle : TargetKind::JumpSetTitle;
    case CommandType::JumpPart:
      return TargetKind::JumpSetPart;
    case CommandType::LinkPgc:
      return TargetKind::LinkPgc;
    case CommandType::LinkProgram:
      return TargetKind::LinkProgram;
    case CommandType::LinkCell:
      return TargetKind::LinkCell;
    case CommandType::LinkPart:
      return TargetKind::LinkPart;
    case CommandType::SetTimer:
      return TargetKind::TimerPgc;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<CommandStand> StandOf(const Project& project, std::string_view key) {
  if (key == FirstPgcKey) {
    CommandStand stand;
    stand.Chain = &project.FirstPlay;
    stand.IsLive = true;
    return stand;
  }
  for (const CommandStand& at : LivePgcs(project)) {
    const std::string_view chain = at.Key();
    if (key.starts_with(chain) && (key.size() == chain.size() || key[chain.size()] == '.')) {
      return at;
    }
  }
  return std::nullopt;
}

CommandDomain DomainOf(const CommandStand& stand) {
  if (stand.Entry == nullptr) {
    return CommandDomain::FirstPlay;
  }
  if (stand.In() == Domain::Title) {
    return CommandDomain::Titles;
  }
  return stand.EntryNumber == 1 ? CommandDomain::ManagerMenus : CommandDomain::SetMenus;
}

CommandFields FieldsTo(TargetKind kind, const std::string& name) {
  CommandFields fields;
  ParsedCommand& c = fields.Command;
  fields.Target = name;
  switch (kind) {
    case TargetKind::LinkPgc:
    case TargetKind::LinkProgram:
    case TargetKind::LinkPart:
    case TargetKind::LinkCell:
      c.What = Instruction::Link;
      c.Link.Kind = LinkOf(kind);
      break;
    case TargetKind::JumpTitle:
      c.What = Instruction::JumpTt;
      break;
    case TargetKind::JumpSetTitle:
      c.What = Instruction::JumpVtsTt;
      break;
    case TargetKind::JumpSetPart:
      c.What = Instruction::JumpVtsPtt;
      break;
    case TargetKind::VmgPgc:
      c.What = Instruction::JumpSs;
      c.Space = SystemSpace::VmgPgc;
      break;
    case TargetKind::ResumeCell:
      c.What = Instruction::CallSs;
      c.Space = SystemSpace::TitleMenu;
      fields.Resume = std::exchange(fields.Target, {});
      break;
    case TargetKind::TimerPgc:
      c.What = Instruction::SetNvtmr;
      c.Source = {OperandKind::Number, 0};
      break;
  }
  return fields;
}

bool LeadsTo(NameIndex& names, TargetKind kind, const std::string& name) {
  const CommandForm form = ParseCommand(CommandText(FieldsTo(kind, name)));
  const auto& reference = kind == TargetKind::ResumeCell ? form.Resume : form.Target;
  if (form.Faults != TextFault::None || !reference || reference->Kind != kind) {
    return false;
  }
  const NamedTarget* found = names.Find(kind, reference->Name, {});
  return found != nullptr && found->Name == &name;
}

std::vector<std::string> TargetsFor(const Project& project, const Rules& rules, const CommandStand& stand,
                                    TargetKind kind) {
  return FirstTargets(project, rules, stand, kind, std::numeric_limits<std::size_t>::max());
}

std::vector<CommandFields> SystemSpaceChoices(const Project& project, const Rules& rules,
                                              const CommandStand& stand) {
  return SystemSpaceList(project, rules, stand).Run();
}

std::optional<CommandFields> DefaultFields(const Project& project, const Rules& rules,
                                           const CommandStand& stand, CommandType type) {
  if (type == CommandType::JumpSystemSpace) {
    return SystemSpaceChoices(project, rules, stand).front();  // First Play is always there
  }
  const auto kind = TargetKindOf(type, DomainOf(stand));
  if (!kind) {
    return FieldsOf(PlainForm(type));
  }
  const std::vector<std::string> targets = FirstTargets(project, rules, stand, *kind, 1);
  return targets.empty() ? std::nullopt : std::optional(FieldsTo(*kind, targets.front()));
}

}  // namespace quorvelant
