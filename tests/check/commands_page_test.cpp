// Where each command may stand, held against the page for users.
#include <gtest/gtest.h>

#include <array>
#include <fstream>

#include "base/text.h"
#include "check/command_check.h"
#include "check/messages.h"
#include "support/folders.h"

namespace quorvelant {
namespace {

// The page for users says in its last column where each command that moves may stand.
TEST(CommandsPage, SaysWhereEachCommandIsAllowed) {
  constexpr std::array<std::string_view, 4> Domains{"First Play", "manager menus", "set menus", "titles"};
  std::ifstream page(SourceFile("docs/commands.md"));
  int judged = 0;
  for (std::string line; std::getline(page, line);) {
    const auto cells = Split(line, "|");
    if (!line.starts_with("| `") || cells.size() != 6) {
      continue;
    }
    VMICommand_P command;
    command.FullCommand = Split(line, "`")[1];
    command.CommandHex = Split(line, "`")[3];
    for (const std::string_view domain : Domains) {
      Project project;
      PGC_P chain;
      chain.PreCommands.push_back(command);
      Lang_P language;
      Title_P title;
      domain == Domains.front() ? void(project.FirstPlay = chain)
      : domain == "titles"      ? void(title.PGC.Add(chain))
                                : void(language.PGC.Add(chain));
      VTS_P& manager = project.Disc.Add({});
      VTS_P& set = project.Disc.Add({});
      (domain == "manager menus" ? manager : set).Lang.Add(language);
      set.Title.Add(title);
      const bool allowed = Contains(cells[4], domain) || Trim(cells[4]) == "all";
      EXPECT_EQ(Has(CheckCommandTargets(project), message::TargetForbidden), !allowed)
          << command.FullCommand << " in " << domain;
      ++judged;
    }
  }
  EXPECT_GE(judged, 80);
}

}  // namespace
}  // namespace quorvelant
