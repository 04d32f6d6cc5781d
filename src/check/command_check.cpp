#include "check/command_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "base/text.h"
#include "check/disc_contents.h"
#include "check/messages.h"
#include "model/keys.h"
#include "model/menu_kind.h"
#include "model/walk.h"
#include "vm/command_choices.h"
#include "vm/command_domains.h"
#include "vm/command_target.h"

namespace quorvelant {
namespace {

constexpr std::string_view NameOf(CommandDomain domain) {
  switch (domain) {
    case CommandDomain::FirstPlay:
      return "First Play";
    case CommandDomain::ManagerMenus:
      return "a menu of the Video Manager";
    case CommandDomain::SetMenus:
      return "a menu of a title set";
    default:
      return "a title";
  }
}

// Where a command stands.
struct Stand {
  const PGC_P& Chain;
  CommandDomain In = CommandDomain::FirstPlay;
  const VTS_P* Entry = nullptr;
  const Lang_P* Language = nullptr;
  const Title_P* Title = nullptr;
};

// What to write where a command may not stand.
constexpr std::string_view RemedyOf(Move move) {
  switch (move) {
    case Move::JumpTitle:
      return "within a set JumpVTS_TT reaches its titles; those of other sets are reached by way of the "
             "title "
             "menu";
    case Move::JumpSetTitle:
      return "there JumpTT reaches the titles of the disc";
    case Move::JumpSetPart:
      return "there JumpTT reaches a title, whose pre commands may lead on to a part";
    case Move::JumpSetMenu:
      return "a menu reaches others of its set by LinkPGCN, a title by CallSS";
    case Move::JumpSystem:
      return "a title reaches menus by CallSS";
    case Move::Call:
      return "only titles are come back to: JumpSS leads to a menu";
    case Move::Resume:
      return "only a menu that a title called can go back";
    case Move::LinkPart:
      return "a menu of the set reaches parts by JumpVTS_PTT";
    default:
      return "First Play reaches titles by JumpTT and menus by JumpSS";
  }
}

// What a count leaves out: "title 3 (the disc has 2)"; nothing where the number is there.
using Missing = std::optional<std::string>;
Missing Beyond(std::string_view what, std::int32_t number, std::size_t count, std::string_view whose) {
  const bool there = number >= 1 && static_cast<std::size_t>(number) <= count;
  return there ? std::nullopt : Missing(fmt::format("{} {} ({} has {})", what, number, whose, count));
}

class CommandChecker {
 public:
  explicit CommandChecker(const Project& project) : project_(project), contents_(project) {}

  Findings Run() {
    CheckChain({.Chain = project_.FirstPlay});
    for (const auto& at : LivePgcs(project_)) {
      CheckChain({.Chain = *at.Chain,
                  .In = DomainOf(at),
                  .Entry = at.Entry,
                  .Language = at.Language,
                  .Title = at.Title});
    }
    return std::move(findings_);
  }

 private:
  void CheckChain(const Stand& stand) {
    // First Play without cells goes from its last list into a stop.
    const Severity beyondPre =
        stand.In == CommandDomain::FirstPlay && LiveCount(stand.Chain.PostCommands) == 0 ? Severity::Error
                                                                                         : Severity::Warning;
    const Severity beyondPost = stand.In == CommandDomain::FirstPlay ? Severity::Error : Severity::Warning;
    CheckList(stand, stand.Chain.PreCommands, stand.Chain.Key, beyondPre);
    CheckList(stand, stand.Chain.PostCommands, stand.Chain.Key, beyondPost);
    CheckSingle(stand, stand.Chain.CellCommands, stand.Chain.Key);
    for (const Cell_P* cell : LiveCells(stand.Chain)) {
      for (const ButtonCommands_P& play : cell->ButtonCommands) {
        CheckSingle(stand, play.Commands, cell->Key);
      }
    }
  }

  static std::size_t LiveCount(const CommandList& list) {
    return static_cast<std::size_t>(std::ranges::count(list, false, &VMICommand_P::Deleted));
  }

  void CheckList(const Stand& stand, const CommandList& list, const std::string& key, Severity beyondLines) {
    const std::size_t count = LiveCount(list);
    for (const VMICommand_P& command : list) {
      if (!command.Deleted) {
        Check(stand, command, key);
        const std::int32_t line = TargetOf(command).Line;
        TellLine(command, line == 0 ? Missing() : Beyond("line", line, count, "its list"), key, beyondLines);
      }
    }
  }

  // Commands of cells and buttons run one alone.
  void CheckSingle(const Stand& stand, const CommandList& list, const std::string& key) {
    for (const VMICommand_P& command : list) {
      if (!command.Deleted) {
        Check(stand, command, key);
        const std::int32_t line = TargetOf(command).Line;
        const Missing alone = fmt::format("line {} (the command of a cell or a button stands alone)", line);
        TellLine(command, line == 0 ? Missing() : alone, key, Severity::Warning);
      }
    }
  }

