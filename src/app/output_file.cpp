#include "app/output_file.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

#include "app/messages.h"
#include "author/disc_folder.h"
#include "base/file_text.h"

namespace quorvelant {

namespace {

std::optional<Message> WhyNot(const std::string& path, const std::string& source, bool force) {
  const FileKind kind = SystemDisk().KindOf(path);
  if (kind == FileKind::Missing || kind == FileKind::Unreachable) {
    return std::nullopt;  // the write shows what is in its way
  }
  if (kind != FileKind::Plain) {
    return MessageOf(message::OutputNotPlain, path, WhyNotPlainFile(path));
  }
  if (IsSameFile(path, source)) {
    return MessageOf(message::OutputIsSource, path);
  }
  return force ? std::nullopt : std::optional(MessageOf(message::OutputExists, path));
}

}  // namespace

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code missing;
  return std::filesystem::equivalent(a, b, missing) && !missing;
}

bool IsWithin(const std::string& file, const std::string& folder) {
  std::error_code failed;
  const auto path = std::filesystem::weakly_canonical(std::filesystem::absolute(file), failed);
  const auto disc = DestinationPath(folder);
  return std::ranges::mismatch(disc, path).in1 == disc.end();
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

bool MayWrite(const std::string& path, const std::string& source, bool force, UserInterface& ui) {
  const auto refusal = WhyNot(path, source, force);
  if (refusal) {
    ui.Tell(*refusal);
  }
  return !refusal;
}

}  // namespace quorvelant
