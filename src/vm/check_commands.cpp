#include "vm/check_commands.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "base/text.h"
#include "vm/encoder.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoLevel = "-";
constexpr std::string_view PreType = "Pre Command";
constexpr std::string_view PostType = "Post Command";
constexpr std::string_view CellType = "Cell Command";
constexpr std::string_view ButtonType = "Button Command";
constexpr std::string_view FirstPlayName = "FirstPGC";
constexpr std::string_view NopText = "NOP";

constexpr std::string_view WarningTitle = "Command Warning";
// Each takes the text of the command.
constexpr std::array<std::pair<TextFault, std::string_view>, 11> FaultTexts{{
    {TextFault::UnknownText, "\"{}\" is no command; it stands as NOP"},
    {TextFault::NameTakenForWord,
     "\"{}\": a name in it holds a command word and is taken for that command; rename the target"},
    {TextFault::NumberNotComparable,
     "\"{}\": this command can compare with a register only; players will not compare with the number"},
    {TextFault::LinkNotCarried,
     "\"{}\": a compound command can carry a sub-instruction only (LinkTopC, RSM, ...); the target is "
     "lost"},
    {TextFault::LeftNotTheSetRegister,
     "\"{}\": the comparison behind a set always takes the register just set"},
    {TextFault::NoOperator, "\"{}\": the comparison has no operator; players will do nothing"},
    {TextFault::MixedStreamValues, "\"{}\": SetSTN takes numbers or registers, not both in one command"},
    {TextFault::NoSetInCompound, "\"{}\": a compound command can set registers only; the set is lost"},
    {TextFault::UnknownMenu, "\"{}\" names no menu that a title set can have"},
    {TextFault::UnknownLink, "\"{}\": what stands behind the set is no link (LinkTopC, LinkPGCN, RSM, ...)"},
    {TextFault::RegisterBeyondRange, "\"{}\": registers are GPRM0 to GPRM15 and SPRM0 to SPRM23"},
}};

// Where a PGC stands, in the words of the error list.
struct PgcPlace {
  std::string_view Set = NoLevel;
  std::string_view Unit = NoLevel;
  std::string_view Pgc;
};

std::string_view NameOr(std::string_view name, std::string_view key) {
  return name.empty() ? key : name;
}

// Calls `visit(list, type, place, pgc, cell)` for every command list of one PGC; stops when told false.
template <class Visit>
bool EachList(PGC_P& pgc, const PgcPlace& place, const Visit& visit) {
  Cell_P* const noCell = nullptr;
  if (!visit(pgc.PreCommands, PreType, place, pgc, noCell) ||
      !visit(pgc.PostCommands, PostType, place, pgc, noCell) ||
      !visit(pgc.CellCommands, CellType, place, pgc, noCell)) {
    return false;
  }
  for (PG_P& program : pgc.PG) {
    for (Cell_P& cell : program.Cell) {
      if (program.Removed || cell.Removed) {
        continue;
      }
      for (ButtonCommands_P& entry : cell.ButtonCommands) {
        if (!visit(entry.Commands, ButtonType, place, pgc, &cell)) {
          return false;
        }
      }
    }
  }
  return true;
}

template <class Units, class NameOf, class Visit>
bool EachListOfUnits(Units& units, std::string_view set, const NameOf& nameOf, const Visit& visit) {
  for (auto& unit : units) {
    for (PGC_P& pgc : unit.PGC) {
      const PgcPlace place{set, NameOr(nameOf(unit), unit.Key), NameOr(pgc.PGCName, pgc.Key)};
      if (!unit.Removed && !pgc.Removed && !EachList(pgc, place, visit)) {
        return false;
      }
    }
  }
  return true;
}

// The same for the whole project, in the order in which commands are checked.
template <class Visit>
void EachListOfProject(Project& project, const Visit& visit) {
  if (!EachList(project.FirstPlay, {NoLevel, NoLevel, FirstPlayName}, visit)) {
    return;
  }
  for (VTS_P& set : project.Disc) {
    const std::string_view name = NameOr(set.VTSName, set.Key);
    const auto language = [](const Lang_P& unit) -> std::string_view { return unit.Language; };
    const auto title = [](const Title_P& unit) -> std::string_view { return unit.TitleName; };
    if (!set.Removed && (!EachListOfUnits(set.Lang, name, language, visit) ||
                         !EachListOfUnits(set.Title, name, title, visit))) {
      return;
    }
  }
}

CommandError ErrorRow(const VMICommand_P& command, std::string_view type, const PgcPlace& place,
                      const Cell_P* cell) {
  const std::string_view cellName = cell == nullptr ? NoLevel : NameOr(cell->CellName, cell->Key);
  return {.VTS = std::string(place.Set),
          .TitleOrLanguage = std::string(place.Unit),
          .PGC = std::string(place.Pgc),
          .CELL = std::string(cellName),
          .Command = command.FullCommand,
          .To_Action = command.To_Action,
          .Type = std::string(type)};
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
  for (const auto& [fault, words] : FaultTexts) {
    if (Has(faults, fault)) {
      warnings.push_back({Severity::Warning, std::string(WarningTitle),
                          head + fmt::format(fmt::runtime(words), text), std::string(place)});
    }
  }
  return warnings;
}

CommandCheck CheckCommands(Project& project, const Rules& rules, const ResolveOptions& options) {
  CommandCheck check;
  NameIndex names(project, rules);
  EachListOfProject(project, [&](CommandList& list, std::string_view type, const PgcPlace& place,
                                 const PGC_P& pgc, const Cell_P* cell) {
    for (VMICommand_P& command : list) {
      if (command.Deleted) {
        continue;
      }
      ++check.CommandCount;
      const Resolution result = ResolveCommand(command, names, options);
      if (result.Faults != TextFault::None) {
        const std::string& key = cell == nullptr ? pgc.Key : cell->Key;
        for (Message& warning : WarningsFor(result.Faults, place.Pgc, command.FullCommand,
                                            fmt::format("{} {}", key, command.Key))) {
          check.Warnings.push_back(std::move(warning));
        }
      }
      if (command.CommandHex.empty()) {
        check.Errors.push_back(ErrorRow(command, type, place, cell));
      }
    }
    return true;
  });
  project.ScriptHadCommandErrors = project.ScriptHadCommandErrors || !check.Errors.empty();
  return check;
}

bool CheckNameUsed(Project& project, std::string_view name, bool reset) {
  const std::string wanted = Lower(name);
  if (wanted.empty()) {
    return false;
  }
  bool used = false;
  EachListOfProject(project,
                    [&](CommandList& list, std::string_view, const PgcPlace&, const PGC_P&, const Cell_P*) {
                      for (VMICommand_P& command : list) {
                        if (command.Deleted || !Contains(Lower(command.FullCommand), wanted)) {
                          continue;
                        }
                        used = true;
                        if (!reset) {
                          return false;
                        }
                        command.FullCommand = NopText;
                        command.CommandHex = NopHex;
                      }
                      return true;
                    });
  return used;
}

}  // namespace quorvelant
