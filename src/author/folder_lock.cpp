#include "author/folder_lock.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include "author/disc_folder.h"
#include "author/messages.h"
#include "base/fresh_name.h"
#include "base/text.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view LockSuffix = ".lock";
constexpr std::string_view MakingSuffix = ".making.";
constexpr std::string_view FormerSuffix = ".former.";
// The file: this word and the process's number on a line, the folder's name on the next.
constexpr std::string_view RecordHead = "quorvelant ";
constexpr std::size_t MostRecordBytes = 1024;
constexpr int MostTries = 100;

std::string Record(int handle) {
  std::array<char, MostRecordBytes> text{};
  const ssize_t got = pread(handle, text.data(), text.size(), 0);
  return {text.data(), got > 0 ? static_cast<std::size_t>(got) : 0};
}

std::string LineOf(const std::string& record, std::size_t number) {
  const auto lines = Split(record, "\n");
  return number < lines.size() ? std::string(lines[number]) : std::string();
}

// A file that is not the lock of a run: of another kind, of other words, or with a second name, under which
// it may be anything.
bool IsForeign(int handle) {
  struct stat status {};
  if (fstat(handle, &status) != 0 || !S_ISREG(status.st_mode) || status.st_nlink > 1) {
    return true;
  }
  return status.st_size > 0 && !Record(handle).starts_with(RecordHead);
}

// Whether the name still means the open file: the run before removes its own on its way out.
bool StillNamed(int handle, const fs::path& path) {
  struct stat open {};
  struct stat named {};
  return fstat(handle, &open) == 0 && lstat(path.c_str(), &named) == 0 && open.st_ino == named.st_ino &&
         open.st_dev == named.st_dev;
}

struct Opened {
  int Handle = -1;
  bool OwnFile = true;
  std::optional<Message> Refusal = {};
};

Message BusyMessage(const fs::path& destination, int handle, bool ownFile) {
  const std::string first = ownFile ? LineOf(Record(handle), 0) : std::string();
  const std::string process =
      first.size() > RecordHead.size() ? "process " + first.substr(RecordHead.size()) : "another process";
  return MessageOf(message::DestinationBusy, destination.string(), process);
}

Opened OpenLock(const fs::path& destination, const fs::path& file) {
  Opened opened;
  opened.Handle = open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
  const int refused = errno;
  if (opened.Handle < 0 && (refused == EACCES || refused == EROFS || refused == EPERM)) {
    opened.Handle = open(destination.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    opened.OwnFile = false;
  }
  if (opened.Handle < 0) {
    const std::string reason = std::generic_category().message(refused);
    opened.Refusal = refused == ELOOP || refused == EISDIR || refused == ENXIO
                         ? MessageOf(message::LockIsForeign, file.string())
                         : MessageOf(message::FolderNotLocked, destination.string(), reason);
  } else if (opened.OwnFile && IsForeign(opened.Handle)) {
    opened.Refusal = MessageOf(message::LockIsForeign, file.string());
  } else if (flock(opened.Handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    opened.Refusal = BusyMessage(destination, opened.Handle, opened.OwnFile);
  }
  return opened;
}

}  // namespace

std::optional<FolderLock> FolderLock::Take(const fs::path& destination, UserInterface& ui) {
  const fs::path file = Neighbour(destination, LockSuffix);
  for (int left = MostTries;; --left) {
    const Opened opened = OpenLock(destination, file);
    const bool current = !opened.OwnFile || left == 0 || opened.Handle < 0 || StillNamed(opened.Handle, file);
    if (current && !opened.Refusal) {
      FolderLock lock(destination, opened.Handle, opened.OwnFile);
      lock.ClearLeftover(ui);
      lock.Write({});
      return lock;
    }
    if (opened.Handle >= 0) {
      close(opened.Handle);
    }
    if (current) {
      ui.Tell(*opened.Refusal);
      return std::nullopt;
    }
  }
}

FolderLock::FolderLock(fs::path destination, int handle, bool ownFile)
    : destination_(std::move(destination)), handle_(handle), ownFile_(ownFile) {}

FolderLock::FolderLock(FolderLock&& other) noexcept
    : destination_(std::move(other.destination_)),
      handle_(std::exchange(other.handle_, -1)),
      ownFile_(other.ownFile_) {}

FolderLock::~FolderLock() {
  if (handle_ < 0) {
    return;
  }
  if (ownFile_) {
    unlink(Neighbour(destination_, LockSuffix).c_str());  // while the lock is held: nobody else's
  }
  close(handle_);
}

void FolderLock::Write(const std::string& folderName) const {
  if (!ownFile_) {
    return;
  }
  const std::string text = fmt::format("{}{}\n{}\n", RecordHead, getpid(), folderName);
  // Without it a killed run's leftover is not found again, and nothing else is lost.
  if (pwrite(handle_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size())) {
    (void)ftruncate(handle_, static_cast<off_t>(text.size()));
  }
}

fs::path FolderLock::FormerOf(const fs::path& made) {
  const std::string name = made.filename().string();
  const std::size_t at = name.rfind(MakingSuffix);
  return made.parent_path() /
         (name.substr(0, at) + std::string(FormerSuffix) + name.substr(at + MakingSuffix.size()));
}

// The former disc first: a run that was killed between two renames has taken it away and put nothing there.
void FolderLock::ClearLeftover(UserInterface& ui) const {
  const std::string name = ownFile_ ? LineOf(Record(handle_), 1) : std::string();
  const fs::path making = Neighbour(destination_, MakingSuffix);
  if (!IsFreshName(name, making.filename().string())) {
    return;
  }
  const fs::path made = destination_.parent_path() / name;
  const fs::path former = FormerOf(made);
  std::error_code failed;
  if (IsOwnFolder(former) && !fs::exists(fs::symlink_status(destination_, failed))) {
    fs::rename(former, destination_, failed);
    if (!failed) {
      ui.Tell(MessageOf(message::FormerRestored, destination_.string()));
    }
  }
  for (const fs::path& left : {made, former}) {
    if (IsOwnFolder(left)) {
      RemoveDisc(left);
      ui.Tell(MessageOf(IsOwnFolder(left) ? message::LeftoverStays : message::LeftoverRemoved,
                        destination_.string(), left.string()));
    }
  }
}

std::optional<fs::path> FolderLock::MakeFolder(std::error_code& failed) {
  const fs::path stem = Neighbour(destination_, MakingSuffix);
  for (int left = MostTries; left > 0; --left) {
    const fs::path made = FreshName(stem.string());
    Write(made.filename().string());
    if (mkdir(made.c_str(), ACCESSPERMS) == 0) {
      return made;
    }
    failed = {errno, std::generic_category()};
    if (errno != EEXIST) {
      break;
    }
  }
  Write({});
  return std::nullopt;
}

void FolderLock::Forget() const {
  Write({});
}

}  // namespace quorvelant
