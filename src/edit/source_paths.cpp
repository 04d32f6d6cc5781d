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
  if (former == folder) {
    return copy;
  }
  const auto lead = [&](auto& plays) {
    for (auto& play : plays) {
      play.File = IsRelative(play.File) ? From(folder, former, play.File) : std::move(play.File);
    }
  };
  for (Track& track : copy.Tracks) {
    lead(track.VideoPlays);
    for (AudioStream& stream : track.AudioStreams) {
      lead(stream.AudioPlays);
    }
    for (SubtitleStream& stream : track.SubStreams) {
      lead(stream.SubPlays);
    }
  }
  return copy;
}

}  // namespace quorvelant
