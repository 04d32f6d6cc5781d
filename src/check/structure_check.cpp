#include "check/structure_check.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/text.h"
#include "check/messages.h"
#include "model/keys.h"
#include "model/menu_kind.h"
#include "model/walk.h"
#include "vm/command_target.h"

namespace quorvelant {
namespace {

// Names of PGCs as links find them: blanks and case aside.
using Names = std::unordered_set<std::string>;

// Whether a live command leads away from where it stands. One that could not be resolved is told as such.
bool LeadsAway(const CommandList& list) {
  return std::ranges::any_of(list, [](const VMICommand_P& command) {
    return !command.Deleted && (command.CommandHex.empty() || TargetOf(command).What != Instruction::None);
  });
}

bool ButtonsLeadAway(const PGC_P& chain) {
  return std::ranges::any_of(LiveCells(chain), [](const Cell_P* cell) {
    return std::ranges::any_of(cell->ButtonCommands,
                               [](const ButtonCommands_P& play) { return LeadsAway(play.Commands); });
  });
}

bool LeadsAway(const PGC_P& chain) {
  return LeadsAway(chain.PreCommands) || LeadsAway(chain.PostCommands) || LeadsAway(chain.CellCommands) ||
         ButtonsLeadAway(chain);
}

bool Holds(const PGC_P& chain) {
  return chain.StillTime > 0 ||
         std::ranges::any_of(LiveCells(chain), [](const Cell_P* cell) { return cell->StillTime > 0; });
}

// The commands of a list that a player can come to, by way of GoTo and Break.
std::vector<const VMICommand_P*> Reachable(const CommandList& list) {
  std::vector<const VMICommand_P*> lines;
  for (const VMICommand_P& command : list) {
    if (!command.Deleted) {
      lines.push_back(&command);
    }
  }
  std::vector<bool> reached(lines.size() + 1);
  std::vector<std::size_t> next{0};
  while (!next.empty()) {
    const std::size_t at = next.back();
    next.pop_back();
    if (at >= lines.size() || reached[at]) {
      continue;
    }
    reached[at] = true;
    const CommandTarget target = TargetOf(*lines[at]);
    if (target.Line > 0) {
      next.push_back(static_cast<std::size_t>(target.Line) - 1);
    }
    if (!target.LeavesLine) {
      next.push_back(at + 1);
    }
  }
  std::erase_if(lines, [&, at = std::size_t{0}](const VMICommand_P*) mutable { return !reached[at++]; });
  return lines;
}

// First Play plays no cells: only a jump gets away from it, and none to itself.
bool LeadsOn(const PGC_P& firstPlay) {
  const auto leads = [](const VMICommand_P* command) {
    const CommandTarget target = TargetOf(*command);
    const bool jumps = target.What != Instruction::None && target.What != Instruction::Exit;
    const bool returns = target.What == Instruction::JumpSs && target.Space == SystemSpace::FirstPlay;
    return command->CommandHex.empty() || (jumps && !returns);
  };
  return std::ranges::any_of(Reachable(firstPlay.PreCommands), leads) ||
         std::ranges::any_of(Reachable(firstPlay.PostCommands), leads);
}

std::string_view NameOr(const std::string& name, const std::string& key) {
  return name.empty() ? key : name;
}

void CheckTitle(const Title_P& title, Findings& findings) {
  const auto chains = Live(title.PGC);
  const auto isEmpty = [](const PGC_P* chain) { return LiveCells(*chain).empty(); };
  if (std::ranges::all_of(chains, isEmpty)) {
    findings.push_back(MessageOf(message::TitleWithoutCells, title.Key, NameOr(title.TitleName, title.Key)));
  } else if (isEmpty(chains.front())) {
    findings.push_back(MessageOf(message::TitleStartsWithoutCells, chains.front()->Key,
                                 NameOr(title.TitleName, title.Key),
                                 NameOr(chains.front()->PGCName, chains.front()->Key)));
  }
}

void CheckLanguage(const Lang_P& language, Findings& findings) {
  const auto chains = Live(language.PGC);
  if (chains.empty()) {
    findings.push_back(MessageOf(message::LanguageWithoutPgcs, language.Key, language.Language));
    return;
  }
  Names names;
  std::map<std::uint8_t, const PGC_P*> menus;
  for (const PGC_P* chain : chains) {
    names.insert(NameKey(chain->PGCName));
    const std::uint8_t menu = MenuKindOf(chain->MenuType).Category;
    const auto [first, isNew] = menus.try_emplace(menu, chain);
    if (menu != 0 && !isNew) {
      findings.push_back(MessageOf(message::MenuRepeated, chain->Key, language.Language, chain->MenuType,
                                   NameOr(first->second->PGCName, first->second->Key),
                                   NameOr(chain->PGCName, chain->Key)));
    }
  }
  names.erase("");
  names.erase("none");
  for (const PGC_P* chain : chains) {
    if (!Holds(*chain) && !LeadsAway(*chain) && !names.contains(NameKey(chain->NextPGC))) {
      findings.push_back(
          MessageOf(message::MenuLeadsNowhere, chain->Key, NameOr(chain->PGCName, chain->Key)));
    }
  }
}

}  // namespace

Findings CheckStructure(const Project& project) {
  Findings findings;
  if (!LeadsOn(project.FirstPlay)) {
    findings.push_back(MessageOf(message::FirstPlayLeadsNowhere, FirstPgcKey));
  }
  for (const VTS_P* entry : Live(project.Disc)) {
    for (const Lang_P* language : Live(entry->Lang)) {
      CheckLanguage(*language, findings);
    }
    const auto titles = Live(entry->Title);
    if (titles.empty() && entry != project.Disc.Item(1)) {
      findings.push_back(
          MessageOf(message::SetWithoutTitles, entry->Key, NameOr(entry->VTSName, entry->Key)));
    }
    for (const Title_P* title : titles) {
      CheckTitle(*title, findings);
    }
  }
  return findings;
}

}  // namespace quorvelant
