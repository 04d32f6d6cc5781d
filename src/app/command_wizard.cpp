#include "app/command_wizard.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "app/command_author.h"
#include "app/messages.h"
#include "app/output_file.h"
#include "app/rules_option.h"
#include "author/output_folder.h"
#include "base/counted.h"
#include "base/text.h"
#include "desk/edit_options.h"
#include "desk/made_disc.h"
#include "desk/new_project.h"
#include "desk/open_project.h"
#include "desk/place_names.h"
#include "desk/verdict.h"
#include "edit/film_files.h"
#include "edit/project_file.h"
#include "menu/order_file.h"
#include "menu/page_painter.h"
#include "menu/wizard.h"
#include "model/cls_dvd.h"
#include "platform/platform_pictures.h"

namespace quorvelant {

namespace {

namespace fs = std::filesystem;

struct WizardOptions {
  std::vector<std::string> Files;
  std::string Project;
  std::string Disc;  // folder; empty where none is made
  std::string PreviewFolder;
  std::string Theme;
  std::string Menus;
  std::string Labels;
  std::string Play;
  RulesOption RuleSet;
  bool FindsFiles = false;
  bool Force = false;

  const Rules& RulesUsed() const { return RuleSet.Used(); }
};

bool IsOrderFile(const std::string& file) {
  return EqualNoCase(fs::path(file).extension().string(), ".toml");
}

bool TellAll(const std::vector<Message>& errors, UserInterface& ui) {
  for (const Message& error : errors) {
    ui.Tell(error);
  }
  return errors.empty();
}

DiscOrder OrderOfFilms(std::vector<FilmFiles> films) {
  DiscOrder order;
  for (FilmFiles& film : films) {
    order.Films.push_back({.Video = std::move(film.Video),
                           .Audio = std::move(film.Audio),
                           .Subtitles = std::move(film.Subtitles),
                           .ChapterFile = std::move(film.Chapters)});
  }
  return order;
}

// The order that files or a description give; false where they do not, which is told.
bool ReadFiles(const WizardOptions& options, DiscOrder& order, UserInterface& ui) {
  const auto description = std::ranges::find_if(options.Files, IsOrderFile);
  if (description != options.Files.end()) {
    if (options.Files.size() > 1 || options.FindsFiles) {
      ui.Tell(MessageOf(message::OrderStandsAlone, *description, *description));
      return false;
    }
    ReadOrder read = ReadOrderFile(*description);
    order = read.Order ? std::move(*read.Order) : DiscOrder{};
    return TellAll(read.Errors, ui);
  }
  SortedFiles sorted = FollowFilms(options.Files);
  if (options.FindsFiles) {
    FindFilesOf(sorted.Films);
  }
  order = OrderOfFilms(std::move(sorted.Films));
  return TellAll(sorted.Refusals, ui);
}

// What the command line says besides wins.
bool TakeOptions(const WizardOptions& options, DiscOrder& order, UserInterface& ui) {
  if (!options.Theme.empty()) {
    order.Look.Theme = options.Theme;
  }
  if (!options.Play.empty()) {
    order.Insertion = *InsertionCalled(options.Play);
  }
  if (!options.Menus.empty() && !TakeMenus(options.Menus, order)) {
    ui.Tell(MessageOf(message::WizardOptionUnfit, {}, "--menus", options.Menus,
                      "auto, none, or some of audio,subtitles,chapters"));
    return false;
  }
  const auto language = CLsDVD::LanguageCalled(options.Labels);
  if (!options.Labels.empty() && (!language || *language == 0)) {
    ui.Tell(
        MessageOf(message::WizardOptionUnfit, {}, "--labels", options.Labels, "a language (docs/lists.md)"));
    return false;
  }
  if (!options.Labels.empty()) {
    order.Look.LabelLanguage = CLsDVD::LanguageArray()[*language];
  }
  return true;
}

// Whether previews may go there: a folder, or the name of one that can be made, and not that of the pages
// themselves. Told where not.
bool MayPreview(const std::string& folder, const std::string& pages, UserInterface& ui) {
  std::error_code unknown;
  const fs::path whole = fs::weakly_canonical(fs::absolute(folder, unknown), unknown);
  fs::path there = whole;
  while (!fs::exists(there, unknown) && there.has_relative_path()) {
    there = there.parent_path();
  }
  std::string fault;
  if (!fs::is_directory(there, unknown)) {
    fault = "it is no folder";
  } else if (access(there.c_str(), W_OK) != 0) {
    fault = std::generic_category().message(errno);
  } else if (whole == fs::weakly_canonical(fs::absolute(pages, unknown), unknown)) {
    fault = "the pages of the project go there";
  }
  if (!folder.empty() && !fault.empty()) {
    ui.Tell(MessageOf(message::PreviewUnwritten, folder, folder, fault));
  }
  return folder.empty() || fault.empty();
}

// Every page with its first button lit.
bool SavePreviews(const MadeDisc& made, const DiscOrder& order, const std::string& folder,
                  PictureService& pictures, UserInterface& ui) {
  std::error_code failed;
  fs::create_directories(folder, failed);
  if (failed) {
    ui.Tell(MessageOf(message::PreviewUnwritten, folder, folder, failed.message()));
    return false;
  }
  for (const MadePage& page : made.Pages) {
    const PaintedPage painted{.Normal = pictures.Load(page.NormalFile),
                              .Sublayer = pictures.Load(page.SublayerFile)};
    const fs::path name = fs::path(page.NormalFile).filename().replace_extension(".png");
    pictures.Save(PreviewPage(painted, page.Layout, 0, order.Look), (folder / name).string());
  }
  return true;
}

class WizardRun {
 public:
  WizardRun(const WizardOptions& options, CommandContext& context)
      : options_(options),
        context_(context),
        session_(options.RulesUsed(), EditOptionsOf(context.Options), IndexStore(true)),
        pages_(PagesOf(options.Project), options.Force),
        pictures_(MakePlatformPictures()) {}