  // A line that the list does not have ends it.
  void TellLine(const VMICommand_P& command, const Missing& missing, const std::string& key, Severity level) {
    if (missing) {
      findings_.push_back(MessageOf(message::TargetMissing, fmt::format("{} {}", key, command.Key),
                                    command.FullCommand, *missing));
      findings_.back().Level = level;
    }
  }

  void Check(const Stand& stand, const VMICommand_P& command, const std::string& key) {
    const CommandTarget target = TargetOf(command);
    const auto place = [&] { return fmt::format("{} {}", key, command.Key); };
    const Move move = MoveOf(target);
    if (!MayStandIn(stand.In, move)) {
      findings_.push_back(MessageOf(message::TargetForbidden, place(), command.FullCommand, NameOf(stand.In),
                                    RemedyOf(move)));
      return;
    }
    for (const Missing& missing :
         {WhatIsMissing(stand, target), WhatTimerMisses(stand, target), WhatResumeMisses(stand, target)}) {
      if (missing) {
        Message& finding =
            findings_.emplace_back(MessageOf(message::TargetMissing, place(), command.FullCommand, *missing));
        finding.Level = MenuIsThereInSome(stand, target) ? Severity::Warning : Severity::Error;
      }
    }
  }

  [[nodiscard]] Missing WhatIsMissing(const Stand& stand, const CommandTarget& target) const {
    switch (target.What) {
      case Instruction::Link:
        return WhatLinkMisses(stand, target.Link);
      case Instruction::JumpTt:
        return Beyond("title", target.Title, contents_.TitleCount(), "the disc");
      case Instruction::JumpVtsTt:
        return stand.Entry == nullptr
                   ? Missing()
                   : Beyond("title", target.Title, contents_.Of(*stand.Entry).Titles.size(), "the set");
      case Instruction::JumpVtsPtt:
        return stand.Entry == nullptr ? Missing() : WhatPartMisses(*stand.Entry, target);
      case Instruction::JumpSs:
      case Instruction::CallSs:
        return WhatSystemMisses(stand, target);
      default:
        return std::nullopt;
    }
  }

  [[nodiscard]] Missing WhatLinkMisses(const Stand& stand, const LinkTarget& link) const {
    switch (link.Kind) {
      case LinkKind::Pgc:
        return Beyond("PGC", link.Number, PgcCount(stand),
                      stand.In == CommandDomain::Titles ? "the set" : "the menu");
      case LinkKind::Program:
        return Beyond("program", link.Number, ProgramCount(stand.Chain), "the PGC");
      case LinkKind::Cell:
        return Beyond("cell", link.Number, LiveCells(stand.Chain).size(), "the PGC");
      case LinkKind::Part:
        return Beyond("part", link.Number, PartCount(*stand.Title), "the title");
      case LinkKind::SubInstruction:
        return WhatPgcLinkMisses(stand, link.Number);
      default:
        return std::nullopt;
    }
  }

  // The PGC that the chain itself names as its next, previous or go-up one.
  [[nodiscard]] static Missing WhatPgcLinkMisses(const Stand& stand, std::int32_t code) {
    const PGC_P& chain = stand.Chain;
    switch (code) {
      case NextPgcCode:
        return Unnamed(stand, chain.NextPGC, "next");
      case PrevPgcCode:
        // A menu has none on the disc.
        return stand.In == CommandDomain::Titles ? Unnamed(stand, chain.PrevPGC, "previous") : std::nullopt;
      case GoUpPgcCode:
        return stand.In != CommandDomain::Titles && Contains(Lower(chain.GoUpPGC), "resume")
                   ? Missing()
                   : Unnamed(stand, chain.GoUpPGC, "go-up");
      default:
        return std::nullopt;
    }
  }

  [[nodiscard]] static Missing Unnamed(const Stand& stand, std::string_view name, std::string_view word) {
    const std::string key = NameKey(name);
    const auto isNamed = [&key](const PGC_P* chain) { return NameKey(chain->PGCName) == key; };
    const auto holds = [&isNamed](const auto* unit) { return std::ranges::any_of(Live(unit->PGC), isNamed); };
    const bool none = key.empty() || key == "none";
    const bool found =
        !none && (stand.In == CommandDomain::Titles ? std::ranges::any_of(Live(stand.Entry->Title), holds)
                                                    : holds(stand.Language));
    return found ? Missing() : Missing(fmt::format("the PGC has no {} one; name it in its lines", word));
  }

