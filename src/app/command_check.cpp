#include "app/command_check.h"

#include <fmt/format.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "app/open_project.h"
#include "base/text.h"
#include "check/check.h"
#include "check/check_sources.h"
#include "check/disc_limits.h"
#include "edit/outline_json.h"
#include "platform/platform_pictures.h"
#include "script/load_findings.h"

namespace quorvelant {

namespace {

struct CheckOptions {
  std::string Project;
  bool Json = false;
  bool Sources = false;
};

constexpr std::string_view SeverityWord(Severity level) {
  switch (level) {
    case Severity::Error:
      return "error";
    case Severity::Warning:
      return "warning";
    default:
      return "information";
  }
}

nlohmann::ordered_json MessagesJson(const std::vector<Message>& messages) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Message& message : messages) {
    list.push_back({{"severity", SeverityWord(message.Level)},
                    {"code", message.Code},
                    {"title", message.Title},
                    {"text", message.Text},
                    {"place", message.Place}});
  }
  return list;
}

nlohmann::ordered_json RowsJson(const std::vector<CommandError>& rows) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const CommandError& row : rows) {
    list.push_back({{"VTS", row.VTS},
                    {"Title/Language", row.TitleOrLanguage},
                    {"PGC", row.PGC},
                    {"CELL", row.CELL},
                    {"Command", row.Command},
                    {"To_Action", row.To_Action},
                    {"Type", row.Type}});
  }
  return list;
}

void PrintJson(const Project& project, const LoadResult& load, const Findings& findings, std::ostream& out) {
  const nlohmann::ordered_json json{{"script", project.ScriptFile},
                                    {"ok", !HasErrors(findings)},
                                    {"lines", load.LineCount},
                                    {"commands", load.Commands.CommandCount},
                                    {"errors", CountOf(findings, Severity::Error)},
                                    {"warnings", CountOf(findings, Severity::Warning)},
                                    {"messages", MessagesJson(findings)},
                                    {"commandErrors", RowsJson(load.Commands.Errors)},
                                    {"outline", OutlineJson(OutlineOf(project))}};
  out << JsonText(json) << '\n';
}

Findings CheckSources(const Project& project, bool open, UserInterface& ui) {
  if (!open) {
    return LookForSources(project, ui);
  }
  const auto pictures = MakePlatformPictures();
  return OpenSources(project, Rules::Players, *pictures, ui);
}

int Run(const CheckOptions& options, CommandContext& context) {
  Project project;
  SilentBoxes quiet(context.Ui);  // the findings hold what the load would say
  const LoadResult load = OpenProject(options.Project, project, Rules::Players, quiet);
  Findings findings = LoadFindings(load);
  if (load.Loaded) {
    Append(findings, CheckProject(project));
    Append(findings, CheckLimits(project));
  }
  Append(findings, CheckSources(project, options.Sources, context.Ui));
  const int status = HasErrors(findings) ? ExitFailed : ExitDone;
  if (options.Json) {
    PrintJson(project, load, findings, context.Out);
    return status;
  }
  if (load.Loaded) {
    context.Out << Printable(OutlineText(OutlineOf(project)));
  }
  for (const Message& finding : findings) {
    context.Ui.Tell(finding);
  }
  context.Out << fmt::format("{} lines, {} commands: {} errors, {} warnings\n", load.LineCount,
                             load.Commands.CommandCount, CountOf(findings, Severity::Error),
                             CountOf(findings, Severity::Warning));
  return status;
}

}  // namespace

void AddCheckCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<CheckOptions>();
  CLI::App* command = program.add_subcommand(
      "check", "Loads a project, resolves its commands and prints what is wrong, its tree and stream maps");
  command->add_option("project", options->Project, "Project script of either dialect")
      ->required()
      ->type_name("PROJECT");
  command->add_flag("--sources", options->Sources,
                    "Code every subtitle too, and look at buttons and the ages of indexes");
  command->add_flag("--json", options->Json, "Print one JSON object");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
