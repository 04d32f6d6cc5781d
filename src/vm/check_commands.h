// All commands of a project at once.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"
#include "vm/resolver.h"

namespace quorvelant {

// A row of the error list: a command that could not be resolved. "-" where a level does not apply.
struct CommandError {
  std::string VTS;
  std::string TitleOrLanguage;
  std::string PGC;
  std::string CELL;
  std::string Command;
  std::string To_Action;
  std::string Type;  // "Pre Command", "Post Command", "Cell Command", "Button Command"
  bool operator==(const CommandError&) const = default;
};

// The row as a line of the error dump: "VTS=", "Title/Language=", ... with tabs between.
std::string ErrorLine(const CommandError& row);

struct CommandCheck {
  std::vector<CommandError> Errors;
  std::vector<Message> Warnings;  // texts whose bytes do not do what they say
  std::size_t CommandCount = 0;
};

// What is said of a command whose target is missing.
enum class MissingTargets {
  KeepDigits,  // an error only where it never had digits: a script that once resolved is taken as it is
  AreErrors    // in a project under work they lead to what was there before; they go, as a script has none
};

// Resolves and encodes every command of the project: First Play, then each entry of the disc, languages
// before titles; in each PGC pre, post, cell and button commands. Marks the project when there are errors.
CommandCheck CheckCommands(Project& project, const Rules& rules, const ResolveOptions& options = {},
                           MissingTargets missing = MissingTargets::KeepDigits);

// The warnings for one text; `place` is the project key of its PGC and its own key ("VTS1.TITLE1.PGC1 Pre2").
// Both are empty for a text on its own.
std::vector<Message> WarningsFor(TextFault faults, std::string_view pgcName, std::string_view text,
                                 std::string_view place);

}  // namespace quorvelant
