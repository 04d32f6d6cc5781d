#include "author/disc_folder.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "base/disk.h"
#include "disc/disc_files.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view SyncLine = "Error writing '{}'.";

void Sync(const fs::path& path, int flags) {
  const int handle = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | flags);
  const bool synced = handle >= 0 && fsync(handle) == 0;
  // A file system that cannot sync a folder says EINVAL: it has no more to promise.
  const int code = synced || errno == EINVAL ? 0 : errno;
  if (handle >= 0) {
    close(handle);
  }
  if (code != 0) {
    throw FileError(FileError::UnknownNumber, fmt::format(SyncLine, path.string()), code);
  }
}

bool CannotExchange(int code) {
  return code == ENOSYS || code == EINVAL || code == ENOTSUP;
}

}  // namespace

fs::path DestinationPath(const std::string& destination) {
  std::error_code failed;
  fs::path path = fs::absolute(destination, failed).lexically_normal();
  if (!path.has_filename()) {
    path = path.parent_path();
  }
  const fs::path real = fs::weakly_canonical(path, failed);
  return failed ? path : real;
}

fs::path Neighbour(const fs::path& destination, std::string_view suffix) {
  fs::path name = ".";
  name += destination.filename();
  name += suffix;
  return destination.parent_path() / name;
}

bool IsOwnFolder(const fs::path& path) {
  std::error_code failed;
  return fs::is_directory(fs::symlink_status(path, failed));
}

void RemoveDisc(const fs::path& folder) {
  if (!IsOwnFolder(folder)) {
    return;
  }
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(folder, failed)) {
    std::error_code ignored;
    if (entry.is_regular_file(ignored) && IsDiscFileName(entry.path().filename().string())) {
      fs::remove(entry.path(), ignored);
    }
  }
  fs::remove(folder, failed);
}

void SyncFolder(const fs::path& folder) {
  for (const DiscFile& file : ListFiles(folder.string())) {
    Sync(folder / file.Name, O_NONBLOCK);
  }
  SyncNames(folder);
}

void SyncNames(const fs::path& folder) {
  Sync(folder, O_DIRECTORY);
}

std::error_code ExchangeFolders(const fs::path& made, const fs::path& target, const fs::path& former) {
  if (renameat2(AT_FDCWD, made.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0) {
    return {};
  }
  if (!CannotExchange(errno)) {
    return {errno, std::generic_category()};
  }
  std::error_code failed;
  fs::rename(target, former, failed);
  if (failed) {
    return failed;
  }
  fs::rename(made, target, failed);
  std::error_code ignored;
  fs::rename(former, failed ? target : made, ignored);
  return failed;
}

}  // namespace quorvelant
