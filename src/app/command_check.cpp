#include "app/command_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "app/open_project.h"
#include "base/text.h"
#include "check/check.h"
#include "check/check_sources.h"
#include "edit/outline_json.h"
#include "platform/picture_service.h"

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

void PrintJson(const Project& project, const LoadResult& load, const CheckReport& report, std::ostream& out) {
  const nlohmann::ordered_json json{{"script", project.ScriptFile},
                                    {"ok", report.ErrorCount == 0},
                                    {"lines", load.LineCount},
                                    {"commands", load.Commands.CommandCount},
                                    {"errors", report.ErrorCount},
                                    {"warnings", report.WarningCount},
                                    {"messages", MessagesJson(report.Messages)},
                                    {"commandErrors", RowsJson(load.Commands.Errors)},
                                    {"outline", OutlineJson(OutlineOf(project))}};
  out << JsonText(json) << '\n';
}

// The report with its look for source files replaced by what reading their heads found.
CheckReport WithSources(CheckReport report, const Project& project, UserInterface& ui) {
  std::erase_if(report.Messages, [](const Message& message) {
    return message.Title == SourceMissingTitle || message.Title == SourceUnreadTitle;
  });
  const auto pictures = MakePictureService();
  for (Message& finding : CheckSources(project, Rules::Players, *pictures, ui)) {
    report.Messages.push_back(std::move(finding));
  }
  const auto count = [&report](Severity level) {
    return static_cast<std::size_t>(
        std::count_if(report.Messages.begin(), report.Messages.end(),
                      [level](const Message& message) { return message.Level == level; }));
  };
  report.ErrorCount = count(Severity::Error);
  report.WarningCount = count(Severity::Warning);
  return report;
}

int Run(const CheckOptions& options, CommandContext& context) {
  Project project;
  SilentBoxes quiet(context.Ui);  // the report holds what the load would say
  const LoadResult load = OpenProject(options.Project, project, Rules::Players, quiet);
  CheckReport report = CheckProject(project, load);
  if (options.Sources) {
    report = WithSources(std::move(report), project, context.Ui);
  }
  if (options.Json) {
    PrintJson(project, load, report, context.Out);
    return report.ErrorCount == 0 ? ExitDone : ExitFailed;
  }
  if (load.Loaded) {
    context.Out << Printable(OutlineText(OutlineOf(project)));
  }
  for (const Message& message : report.Messages) {
    context.Ui.Tell(message);
  }
  context.Out << fmt::format("{} lines, {} commands: {} errors, {} warnings\n", load.LineCount,
                             load.Commands.CommandCount, report.ErrorCount, report.WarningCount);
  return report.ErrorCount == 0 ? ExitDone : ExitFailed;
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
                    "Open every source: report what is missing, refused or mismatched");
  command->add_flag("--json", options->Json, "Print one JSON object");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
