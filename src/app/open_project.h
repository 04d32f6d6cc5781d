// How the commands open a project.
#pragma once

#include <string>
#include <vector>

#include "analysis/messages.h"
#include "base/file_text.h"
#include "base/passing_ui.h"
#include "base/random.h"
#include "base/rules.h"
#include "edit/file_scanner.h"
#include "model/project.h"
#include "script/script_reader.h"

namespace quorvelant {

// Passes status, progress and the wish to stop on and keeps boxes back: for a command that tells everything
// itself when the work is done.
class SilentBoxes : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& /*message*/) override {}
};

// Keeps boxes back too, and what of the sources could not be read: what is not known of them would be written
// wrong.
class ReadFaults : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& message) override {
    if (message.Is(message::SourceReadFailed)) {
      Told.push_back(message);
    }
  }
  std::vector<Message> Told;
};

// Whether the script was read to its end and is one: only then may anything be written of it.
[[nodiscard]] inline bool IsReadWhole(const LoadResult& load) {
  return load.Loaded && load.TakenCount > 0 && load.UnclosedCount == 0;
}

// The text of an own script, for what of it the project does not hold; empty of one in the other dialect.
[[nodiscard]] inline std::string OwnScriptText(const LoadResult& load) {
  constexpr std::uint64_t MostBytes = std::uint64_t{1} << 28U;
  return load.IsScenarist ? std::string() : ReadHead(SystemPath(load.File), MostBytes).value_or("");
}

// Loads a script with a look at the first file of each track and stream.
[[nodiscard]] inline LoadResult OpenProject(const std::string& script, Project& project, const Rules& rules,
                                            UserInterface& ui) {
  SilentBoxes quiet(ui);
  const FileScanner scanner(rules, quiet);
  return LoadScriptFile(script, project, {.Rules = rules, .Scanner = &scanner}, ui);
}

}  // namespace quorvelant
