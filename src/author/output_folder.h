// Where a disc is made and how it gets its name: written aside, in the destination's parent, and renamed
// when it is complete. A run that fails or is stopped leaves the destination as it was.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "author/folder_lock.h"
#include "base/user_interface.h"

namespace quorvelant {

class OutputFolder {
 public:
  // Locks and judges the destination (a path of this system) and makes the folder aside, in a name of its
  // own. Nothing of the destination is removed yet. Nothing when it was refused, which is told. With `force`
  // a destination that holds nothing but disc files is taken.
  [[nodiscard]] static std::optional<OutputFolder> Prepare(const std::string& destination, bool force,
                                                           UserInterface& ui);
  // The judgement alone; false when it was refused, which is told.
  [[nodiscard]] static bool Judge(const std::string& destination, bool force, UserInterface& ui);

  OutputFolder(OutputFolder&& other) noexcept;
  OutputFolder& operator=(OutputFolder&&) = delete;
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;
  // Removes the folder aside unless it was placed.
  ~OutputFolder();

  // Where the files are to be written.
  std::string Path() const { return aside_.string(); }
  // Puts the complete folder in place of the destination, which is judged once more; with `sync`, everything
  // is on the disk first. False when that failed, which is told: the new disc stays where it is. Raises
  // FileError where it cannot be brought onto the disk.
  [[nodiscard]] bool Place(UserInterface& ui, bool sync = false);

 private:
  OutputFolder(std::filesystem::path destination, std::filesystem::path aside, bool force, FolderLock lock);
  bool NotPlaced(UserInterface& ui, const std::string& reason);

  std::filesystem::path destination_;
  std::filesystem::path aside_;  // empty once placed or moved from
  bool force_;
  FolderLock lock_;
};

// Bytes free where the destination is to be; nothing where that is unknown.
[[nodiscard]] std::optional<std::uint64_t> FreeBytes(const std::string& destination);

// Whether both paths would lie on one file system.
[[nodiscard]] bool SharesDisk(const std::string& one, const std::string& other);

}  // namespace quorvelant
