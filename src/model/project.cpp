#include "model/project.h"

#include "model/walk.h"

namespace quorvelant {

std::string Project::Standard() const {
  for (const VTS_P* entry : Live(Disc)) {
    if (!entry->Standard().empty()) {
      return entry->Standard();
    }
  }
  return "PAL";
}

std::string Project::SourceFolder() const {
  const std::size_t slash = ScriptFile.find_last_of("/\\");
  return slash == std::string::npos ? std::string() : ScriptFile.substr(0, slash);
}

bool Project::SameContent(const Project& other) const {
  return Tracks == other.Tracks && Disc == other.Disc && FirstPlay == other.FirstPlay &&
         Palettes == other.Palettes && DestinationFolder == other.DestinationFolder;
}

}  // namespace quorvelant