  [[nodiscard]] Missing WhatPartMisses(const VTS_P& entry, const CommandTarget& target) const {
    const auto& titles = contents_.Of(entry).Titles;
    if (auto title = Beyond("title", target.Title, titles.size(), "the set")) {
      return title;
    }
    return Beyond("part", target.Part, PartCount(*titles[static_cast<std::size_t>(target.Title) - 1]),
                  "the title");
  }

  // The timer leads to a PGC of titles; in a menu it names none of the menu's.
  [[nodiscard]] Missing WhatTimerMisses(const Stand& stand, const CommandTarget& target) const {
    return target.TimerPgc == 0 || stand.In != CommandDomain::Titles
               ? std::nullopt
               : Beyond("PGC", target.TimerPgc, PgcCount(stand), "the set");
  }

  // 0 comes back to where the call was.
  [[nodiscard]] static Missing WhatResumeMisses(const Stand& stand, const CommandTarget& target) {
    return target.ResumeCell == 0
               ? std::nullopt
               : Beyond("cell", target.ResumeCell, LiveCells(stand.Chain).size(), "the PGC");
  }

  [[nodiscard]] Missing WhatSystemMisses(const Stand& stand, const CommandTarget& target) const {
    switch (target.Space) {
      case SystemSpace::FirstPlay:
        return std::nullopt;
      case SystemSpace::TitleMenu:
        return WhatMenuMisses(project_.Disc.Item(1), target.MenuId, "the Video Manager");
      case SystemSpace::VmgPgc:
        return Beyond("PGC", target.Pgc, contents_.LeastManagerPgcs(), "each language of the Video Manager");
      case SystemSpace::SetMenu:
        break;
    }
    if (target.What == Instruction::CallSs) {
      return WhatMenuMisses(stand.Entry, target.MenuId, stand.Entry->Key);
    }
    if (auto set = Beyond("title set", target.TitleSet, contents_.Sets().size(), "the disc")) {
      return set;
    }
    const VTS_P& set = *contents_.Sets()[static_cast<std::size_t>(target.TitleSet) - 1];
    // Title 0 is any.
    if (auto title = target.Title > 0
                         ? Beyond("title", target.Title, contents_.Of(set).Titles.size(), set.Key)
                         : std::nullopt) {
      return title;
    }
    return WhatMenuMisses(&set, target.MenuId, set.Key);
  }

  // A menu is there in every language: a player takes the viewer's.
  [[nodiscard]] static Missing WhatMenuMisses(const VTS_P* entry, std::int32_t menu, std::string_view whose) {
    const auto languages = entry == nullptr ? std::vector<const Lang_P*>() : Live(entry->Lang);
    if (languages.empty()) {
      return fmt::format("{} in {}, which has no menus", MenuNameOf(menu), whose);
    }
    const auto without =
        std::ranges::find_if(languages, [menu](const Lang_P* language) { return !HasMenu(*language, menu); });
    return without == languages.end()
               ? std::nullopt
               : Missing(fmt::format(R"({} in {}: no PGC of the language "{}" has that menu type)",
                                     MenuNameOf(menu), whose, (*without)->Language));
  }

  // A menu that one language has and another has not: the disc plays in the first.
  [[nodiscard]] bool MenuIsThereInSome(const Stand& stand, const CommandTarget& target) const {
    const VTS_P* entry = EntryOfMenu(stand, target);
    const auto has = [&target](const Lang_P* language) { return HasMenu(*language, target.MenuId); };
    return entry != nullptr && std::ranges::any_of(Live(entry->Lang), has);
  }

  // Whose menu a jump or call leads to; nullptr where it leads elsewhere, or to what is not there.
  [[nodiscard]] const VTS_P* EntryOfMenu(const Stand& stand, const CommandTarget& target) const {
    const bool system = target.What == Instruction::JumpSs || target.What == Instruction::CallSs;
    if (!system || target.ResumeCell > 0) {
      return nullptr;
    }
    if (target.Space == SystemSpace::TitleMenu) {
      return project_.Disc.Item(1);
    }
    if (target.Space != SystemSpace::SetMenu) {
      return nullptr;
    }
    if (target.What == Instruction::CallSs) {
      return stand.Entry;
    }
    const auto& sets = contents_.Sets();
    const auto set = static_cast<std::size_t>(target.TitleSet);
    const bool there = set >= 1 && set <= sets.size() &&
                       std::cmp_less_equal(target.Title, contents_.Of(*sets[set - 1]).Titles.size());
    return there ? sets[set - 1] : nullptr;
  }

  [[nodiscard]] std::size_t PgcCount(const Stand& stand) const {
    return stand.In == CommandDomain::Titles ? contents_.Of(*stand.Entry).Pgcs
                                             : Live(stand.Language->PGC).size();
  }

  const Project& project_;
  const DiscContents contents_;
  Findings findings_;
};

}  // namespace

Findings CheckCommandTargets(const Project& project) {
  return CommandChecker(project).Run();
}

}  // namespace quorvelant
