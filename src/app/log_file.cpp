#include "app/log_file.h"

#include <algorithm>

#include "app/messages.h"
#include "app/output_file.h"
#include "base/file_text.h"
#include "base/random.h"

namespace quorvelant {

namespace {

bool IsSourceOf(const Project& project, const std::string& file) {
  const auto isOneOf = [&](const auto& plays) {
    return std::ranges::any_of(plays, [&](const auto& play) {
      return !play.File.empty() && IsSameFile(SystemPath(play.File, project.SourceFolder()), file);
    });
  };
  for (const Track& track : project.Tracks) {
    if (isOneOf(track.VideoPlays)) {
      return true;
    }
    for (const AudioStream& stream : track.AudioStreams) {
      if (isOneOf(stream.AudioPlays)) {
        return true;
      }
    }
    for (const SubtitleStream& stream : track.SubStreams) {
      if (isOneOf(stream.SubPlays)) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

bool MayLog(const std::string& file, const std::string& script, const std::string& folder,
            const Project& project, UserInterface& ui) {
  const FileKind kind = SystemDisk().KindOf(file);
  if (kind == FileKind::Folder || kind == FileKind::Special) {
    ui.Tell(MessageOf(message::OutputNotPlain, file, WhyNotPlainFile(file)));
    return false;
  }
  const bool taken =
      IsSameFile(file, script) || IsSourceOf(project, file) || (!folder.empty() && IsWithin(file, folder));
  if (taken) {
    ui.Tell(MessageOf(message::LogInTheWay, file));
  }
  return !taken;
}

}  // namespace quorvelant
