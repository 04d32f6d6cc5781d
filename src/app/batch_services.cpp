#include "app/batch_services.h"

#include <algorithm>
#include <vector>

#include "analysis/messages.h"
#include "analysis/picture_index.h"
#include "app/messages.h"
#include "author/author.h"
#include "author/message_recorder.h"
#include "check/check.h"
#include "desk/user_folders.h"
#include "edit/chapter_analysis.h"
#include "edit/file_scanner.h"
#include "platform/platform_pictures.h"
#include "script/script_reader.h"
#include "vm/check_commands.h"

namespace quorvelant {

namespace {

bool HoldsReadFault(const std::vector<Message>& told) {
  return std::ranges::any_of(told, [](const Message& one) { return one.Is(message::SourceReadFailed); });
}

// False too where a source cannot be read: what the disc would say of it would be wrong.
bool Load(const std::string& script, bool analyse, Project& project, UserInterface& inner) {
  MessageRecorder ui(inner);
  const FileScanner scanner(SwitchFormRules, ui);
  IndexStore store(false, CacheFolder(ProcessEnvironment));
  LoadOptions options{.Rules = SwitchFormRules, .Scanner = &scanner};
  if (analyse) {
    // A track that cannot be analysed is told and keeps its times; it is met again when it is authored.
    options.AnalyseChapters = [&store, &ui](Project& whole, std::size_t track) {
      AnalyseChapters(whole, track, store, ui);
    };
  }
  const LoadResult result = LoadScriptFile(script, project, options, ui);
  for (const CommandError& row : result.Commands.Errors) {
    ui.Tell(MessageOf(message::CommandErrorRow, {}, ErrorLine(row)));
  }
  const Findings findings = result.Loaded ? CheckProject(project, SwitchFormRules) : Findings{};
  for (const Message& finding : findings) {
    ui.Tell(finding);
  }
  return result.MayAuthor() && !HasErrors(findings) && !HoldsReadFault(ui.Release());
}

}  // namespace

BatchServices MakeBatchServices(UserInterface& ui) {
  BatchServices services;
  services.LoadScriptFile = [&ui](const std::string& script, bool analyse, Project& project) {
    return Load(script, analyse, project, ui);
  };
  services.Author = [&ui](const Project& project, AuthorOrder order) {
    const auto pictures = MakePlatformPictures();
    order.Pictures = pictures.get();
    return Author(project, order, ui);
  };
  return services;
}

}  // namespace quorvelant