  bool Make() {
    DiscOrder order;
    const bool isClear =
        ReadFiles(options_, order, context_.Ui) && TakeOptions(options_, order, context_.Ui) &&
        HasFolder(options_.Project, context_.Ui) &&
        MayWrite(options_.Project, SourceAt(options_.Project), options_.Force, context_.Ui) &&
        MayPreview(options_.PreviewFolder, PagesOf(options_.Project), context_.Ui) &&
        (options_.Disc.empty() || OutputFolder::Judge(options_.Disc, options_.Force, context_.Ui));
    if (!isClear) {
      return false;
    }
    StartAt(session_, options_.Project);
    const Outcome outcome = MakeDisc(session_, order, pages_, {*pictures_, context_.Ui}, made_);
    if (!outcome.IsDone()) {
      context_.Ui.Tell(outcome.Words.Text.empty() ? MessageOf(message::RunStopped, {}) : outcome.Words);
      return false;
    }
    return Save() && (options_.PreviewFolder.empty() ||
                      SavePreviews(made_, order, options_.PreviewFolder, *pictures_, context_.Ui));
  }

 private:
  // The project as it stands, checked before it is written: one that is not ready leaves nothing.
  bool Save() {
    const Verdict verdict = Check();
    if (!verdict.Ready || !SaveProjectAs(session_, options_.Project, context_.Ui)) {
      return false;
    }
    pages_.Keep();
    context_.Report(fmt::format("{}: {}{}: {}\n", Printable(options_.Project),
                                Counted(TitleCount(session_.Work()), "title"), PagesText(),
                                VerdictWords(verdict)));
    return true;
  }

  // What `check` will tell of the script.
  Verdict Check() {
    const Findings findings = FindingsOfScript(session_, options_.Project, context_.Ui);
    PlaceNames named(context_.Ui, session_.Work());
    for (const Message& finding : findings) {
      named.Tell(finding);
    }
    return VerdictOn(findings);
  }

  // The file on the command line that the project would replace; empty for none.
  [[nodiscard]] std::string SourceAt(const std::string& project) const {
    const auto source = std::ranges::find_if(
        options_.Files, [&project](const std::string& file) { return IsSameFile(file, project); });
    return source == options_.Files.end() ? std::string() : *source;
  }

  [[nodiscard]] std::string PagesText() const {
    return made_.Pages.empty() ? ", no menus"
                               : fmt::format(", {} in {}", Counted(made_.Pages.size(), "menu page"),
                                             Printable(pages_.Path()));
  }

  const WizardOptions& options_;
  CommandContext& context_;
  EditSession session_;
  PageFolder pages_;
  std::unique_ptr<PictureService> pictures_;
  MadeDisc made_;
};

int Run(const WizardOptions& options, CommandContext& context) {
  if (!WizardRun(options, context).Make()) {
    return ExitFailed;
  }
  if (options.Disc.empty()) {
    return ExitDone;
  }
  AuthorArguments author;
  author.Project = options.Project;
  author.Folder = options.Disc;
  author.RuleSet = options.RuleSet;
  author.Force = options.Force;
  return RunAuthor(author, context) ? ExitDone : ExitFailed;
}

}  // namespace

void AddWizardCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<WizardOptions>();
  CLI::App* command =
      program.add_subcommand("wizard", "Makes a project with menus of films, and a disc of it if you like");
  command
      ->add_option(
          "files", options->Files,
          "Videos, each before its sound (.ac3, .wav), subtitles (.sst) and chapter list (.txt); or a "
          "description of the disc (.toml)")
      ->required()
      ->type_name("FILE");
  command->add_option("-o,--output", options->Project, "Project script to write")
      ->required()
      ->type_name("PROJECT.qvp");
  command->add_option("--author", options->Disc, "Make the disc too: folder that becomes its VIDEO_TS")
      ->type_name("FOLDER");
  AddRulesOption(*command, options->RuleSet, "What players expect, or every traditional number");
  command->add_flag("--auto", options->FindsFiles,
                    "Add files beside each video that have its name: film.ac3, film.de.sst, film.txt");
  command->add_option("--preview", options->PreviewFolder, "Folder for a picture (.png) of each page")
      ->type_name("FOLDER");
  command->add_option("--theme", options->Theme, "Theme of the menus: its name, or its folder");
  command->add_option("--menus", options->Menus, "auto, none, or some of audio,subtitles,chapters");
  command->add_option("--labels", options->Labels, "Language of the menus' labels")->type_name("LANGUAGE");
  command->add_option("--play", options->Play, "What plays when the disc goes in: menu, first or all")
      ->check(CLI::IsMember({"menu", "first", "all"}));
  command->add_flag("--force", options->Force, "Replace what a former run wrote");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
