#include "app/command_edit.h"

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/edit_run.h"
#include "app/messages.h"
#include "app/output_file.h"
#include "app/rules_option.h"
#include "desk/edit_options.h"
#include "desk/open_project.h"
#include "edit/project_file.h"
#include "script/load_findings.h"

namespace quorvelant {

namespace {

struct EditArguments {
  std::string Project;
  std::string Output;
  RulesOption RuleSet;
  bool Force = false;
  bool DryRun = false;
  bool KeepGoing = false;

  // Where the project goes.
  [[nodiscard]] const std::string& SaveTo() const { return Output.empty() ? Project : Output; }
  [[nodiscard]] bool SavesInPlace() const { return Output.empty() || IsSameFile(Output, Project); }
};

// Why the project must not be saved there: something of it would be lost.
std::optional<Message> WhyNotSaved(const EditArguments& arguments, const LoadResult& load, bool allRead) {
  if (!allRead) {
    return MessageOf(message::ScriptNotWhole, arguments.Project);
  }
  if (!arguments.SavesInPlace()) {
    return std::nullopt;
  }
  if (load.IsScenarist) {
    return MessageOf(message::EditOtherDialect, arguments.Project);
  }
  return load.SkippedCount > 0
             ? std::optional(MessageOf(message::EditLosesLines, arguments.Project, load.SkippedCount))
             : std::nullopt;
}

// Puts the project on the desk; false where it cannot be read whole. What was found is told.
bool Load(const EditArguments& arguments, EditDesk& desk) {
  ReadFaults faults(desk.Ui);  // the findings hold what the load would say besides
  const FileScanner scanner(desk.Session.RulesInForce(), faults);
  Project project;
  std::string text = ScriptTextOf(arguments.Project);
  const LoadResult load = LoadScriptFile(arguments.Project, project,
                                         {.Rules = desk.Session.RulesInForce(), .Scanner = &scanner}, faults);
  for (const Message& finding : LoadFindings(load)) {
    desk.Ui.Tell(finding);
  }
  for (const Message& fault : faults.Told) {
    desk.Ui.Tell(fault);
  }
  if (!IsReadWhole(load)) {
    if (load.Loaded) {
      desk.Ui.Tell(MessageOf(message::ScriptNotWhole, arguments.Project));
    }
    return false;
  }
  desk.SaveRefusal = WhyNotSaved(arguments, load, faults.Told.empty());
  if (load.IsScenarist) {
    desk.Session.Replace(std::move(project), {});
  } else {
    desk.Session.Replace(std::move(project), arguments.Project, std::move(text));
  }
  return true;
}

int Run(const EditArguments& arguments, CommandContext& context) {
  if (!arguments.SavesInPlace() && !arguments.DryRun &&
      (!HasFolder(arguments.Output, context.Ui) ||
       !MayWrite(arguments.Output, arguments.Project, arguments.Force, context.Ui))) {
    return ExitFailed;
  }
  // Indexes stay in memory: nothing is written beside the project's sources.
  EditSession session(arguments.RuleSet.Used(), EditOptionsOf(context.Options),
                      IndexStore(true, context.CacheFolder));
  EditDesk desk{.Session = session,
                .Ui = context.Ui,
                .Options = context.Options,
                .SaveTo = arguments.SaveTo(),
                .LogFile = context.LogFile,
                .DryRun = arguments.DryRun};
  if (!Load(arguments, desk)) {
    return ExitFailed;
  }
  const bool isGood = RunEditLines(std::cin, desk, arguments.KeepGoing, context.Out);
  if (session.IsUnsaved() && !arguments.DryRun) {
    context.Ui.Tell(MessageOf(message::EditNotSaved, arguments.Project));
  }
  return isGood ? ExitDone : ExitFailed;
}

}  // namespace

void AddEditCommand(CLI::App& program, CommandContext& context) {
  const auto arguments = std::make_shared<EditArguments>();
  CLI::App* command = program.add_subcommand(
      "edit", "Changes a project by operations on standard input, one JSON object a line, and answers each");
  command
      ->add_option("project", arguments->Project, "Project (.qvp), or a script of the other dialect (.scp)")
      ->required()
      ->type_name("PROJECT");
  command
      ->add_option("-o,--output", arguments->Output, "File that `save` writes instead of the project's own")
      ->type_name("OUT.qvp");
  command->add_flag("--force", arguments->Force, "Replace another file that is there with --output");
  command->add_flag("--dry-run", arguments->DryRun, "Do everything but write");
  command->add_flag("--keep-going", arguments->KeepGoing,
                    "Go on after a refusal; the exit status is 1 all the same");
  AddRulesOption(*command, arguments->RuleSet, "What players expect, or every traditional number");
  command->footer(
      R"({"op":"new-title","parent":"VTS1"} gives {"done":KEY}, {"refused":...} or {"asks":...}.
Nothing is saved without {"op":"save"}. Exit status: 0 all done, 1 refused or failed, 2 wrong usage.)");
  command->callback([arguments, &context] { context.ExitStatus = Run(*arguments, context); });
}

}  // namespace quorvelant
