// `quorvelant author`: a project becomes a VIDEO_TS folder.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "app/command_form.h"
#include "app/rules_option.h"
#include "author/author_order.h"
#include "base/rules.h"

namespace quorvelant {

struct AuthorArguments {
  std::string Project;
  std::string Folder;  // empty for an image alone
  std::string Image;   // empty for a folder alone
  std::string Label;
  RulesOption RuleSet;
  std::string LogFile;
  bool Analyse = false;
  bool Reindex = false;
  bool Force = false;
  bool ForceNavigation = false;  // make a disc whose commands lead nowhere
  bool Strict = false;
  bool DryRun = false;
  bool NoSync = false;
  bool Verify = false;
  bool Json = false;

  const Rules& RulesUsed() const { return RuleSet.Used(); }
};

// Loads the project and makes its disc, and tells all that comes of it. Whether there is a disc.
[[nodiscard]] bool RunAuthor(const AuthorArguments& arguments, CommandContext& context);

// quorvelant author PROJECT [-o FOLDER] [--iso IMAGE [--label NAME]] [--analyse] [--reindex] [--force]
// [--rules players|classic] [--strict]
//                   [--dry-run] [--json] [--log-file FILE]
void AddAuthorCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
