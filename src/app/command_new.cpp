#include "app/command_new.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/output_file.h"
#include "app/rules_option.h"
#include "base/counted.h"
#include "desk/edit_options.h"
#include "desk/new_project.h"
#include "edit/film_files.h"
#include "edit/new_titles.h"
#include "edit/project_file.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

struct NewOptions {
  std::string Project;
  std::vector<std::string> Files;
  bool Force = false;
};

std::string Summary(const NewOptions& options, const Project& project) {
  const auto sets = std::ranges::count_if(Live(project.Disc),
                                          [](const VTS_P* entry) { return !Live(entry->Title).empty(); });
  const std::string text = fmt::format("{}: {} in {}\n", options.Project,
                                       Counted(TitleCount(project), "title"), Counted(sets, "title set"));
  return options.Files.empty() ? fmt::format("{}: a title without films yet\n", options.Project) : text;
}

int Run(const NewOptions& options, CommandContext& context) {
  SortedFiles sorted = SortFilms(options.Files);
  for (const Message& refusal : sorted.Refusals) {
    context.Ui.Tell(refusal);
  }
  if (!sorted.Refusals.empty() || !HasFolder(options.Project, context.Ui) ||
      !MayWrite(options.Project, {}, options.Force, context.Ui)) {
    return ExitFailed;
  }
  EditSession session(Rules::Players, EditOptionsOf(context.Options), IndexStore(true));
  StartAt(session, options.Project);
  for (FilmFiles& film : sorted.Films) {
    film = AsScriptHolds(options.Project, std::move(film));
  }
  const Outcome added = AddTitles(session, sorted.Films, context.Ui);
  if (!added.IsDone()) {
    context.Ui.Tell(added.Words);
    return ExitFailed;
  }
  if (!SaveProjectAs(session, options.Project, context.Ui)) {
    return ExitFailed;
  }
  context.Report(Summary(options, session.Work()));
  return ExitDone;
}

}  // namespace

void AddNewCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<NewOptions>();
  CLI::App* command = program.add_subcommand(
      "new",
      "Writes a project: the default structure, with each film as a title that plays after the one before");
  command->add_option("project", options->Project, "Project script to write")
      ->required()
      ->type_name("PROJECT.qvp");
  command
      ->add_option("files", options->Files,
                   "Videos, and sound (.ac3, .wav), subtitles (.sst) and chapter lists (.txt) whose names "
                   "begin as their video's do: film.m2v film.de.ac3 film.txt")
      ->type_name("FILE");
  command->add_flag("--force", options->Force, "Replace a file that is there");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
