#include "author/output_folder.h"

#include <sys/stat.h>

#include <system_error>
#include <utility>

#include "author/messages.h"
#include "disc/disc_files.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view AsideSuffix = ".making";
constexpr std::string_view FormerSuffix = ".former";

// The folder that a path means: without "/" at its end, links followed.
fs::path Target(const std::string& destination) {
  std::error_code failed;
  fs::path path = fs::absolute(destination, failed).lexically_normal();
  if (!path.has_filename()) {
    path = path.parent_path();
  }
  const fs::path real = fs::canonical(path, failed);
  return failed ? path : real;
}

// A hidden neighbour of the destination.
fs::path Neighbour(const fs::path& destination, std::string_view suffix) {
  fs::path name = ".";
  name += destination.filename();
  name += suffix;
  return destination.parent_path() / name;
}

struct FolderContent {
  bool HasDiscFiles = false;
  std::string Foreign;  // the first other name
};

FolderContent ContentOf(const fs::path& folder) {
  FolderContent content;
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(folder, failed)) {
    const std::string name = entry.path().filename().string();
    std::error_code unreadable;
    if (entry.is_regular_file(unreadable) && IsDiscFileName(name)) {
      content.HasDiscFiles = true;
    } else if (content.Foreign.empty() || name < content.Foreign) {
      content.Foreign = name;
    }
  }
  return content;
}

// Removes the disc files of a folder, and the folder when it is empty then.
void RemoveDisc(const fs::path& folder) {
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(folder, failed)) {
    std::error_code ignored;
    if (entry.is_regular_file(ignored) && IsDiscFileName(entry.path().filename().string())) {
      fs::remove(entry.path(), ignored);
    }
  }
  fs::remove(folder, failed);
}

// A mount point cannot be renamed.
bool IsMounted(const fs::path& folder) {
  struct stat there = {};
  struct stat around = {};
  return stat(folder.c_str(), &there) == 0 && stat(folder.parent_path().c_str(), &around) == 0 &&
         there.st_dev != around.st_dev;
}

// Why the destination is not taken; nothing where it is.
std::optional<Message> WhyRefused(const fs::path& destination, bool force) {
  std::error_code failed;
  const auto status = fs::status(destination, failed);
  if (!fs::exists(status)) {
    return std::nullopt;
  }
  if (!fs::is_directory(status)) {
    return MessageOf(message::DestinationIsNoFolder, destination.string());
  }
  const FolderContent content = ContentOf(destination);
  if (!content.Foreign.empty()) {
    return MessageOf(message::DestinationHoldsForeignFile, destination.string(), content.Foreign);
  }
  if (content.HasDiscFiles && !force) {
    return MessageOf(message::DestinationHoldsDisc, destination.string());
  }
  if (IsMounted(destination)) {
    return MessageOf(message::DestinationIsMountPoint, destination.string());
  }
  return std::nullopt;
}

bool Accept(const fs::path& destination, bool force, UserInterface& ui) {
  const auto refusal = WhyRefused(destination, force);
  if (refusal) {
    ui.Tell(*refusal);
  }
  return !refusal;
}

}  // namespace

bool OutputFolder::Judge(const std::string& destination, bool force, UserInterface& ui) {
  return Accept(Target(destination), force, ui);
}

std::optional<OutputFolder> OutputFolder::Prepare(const std::string& destination, bool force,
                                                  UserInterface& ui) {
  const fs::path target = Target(destination);
  if (!Accept(target, force, ui)) {
    return std::nullopt;
  }
  const fs::path aside = Neighbour(target, AsideSuffix);
  RemoveDisc(aside);
  std::error_code failed;
  fs::create_directories(target.parent_path(), failed);
  if (!failed && !fs::create_directory(aside, failed) && !failed) {
    failed = std::make_error_code(std::errc::file_exists);
  }
  if (failed) {
    ui.Tell(MessageOf(message::FolderNotMade, aside.string(), failed.message()));
    return std::nullopt;
  }
  return OutputFolder(target, aside);
}

OutputFolder::OutputFolder(fs::path destination, fs::path aside)
    : destination_(std::move(destination)), aside_(std::move(aside)) {}

OutputFolder::OutputFolder(OutputFolder&& other) noexcept
    : destination_(std::move(other.destination_)), aside_(std::exchange(other.aside_, {})) {}

OutputFolder::~OutputFolder() {
  if (!aside_.empty()) {
    RemoveDisc(aside_);
  }
}

bool OutputFolder::Place(UserInterface& ui) {
  std::error_code failed;
  const fs::path former = Neighbour(destination_, FormerSuffix);
  RemoveDisc(former);
  const bool replaces = fs::exists(destination_, failed);
  if (replaces) {
    fs::rename(destination_, former, failed);
  }
  if (!failed) {
    fs::rename(aside_, destination_, failed);
    if (failed && replaces) {
      std::error_code ignored;
      fs::rename(former, destination_, ignored);
    }
  }
  if (failed) {
    ui.Tell(MessageOf(message::FolderNotPlaced, destination_.string(), failed.message(), aside_.string()));
    aside_.clear();  // what is complete is not thrown away
    return false;
  }
  aside_.clear();
  RemoveDisc(former);
  return true;
}

std::optional<std::uint64_t> FreeBytes(const std::string& destination) {
  fs::path folder = Target(destination);
  std::error_code failed;
  while (!fs::exists(folder, failed) && folder.has_relative_path()) {
    folder = folder.parent_path();
  }
  const fs::space_info space = fs::space(folder, failed);
  return failed ? std::nullopt : std::optional<std::uint64_t>(space.available);
}

}  // namespace quorvelant
