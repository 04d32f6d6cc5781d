// Saving a project.
#include "base/file_text.h"
#include "base/random.h"
#include "script/kept_text.h"
#include "script/messages.h"
#include "script/script_writer.h"

namespace quorvelant {

bool SaveData(const Project& project, const std::string& path, UserInterface& ui) {
  if (WriteAside(SystemPath(path), WriteScript(project)) == 0) {
    return true;
  }
  ui.Tell(MessageOf(message::ScriptSaveFailed, path, path));
  return false;
}

bool SaveDataLike(const Project& project, std::string_view original, const std::string& path,
                  UserInterface& ui) {
  const std::string written = WithLineEndsOf(original, WithCommentsOf(original, WriteScript(project)));
  if (WriteAside(SystemPath(path), written) == 0) {
    return true;
  }
  ui.Tell(MessageOf(message::ScriptSaveFailed, path, path));
  return false;
}

bool SaveDataPath(Project& project, UserInterface& ui) {
  const auto path = ui.AskText(SavePathTitle, SavePathFilter, project.ScriptFile);
  if (!path || path->empty()) {
    return false;
  }
  project.ScriptFile = *path;
  if (!SaveData(project, *path, ui)) {
    return false;
  }
  ui.Tell(MessageOf(message::ScriptSaved, {}, *path));
  return true;
}

}  // namespace quorvelant
