// Where a disc is made and how it gets its name: written aside, in the destination's parent, and renamed
// when it is complete. A run that fails or is stopped leaves the destination as it was.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "base/user_interface.h"

namespace quorvelant {

class OutputFolder {
 public:
  // Judges the destination (a path of this system) and makes the folder aside. Nothing is removed yet;
  // leavings of an earlier run that ended midway are cleared. Nothing when it was refused, which is told.
  // With `force` a destination that holds nothing but disc files is taken.
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
  // Puts the complete folder in place of the destination. False when that failed, which is told.
  [[nodiscard]] bool Place(UserInterface& ui);

 private:
  OutputFolder(std::filesystem::path destination, std::filesystem::path aside);

  std::filesystem::path destination_;
  std::filesystem::path aside_;  // empty once placed or moved from
};

// Bytes free where the destination is to be; nothing where that is unknown.
[[nodiscard]] std::optional<std::uint64_t> FreeBytes(const std::string& destination);

}  // namespace quorvelant
