// How the commands open a project.
#pragma once

#include <string>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"
#include "project/script_reader.h"

namespace quorvelant {

// Passes status, progress and the wish to stop on and keeps boxes back: for a command that tells everything
// itself when the work is done.
class SilentBoxes : public UserInterface {
 public:
  explicit SilentBoxes(UserInterface& ui) : ui_(ui) {}

  void Tell(const Message& /*message*/) override {}
  bool Ask(std::string_view title, std::string_view text, bool unattended) override {
    return ui_.Ask(title, text, unattended);
  }
  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override {
    return ui_.AskText(title, text, proposal);
  }
  void Status(std::string_view words) override { ui_.Status(words); }
  void Progress(double done, double total) override { ui_.Progress(done, total); }
  bool StopRequested() override { return ui_.StopRequested(); }

 private:
  UserInterface& ui_;
};

// Loads a script with a look at the first file of each track and stream.
inline LoadResult OpenProject(const std::string& script, Project& project, const Rules& rules,
                              UserInterface& ui) {
  SilentBoxes quiet(ui);
  const FileScanner scanner(rules, quiet);
  return LoadScriptFile(script, project, {.Rules = rules, .Scanner = &scanner}, ui);
}

}  // namespace quorvelant
