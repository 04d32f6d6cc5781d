// Saving a project.
#include <string>
#include <system_error>

#include "base/file_text.h"
#include "base/random.h"
#include "script/kept_text.h"
#include "script/messages.h"
#include "script/script_writer.h"

namespace quorvelant {

bool SaveScriptText(const std::string& text, const std::string& path, UserInterface& ui) {
  const int refusal = WriteAside(SystemPath(path), text);
  if (refusal != 0) {
    ui.Tell(MessageOf(message::ScriptSaveFailed, path, path, std::generic_category().message(refusal)));
  }
  return refusal == 0;
}

std::string ScriptLike(const Project& project, std::string_view original) {
  return WithLineEndsOf(original, WithCommentsOf(original, WriteScript(project)));
}

bool SaveData(const Project& project, const std::string& path, UserInterface& ui) {
  return SaveScriptText(WriteScript(project), path, ui);
}

bool SaveDataLike(const Project& project, std::string_view original, const std::string& path,
                  UserInterface& ui) {
  return SaveScriptText(ScriptLike(project, original), path, ui);
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
