#include "edit/source_paths.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "base/random.h"
#include "base/text.h"
#include "edit/messages.h"

namespace quorvelant {

namespace {

namespace fs = std::filesystem;

fs::path FolderOf(const std::string& file) {
  std::error_code failed;
  const fs::path parent = fs::path(SystemPath(file)).parent_path();
  const fs::path whole = fs::absolute(parent.empty() ? fs::path(".") : parent, failed);
  return fs::weakly_canonical(whole, failed);
}

bool IsRelative(const std::string& file) {
  const bool hasDrive = file.size() > 1 && file[1] == ':';
  return !file.empty() && !hasDrive && fs::path(SystemPath(file)).is_relative();
}

std::string From(const fs::path& folder, const fs::path& former, const std::string& file) {
  const fs::path whole = (former / SystemPath(file)).lexically_normal();
  const fs::path relative = whole.lexically_relative(folder);
  const std::string path = (relative.empty() ? whole : relative).string();
  return Contains(file, "\\") ? Replace(path, "/", "\\") : path;
}

// Relative where it lies in the folder or below, as it is otherwise.
std::string Near(const fs::path& folder, const std::string& file) {
  const fs::path whole = SystemPath(file);
  const fs::path relative = whole.is_absolute() ? whole.lexically_normal().lexically_relative(folder) : whole;
  return relative.empty() || *relative.begin() == ".." ? file : relative.generic_string();
}

template <typename Name>
void RenameSources(Project& project, Name name) {
  const auto all = [&name](auto& plays) {
    for (auto& play : plays) {
      if (!play.File.empty()) {
        play.File = name(play.File);
      }
    }
  };
  for (Track& track : project.Tracks) {
    all(track.VideoPlays);
    for (AudioStream& stream : track.AudioStreams) {
      all(stream.AudioPlays);
    }
    for (SubtitleStream& stream : track.SubStreams) {
      all(stream.SubPlays);
    }
  }
}

}  // namespace

std::string PathFrom(const std::string& script, const std::string& file) {
  return IsRelative(file) ? From(FolderOf(script), FolderOf({}), file) : file;
}

std::optional<Message> RefusePath(std::string_view path) {
  return path.find_first_of("\r\n\t") == std::string_view::npos
             ? std::nullopt
             : std::optional(MessageOf(message::PathOfLines, {}, path));
}

Project ForScriptAt(const Project& project, const std::string& file) {
  Project copy = project;
  copy.ScriptFile = file;
  const fs::path former = FolderOf(project.ScriptFile);
  const fs::path folder = FolderOf(file);
  const bool isFirst = project.ScriptFile.empty();
  RenameSources(copy, [&](const std::string& source) {
    if (IsRelative(source)) {
      return former == folder ? source : From(folder, former, source);
    }
    return isFirst ? Near(folder, source) : source;
  });
  return copy;
}

Project WithNearSources(const Project& project) {
  Project copy = project;
  const fs::path folder = FolderOf(project.ScriptFile);
  RenameSources(copy, [&folder](const std::string& source) { return Near(folder, source); });
  return copy;
}

}  // namespace quorvelant
