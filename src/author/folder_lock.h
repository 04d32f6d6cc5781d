// One run at a time makes a disc in a folder.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "base/user_interface.h"

namespace quorvelant {

// Holds a destination for one run, by a lock of the system on a file beside it (".VIDEO_TS.lock"), or on the
// folder itself where nothing can be made beside it. The file tells the process and the folder that it works
// in; a run that was killed loses the lock and leaves the file, so that the next run knows exactly what is
// left over and touches nothing else. Where the file system knows no locks (some of networks), there is none.
class FolderLock {
 public:
  // Clears what a run that was killed has left, which is told. Nothing when another run holds the destination
  // or no lock can be made, which is told. The destination's parent is there.
  [[nodiscard]] static std::optional<FolderLock> Take(const std::filesystem::path& destination,
                                                      UserInterface& ui);

  FolderLock(FolderLock&& other) noexcept;
  FolderLock& operator=(FolderLock&&) = delete;
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  // Removes the file.
  ~FolderLock();

  // Makes a new folder beside the destination, in a name of this run that the lock's file tells; its path, or
  // nothing, with the reason in `failed`.
  [[nodiscard]] std::optional<std::filesystem::path> MakeFolder(std::error_code& failed);
  // Leaves the folder that was made to the user: it is no leftover.
  void Forget() const;

  // Where the disc before stands for a moment while that folder takes its place.
  [[nodiscard]] static std::filesystem::path FormerOf(const std::filesystem::path& made);

 private:
  FolderLock(std::filesystem::path destination, int handle, bool ownFile);
  void ClearLeftover(UserInterface& ui) const;
  void Write(const std::string& folderName) const;

  std::filesystem::path destination_;
  int handle_;    // -1 when moved from
  bool ownFile_;  // the lock is on a file of its own
};

}  // namespace quorvelant
