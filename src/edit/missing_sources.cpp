#include "edit/missing_sources.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/random.h"
#include "edit/change.h"
#include "edit/file_scanner.h"
#include "model/display_mode.h"
#include "model/walk.h"
#include "script/source_scanner.h"

namespace quorvelant {

namespace {

namespace fs = std::filesystem;

bool IsThere(const fs::path& file) {
  std::error_code failed;
  return fs::exists(file, failed);
}

// Calls with the name of every file of live tracks.
template <class Function>
void ForEachSource(Project& project, Function function) {
  const auto plays = [&function](auto& list) {
    for (auto& play : list) {
      if (!play.File.empty()) {
        function(play.File);
      }
    }
  };
  for (Track& track : project.Tracks) {
    if (track.Removed) {
      continue;
    }
    plays(track.VideoPlays);
    for (AudioStream& stream : track.AudioStreams) {
      plays(stream.AudioPlays);
    }
    for (SubtitleStream& stream : track.SubStreams) {
      plays(stream.SubPlays);
    }
  }
}

// Where the file went, if it went with the one that was found.
std::optional<std::string> NewPlace(const fs::path& file, const fs::path& missing, const fs::path& found) {
  if (file == missing) {
    return found.string();
  }
  const fs::path below = file.lexically_relative(missing.parent_path());
  const bool isBelow = !below.empty() && *below.begin() != "..";
  for (const fs::path& tried :
       {found.parent_path() / (isBelow ? below : file.filename()), found.parent_path() / file.filename()}) {
    if (IsThere(tried)) {
      return tried.lexically_normal().string();
    }
  }
  return std::nullopt;
}

// A name that counted from the project's folder still does.
std::string AsHeld(const std::string& former, const std::string& place, const std::string& folder) {
  if (fs::path(SystemPath(former)).is_absolute() || folder.empty()) {
    return place;
  }
  const fs::path relative = fs::path(place).lexically_relative(folder);
  return relative.empty() ? place : relative.string();
}

}  // namespace

std::vector<std::string> MissingSources(const Project& project) {
  std::vector<std::string> missing;
  const std::string folder = project.SourceFolder();
  Project copy = project;
  ForEachSource(copy, [&](const std::string& name) {
    const std::string path = SystemPath(name, folder);
    if (std::ranges::find(missing, path) == missing.end() && !IsThere(path)) {
      missing.push_back(path);
    }
  });
  return missing;
}

std::size_t MendSources(Project& project, const std::string& missing, const std::string& found) {
  const std::string folder = project.SourceFolder();
  std::vector<std::string> mended;
  ForEachSource(project, [&](std::string& name) {
    const std::string path = SystemPath(name, folder);
    const auto place = IsThere(path) ? std::nullopt : NewPlace(path, missing, found);
    if (place) {
      name = AsHeld(name, *place, folder);
      if (std::ranges::find(mended, path) == mended.end()) {
        mended.push_back(path);
      }
    }
  });
  return mended.size();
}

void LearnSources(Project& project, const Project& former, const Rules& rules, UserInterface& ui) {
  const FileScanner scanner(rules, ui);
  for (std::size_t i = 0; i < project.Tracks.Count(); ++i) {
    Track& track = project.Tracks[i];
    if (track != former.Tracks[i]) {
      ScanTrack(track, scanner, project.SourceFolder(), true);
      FollowDisplayMode(track, rules);
    }
  }
}

Outcome TakeSources(EditSession& session, const Project& mended) {
  Change change(session, "Locate Missing Files");
  for (std::size_t i = 0; i < std::min(mended.Tracks.Count(), change.Work().Tracks.Count()); ++i) {
    if (mended.Tracks[i] != change.Work().Tracks[i]) {
      change.EditTrack(i) = mended.Tracks[i];
    }
  }
  return change.Commit();
}

}  // namespace quorvelant
