#include "app/command_check.h"

#include <fmt/format.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "app/image_words.h"
#include "app/message_json.h"
#include "app/messages.h"
#include "app/rules_option.h"
#include "app/told_messages.h"
#include "author/size_text.h"
#include "base/text.h"
#include "desk/open_project.h"
#include "desk/place_names.h"
#include "desk/project_findings.h"
#include "desk/verdict.h"
#include "edit/outline_json.h"
#include "platform/platform_pictures.h"

namespace quorvelant {

namespace {

struct CheckOptions {
  std::string Project;
  RulesOption RuleSet;
  bool Json = false;
  bool Sources = false;
  bool Strict = false;
  bool Tree = false;

  const Rules& RulesUsed() const { return RuleSet.Used(); }
};

// `needed` is what the disc takes, in bytes.
std::string VerdictText(const Verdict& verdict, const std::string& script, bool strict,
                        std::uint64_t needed) {
  const std::string size =
      verdict.Ready ? fmt::format("; about {}, {}", SizeText(needed), FullnessText(needed)) : std::string();
  return fmt::format("{}: {}{}{}\n", script, VerdictWords(verdict),
                     strict && verdict.Warnings > 0 ? ", and --strict allows none" : "", size);
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

void PrintJson(const Project& project, const LoadResult& load, const Findings& findings,
               const Verdict& verdict, std::uint64_t needed, std::ostream& out) {
  const nlohmann::ordered_json json{{"version", JsonVersion},
                                    {"script", load.File},
                                    {"ok", verdict.Ready},
                                    {"lines", load.LineCount},
                                    {"commands", load.Commands.CommandCount},
                                    {"errors", verdict.Errors},
                                    {"warnings", verdict.Warnings},
                                    {"neededBytes", needed},
                                    {"medium", MediumJson(needed)},
                                    {"messages", MessagesJson(findings)},
                                    {"commandErrors", RowsJson(load.Commands.Errors)},
                                    {"outline", OutlineJson(OutlineOf(project))}};
  out << JsonText(json) << '\n';
}

Findings AllFindings(const LoadResult& load, const Project& project, const CheckOptions& options,
                     UserInterface& ui, std::uint64_t& needed) {
  Findings all;
  if (options.Sources) {
    const auto pictures = MakePlatformPictures();
    all = FindingsOfWholeSources(load, project, options.RulesUsed(), ui, *pictures, &needed);
  } else {
    all = FindingsWithSources(load, project, options.RulesUsed(), ui, nullptr, &needed);
  }
  if (ui.StopRequested()) {
    all.push_back(MessageOf(message::CheckStopped, {}));
  }
  ToldMessages told;
  std::erase_if(all, [&told](const Message& finding) { return !told.IsNew(finding); });
  return all;
}

int Run(const CheckOptions& options, CommandContext& context) {
  Project project;
  ReadFaults faults(context.Ui);  // the findings hold what the load would say
  const FileScanner scanner(options.RulesUsed(), faults);
  const LoadResult load =
      LoadScriptFile(options.Project, project, {.Rules = options.RulesUsed(), .Scanner = &scanner}, faults);
  std::uint64_t needed = 0;
  Findings findings = AllFindings(load, project, options, context.Ui, needed);
  AppendReadFaults(findings, faults);
  const Verdict verdict = VerdictOn(findings, options.Strict);
  if (options.Json) {
    PrintJson(project, load, findings, verdict, needed, context.Out);
    return verdict.Ready ? ExitDone : ExitFailed;
  }
  if (options.Tree && load.Loaded) {
    context.Out << Printable(OutlineText(OutlineOf(project)));
  }
  PlaceNames named(context.Ui, project);
  for (const Message& finding : findings) {
    named.Tell(finding);
  }
  context.Report(VerdictText(verdict, Printable(options.Project), options.Strict, needed));
  return verdict.Ready ? ExitDone : ExitFailed;
}

}  // namespace

void AddCheckCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<CheckOptions>();
  CLI::App* command = program.add_subcommand(
      "check", "Tells what is wrong with a project and its sources, and whether it is ready to author");
  command->add_option("project", options->Project, "Project (.qvp), or a script of the other dialect (.scp)")
      ->required()
      ->type_name("PROJECT");
  command->add_flag("--sources", options->Sources,
                    "Read every source whole, as author does, and tell what shows then");
  command->add_flag("--tree", options->Tree, "Print the tracks, the structure and the stream maps too");
  AddRulesOption(*command, options->RuleSet, "Whose findings are errors");
  command->add_flag("--strict", options->Strict, "Take warnings for errors");
  command->add_flag("--json", options->Json, "Print one JSON object, with the tree");
  command->footer("Exit status: 0 ready to author, 1 not ready, 2 wrong usage.");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
