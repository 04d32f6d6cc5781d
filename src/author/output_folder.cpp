#include "author/output_folder.h"

#include <sys/stat.h>

#include <system_error>
#include <utility>

#include "author/disc_folder.h"
#include "author/messages.h"
#include "disc/disc_files.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

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

// What is there already of the way to the destination.
fs::path NearestFolder(const std::string& destination) {
  fs::path folder = DestinationPath(destination);
  std::error_code failed;
  while (!fs::exists(folder, failed) && folder.has_relative_path()) {
    folder = folder.parent_path();
  }
  return folder;
}

}  // namespace

bool OutputFolder::Judge(const std::string& destination, bool force, UserInterface& ui) {
  return Accept(DestinationPath(destination), force, ui);
}

// Judged before the lock too, so that nothing is made beside a destination that is refused anyway.
std::optional<OutputFolder> OutputFolder::Prepare(const std::string& destination, bool force,
                                                  UserInterface& ui) {
  const fs::path target = DestinationPath(destination);
  if (!Accept(target, force, ui)) {
    return std::nullopt;
  }
  std::error_code failed;
  fs::create_directories(target.parent_path(), failed);
  if (failed) {
    ui.Tell(MessageOf(message::FolderNotMade, target.string(), failed.message()));
    return std::nullopt;
  }
  auto lock = FolderLock::Take(target, ui);
  if (!lock || !Accept(target, force, ui)) {
    return std::nullopt;
  }
  const auto aside = lock->MakeFolder(failed);
  if (!aside) {
    ui.Tell(MessageOf(message::FolderNotMade, target.string(), failed.message()));
    return std::nullopt;
  }
  return OutputFolder(target, *aside, force, std::move(*lock));
}

OutputFolder::OutputFolder(fs::path destination, fs::path aside, bool force, FolderLock lock)
    : destination_(std::move(destination)), aside_(std::move(aside)), force_(force), lock_(std::move(lock)) {}

OutputFolder::OutputFolder(OutputFolder&& other) noexcept
    : destination_(std::move(other.destination_)),
      aside_(std::exchange(other.aside_, {})),
      force_(other.force_),
      lock_(std::move(other.lock_)) {}

OutputFolder::~OutputFolder() {
  if (!aside_.empty()) {
    RemoveDisc(aside_);
  }
}

// What is complete is not thrown away.
bool OutputFolder::NotPlaced(UserInterface& ui, const std::string& reason) {
  ui.Tell(MessageOf(message::FolderNotPlaced, destination_.string(), reason, aside_.string()));
  aside_.clear();
  lock_.Forget();
  return false;
}

bool OutputFolder::Place(UserInterface& ui, bool sync) {
  if (sync) {
    SyncFolder(aside_);
  }
  if (const auto refusal = WhyRefused(destination_, force_)) {
    return NotPlaced(ui, refusal->Text);
  }
  std::error_code failed;
  const bool replaces = fs::exists(destination_, failed);
  if (replaces) {
    failed = ExchangeFolders(aside_, destination_, FolderLock::FormerOf(aside_));
  } else {
    fs::rename(aside_, destination_, failed);
  }
  if (failed) {
    return NotPlaced(ui, failed.message());
  }
  const fs::path former = std::exchange(aside_, {});
  if (sync) {
    SyncNames(destination_.parent_path());
  }
  RemoveDisc(former);
  return true;
}

std::optional<std::uint64_t> FreeBytes(const std::string& destination) {
  std::error_code failed;
  const fs::space_info space = fs::space(NearestFolder(destination), failed);
  return failed ? std::nullopt : std::optional<std::uint64_t>(space.available);
}

bool SharesDisk(const std::string& one, const std::string& other) {
  struct stat first = {};
  struct stat second = {};
  return stat(NearestFolder(one).c_str(), &first) == 0 && stat(NearestFolder(other).c_str(), &second) == 0 &&
         first.st_dev == second.st_dev;
}

}  // namespace quorvelant
