#include "app/new_project.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "app/messages.h"
#include "model/walk.h"

namespace quorvelant {

void StartAt(EditSession& session, const std::string& path) {
  Project project = session.Work();
  project.ScriptFile = path;
  session.Replace(std::move(project), {});
}

bool HasFolder(const std::string& path, UserInterface& ui) {
  const auto folder = std::filesystem::path(path).parent_path();
  std::error_code failed;
  const bool isThere = folder.empty() || std::filesystem::is_directory(folder, failed);
  if (!isThere) {
    ui.Tell(MessageOf(message::OutputFolderMissing, path, folder.string()));
  }
  return isThere;
}

std::size_t TitleCount(const Project& project) {
  std::size_t titles = 0;
  for (const VTS_P* entry : Live(project.Disc)) {
    titles += Live(entry->Title).size();
  }
  return titles;
}

}  // namespace quorvelant
