#include "desk/new_project.h"

#include <utility>

#include "model/walk.h"

namespace quorvelant {

void StartAt(EditSession& session, const std::string& path) {
  Project project = session.Work();
  project.ScriptFile = path;
  session.Replace(std::move(project), {});
}

std::size_t TitleCount(const Project& project) {
  std::size_t titles = 0;
  for (const VTS_P* entry : Live(project.Disc)) {
    titles += Live(entry->Title).size();
  }
  return titles;
}

}  // namespace quorvelant
