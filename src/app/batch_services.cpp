#include "app/batch_services.h"

#include "analysis/picture_index.h"
#include "app/command_author.h"
#include "author/author.h"
#include "base/random.h"
#include "base/rules.h"
#include "edit/chapter_analysis.h"
#include "edit/file_scanner.h"
#include "platform/platform_pictures.h"
#include "script/script_reader.h"
#include "vm/check_commands.h"

namespace quorvelant {

namespace {

// The switch form keeps every traditional number.
constexpr const Rules& BatchRules = Rules::Classic;

bool Load(const std::string& script, bool analyse, Project& project, UserInterface& ui) {
  const FileScanner scanner(BatchRules, ui);
  IndexStore store;
  LoadOptions options{.Rules = BatchRules, .Scanner = &scanner};
  if (analyse) {
    // A track that cannot be analysed is told and keeps its times; it surfaces again when it is authored.
    options.AnalyseChapters = [&store, &ui](Project& whole, std::size_t track) {
      AnalyseChapters(whole, track, store, ui);
    };
  }
  const LoadResult result = LoadScriptFile(script, project, options, ui);
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
  services.Author = [&ui](Project& project, const Settings& settings, bool exitOnFinish, Log& log) {
    const auto pictures = MakePlatformPictures();
    const DiscPlan plan = PlanDisc(project, BatchRules, ui, pictures.get());
    AuthorOptions options = OptionsOf(settings, BatchRules);
    options.Folder = SystemPath(project.DestinationFolder, project.SourceFolder());
    options.TellSuccess = !exitOnFinish;
    options.Pictures = pictures.get();
    return AuthorDisc(plan, options, ui, log).Outcome == AuthorOutcome::Done;
  };
  return services;
}

}  // namespace quorvelant
