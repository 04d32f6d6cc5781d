#include "vm/check_commands.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "model/walk.h"
#include "vm/messages.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoLevel = "-";
constexpr std::string_view PreType = "Pre Command";
constexpr std::string_view PostType = "Post Command";
constexpr std::string_view CellType = "Cell Command";
constexpr std::string_view ButtonType = "Button Command";
constexpr std::string_view FirstPlayName = "FirstPGC";

struct FaultMessage {
  TextFault Fault;
  const MessageKind& Kind;
};
// In the order in which they are given.
constexpr std::array FaultMessages{
    FaultMessage{TextFault::UnknownText, message::CommandUnknown},
    FaultMessage{TextFault::NameTakenForWord, message::CommandNameTakenForWord},
    FaultMessage{TextFault::NumberNotComparable, message::CommandNumberNotComparable},
    FaultMessage{TextFault::LinkNotCarried, message::CommandLinkNotCarried},
    FaultMessage{TextFault::LeftNotTheSetRegister, message::CommandComparesSetRegister},
    FaultMessage{TextFault::NoOperator, message::CommandWithoutOperator},
    FaultMessage{TextFault::MixedStreamValues, message::CommandMixesStreamValues},
    FaultMessage{TextFault::NoSetInCompound, message::CommandSetNotCarried},
    FaultMessage{TextFault::UnknownMenu, message::CommandMenuUnknown},
    FaultMessage{TextFault::UnknownLink, message::CommandLinkUnknown},
    FaultMessage{TextFault::RegisterBeyondRange, message::CommandRegisterBeyondRange},
    FaultMessage{TextFault::NumberBeyondField, message::CommandNumberBeyondField},
    FaultMessage{TextFault::StreamBeyondDisc, message::CommandStreamBeyondDisc},
    FaultMessage{TextFault::LeftNoRegister, message::CommandLeftNoRegister},
    FaultMessage{TextFault::NothingSet, message::CommandSetsNothing},
    FaultMessage{TextFault::LinkLost, message::CommandLinkLost},
};

// Where a PGC stands, in the words of the error list.
struct PgcPlace {
  std::string_view Set = NoLevel;
  std::string_view Unit = NoLevel;
  std::string_view Pgc;
};

std::string_view NameOr(std::string_view name, std::string_view key) {
  return name.empty() ? key : name;
}

// A command list of the project with its place.
struct PlacedList {
  CommandList& Commands;
  std::string_view Type;
  PgcPlace Place;
  const std::string& Key;        // of the cell or the PGC
  const Cell_P* Cell = nullptr;  // of buttons
};

void AddLists(PGC_P& pgc, const PgcPlace& place, std::vector<PlacedList>& lists) {
  lists.push_back({pgc.PreCommands, PreType, place, pgc.Key});
  lists.push_back({pgc.PostCommands, PostType, place, pgc.Key});
  lists.push_back({pgc.CellCommands, CellType, place, pgc.Key});
  for (Cell_P* cell : LiveCells(pgc)) {
    for (ButtonCommands_P& entry : cell->ButtonCommands) {
      lists.push_back({entry.Commands, ButtonType, place, cell->Key, cell});
    }
  }
}

// Every live list of the project, in the order in which commands are checked.
std::vector<PlacedList> ListsOf(Project& project) {
  std::vector<PlacedList> lists;
  AddLists(project.FirstPlay, {NoLevel, NoLevel, FirstPlayName}, lists);
  for (const auto& at : LivePgcs(project)) {
    const std::string_view unit = at.Title == nullptr ? at.Language->Language : at.Title->TitleName;
    AddLists(*at.Chain,
             {NameOr(at.Entry->VTSName, at.Entry->Key), NameOr(unit, at.UnitKey()),
              NameOr(at.Chain->PGCName, at.Key())},
             lists);
  }
  return lists;
}

CommandError ErrorRow(const VMICommand_P& command, const PlacedList& list) {
  const std::string_view cellName =
      list.Cell == nullptr ? NoLevel : NameOr(list.Cell->CellName, list.Cell->Key);
  return {.VTS = std::string(list.Place.Set),
          .TitleOrLanguage = std::string(list.Place.Unit),
          .PGC = std::string(list.Place.Pgc),
          .CELL = std::string(cellName),
          .Command = command.FullCommand,
          .To_Action = command.To_Action,
          .Type = std::string(list.Type)};
}

}  // namespace

std::string ErrorLine(const CommandError& row) {
  return fmt::format("VTS={}\tTitle/Language={}\tPGC={}\tCELL={}\tCommand={}\tTo_Action={}\tType={}", row.VTS,
                     row.TitleOrLanguage, row.PGC, row.CELL, row.Command, row.To_Action, row.Type);
}

std::vector<Message> WarningsFor(TextFault faults, std::string_view pgcName, std::string_view text,
                                 std::string_view place) {
  std::vector<Message> warnings;
  const std::string head = pgcName.empty() ? std::string() : fmt::format("{}: ", pgcName);
  for (const auto& [fault, kind] : FaultMessages) {
    if (Has(faults, fault)) {
      Message& warning = warnings.emplace_back(MessageOf(kind, std::string(place), text));
      warning.Text.insert(0, head);
    }
  }
  return warnings;
}

CommandCheck CheckCommands(Project& project, const Rules& rules, const ResolveOptions& options,
                           MissingTargets missing) {
  CommandCheck check;
  NameIndex names(project, rules);
  for (const PlacedList& list : ListsOf(project)) {
    for (VMICommand_P& command : list.Commands) {
      if (command.Deleted) {
        continue;
      }
      ++check.CommandCount;
      const Resolution result = ResolveCommand(command, names, options);
      if (result.Faults != TextFault::None) {
        for (Message& warning : WarningsFor(result.Faults, list.Place.Pgc, command.FullCommand,
                                            fmt::format("{} {}", list.Key, command.Key))) {
          check.Warnings.push_back(std::move(warning));
        }
      }
      if (missing == MissingTargets::AreErrors && result.TargetMissing) {
        command.CommandHex.clear();
      }
      if (command.CommandHex.empty()) {
        check.Errors.push_back(ErrorRow(command, list));
      }
    }
  }
  project.ScriptHadCommandErrors = project.ScriptHadCommandErrors || !check.Errors.empty();
  return check;
}

}  // namespace quorvelant
