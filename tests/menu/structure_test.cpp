// What stands in the structure of a disc with menus, by both sets of rules.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "menu_disc.h"
#include "model/walk.h"
#include "vm/check_commands.h"

namespace quorvelant {
namespace {

// All commands of a project with their digits, each under its PGC or cell.
std::vector<std::string> CommandsOf(const EditSession& session) {
  Project project = session.Work();
  const CommandCheck check = CheckCommands(project, session.RulesInForce());
  EXPECT_TRUE(check.Errors.empty());
  std::vector<std::string> lines;
  const auto add = [&lines](const std::string& name, const CommandList& list) {
    for (const VMICommand_P& command : list) {
      lines.push_back(
          fmt::format("{} {}: {} = {}", name, command.Key, command.FullCommand, command.CommandHex));
    }
  };
  for (const auto& at : LivePgcs(project)) {
    add(at.Chain->PGCName, at.Chain->PreCommands);
    add(at.Chain->PGCName, at.Chain->PostCommands);
    for (const Cell_P* cell : LiveCells(*at.Chain)) {
      for (const ButtonCommands_P& buttons : cell->ButtonCommands) {
        add(cell->CellName, buttons.Commands);
      }
    }
  }
  return lines;
}

TEST(MenuStructure, Dump) {
  MenuDisc disc(
      {.Name = "x", .Titles = 2, .Chapters = 8, .Audio = 2, .Subtitles = 2, .Rules = Rules::Classic});
  const Outcome made = disc.Make();
  ASSERT_TRUE(made.IsDone()) << made.Words.Text;
  for (const auto& line : CommandsOf(disc.Session))
    fmt::print("{}\n", line);
  for (const VTS_P* entry : Live(disc.Session.Work().Disc)) {
    fmt::print("{} {} {}\n", entry->Key, entry->VTSName, entry->VTSMenuInfo.Aspect);
  }
}

}  // namespace
}  // namespace quorvelant
