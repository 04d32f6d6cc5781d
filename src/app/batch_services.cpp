#include "app/batch_services.h"

#include "base/rules.h"
#include "project/script_reader.h"
#include "project/source_scanner.h"
#include "vm/check_commands.h"

namespace quorvelant {

namespace {

constexpr std::string_view NotBuiltTitle = "Not built yet";
constexpr std::string_view NoAnalysis =
    "This build cannot analyse chapters; they stay where the script has them";
constexpr std::string_view NoDriver = "This build cannot author discs";

// The switch form keeps every traditional number.
constexpr const Rules& BatchRules = Rules::Classic;

bool Load(const std::string& script, bool analyse, Project& project, UserInterface& ui) {
  const FileScanner scanner(BatchRules, ui);
  if (analyse) {
    TellWarning(ui, NotBuiltTitle, NoAnalysis, script);
  }
  const LoadResult result = LoadScriptFile(script, project, {.Rules = BatchRules, .Scanner = &scanner}, ui);
  for (const CommandError& row : result.Commands.Errors) {
    ui.Tell({Severity::Error, {}, ErrorLine(row), {}});
  }
  return result.MayAuthor();
}

}  // namespace

BatchServices MakeBatchServices(UserInterface& ui) {
  BatchServices services;
  services.LoadScriptFile = [&ui](const std::string& script, bool analyse, Project& project) {
    return Load(script, analyse, project, ui);
  };
  services.Author = [&ui](Project&, const Settings&, bool, Log&) {
    TellError(ui, NotBuiltTitle, NoDriver);
    return false;
  };
  return services;
}

}  // namespace quorvelant
