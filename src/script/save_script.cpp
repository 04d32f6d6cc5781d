// Saving a project.
#include <filesystem>
#include <fstream>
#include <system_error>

#include "base/random.h"
#include "base/text.h"
#include "script/messages.h"
#include "script/script_writer.h"

namespace quorvelant {

namespace {

// The file that a path means: a link keeps being one, and what it points at is replaced.
std::filesystem::path TargetOf(const std::string& path) {
  const std::filesystem::path target = SystemPath(path);
  std::error_code failed;
  const std::filesystem::path canonical = std::filesystem::canonical(target, failed);
  return failed ? target : canonical;
}

bool WriteFile(const std::filesystem::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  return !file.fail();
}

}  // namespace

bool SaveData(const Project& project, const std::string& path, UserInterface& ui) {
  const std::filesystem::path target = TargetOf(path);
  std::filesystem::path aside = target;
  aside += ".new";
  std::error_code failed;
  if (WriteFile(aside, WriteScript(project))) {
    std::filesystem::rename(aside, target, failed);
    if (!failed) {
      return true;
    }
  }
  std::error_code ignored;
  std::filesystem::remove(aside, ignored);
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
