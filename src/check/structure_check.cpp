#include "check/structure_check.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "base/text.h"
#include "check/messages.h"
#include "model/keys.h"
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

// First Play plays no cells: only a jump gets away from it, and none to itself.
bool LeadsOn(const PGC_P& firstPlay) {
  const auto leads = [](const VMICommand_P& command) {
    const CommandTarget target = TargetOf(command);
    const bool jumps = target.What != Instruction::None && target.What != Instruction::Exit;
    const bool returns = target.What == Instruction::JumpSs && target.Space == SystemSpace::FirstPlay;
    return !command.Deleted && (command.CommandHex.empty() || (jumps && !returns));
  };
  return std::ranges::any_of(firstPlay.PreCommands, leads) ||
         std::ranges::any_of(firstPlay.PostCommands, leads);
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
  for (const PGC_P* chain : chains) {
    names.insert(NameKey(chain->PGCName));
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
