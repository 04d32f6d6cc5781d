#include "edit/scene_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <unordered_set>

namespace quorvelant {

void NameNewScenes(Project& project, std::size_t track, std::span<const Scene> before) {
  // Of removed tracks too, since undo brings them back.
  std::unordered_set<std::string> taken;
  for (const Track& other : project.Tracks) {
    for (const Scene& scene : other.Scenes) {
      if (&other != &project.Tracks[track]) {
        taken.insert(scene.Name);
      }
    }
  }
  for (const Scene& scene : before) {
    taken.insert(scene.Name);
  }
  for (Scene& scene : project.Tracks[track].Scenes) {
    if (std::ranges::any_of(before, [&scene](const Scene& old) { return old.Name == scene.Name; })) {
      continue;
    }
    const std::string stem = scene.Name;
    for (std::size_t number = 2; !taken.insert(scene.Name).second; ++number) {
      scene.Name = fmt::format("{}_{}", stem, number);
    }
  }
}

}  // namespace quorvelant
