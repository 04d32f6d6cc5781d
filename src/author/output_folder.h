// Where a disc is made and how it gets its name: written aside, in the destination's parent, and renamed
// when it is complete. A run that fails or is stopped leaves the destination as it was.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/user_interface.h"

namespace quorvelant {

inline constexpr std::string_view FolderErrorTitle = "Output Folder";
inline constexpr std::string_view DestinationIsNoFolder = "The destination is not a folder";
inline constexpr std::string_view ForeignFile = R"(The destination holds "{}", which is not part of a disc)";
inline constexpr std::string_view HoldsDisc = "The destination holds a disc already; --force replaces it";
inline constexpr std::string_view IsMountPoint = "The destination is a mount point; name a folder in it";
inline constexpr std::string_view FolderNotMade = "The folder for the new disc cannot be made: {}";
inline constexpr std::string_view FolderNotPlaced =
    "The disc is complete, but its folder cannot be renamed: {}. It stays as {}";

// A file name that a disc folder may hold: VIDEO_TS or VTS_nn_n with IFO, BUP or VOB, in any case.
bool IsDiscFileName(std::string_view name);

class OutputFolder {
 public:
  // Judges the destination (a path of this system) and makes the folder aside. Nothing is removed yet;
  // leavings of an earlier run that ended midway are cleared. Nothing when it was refused, which is told.
  // With `force` a destination that holds nothing but disc files is taken.
  static std::optional<OutputFolder> Prepare(const std::string& destination, bool force, UserInterface& ui);
  // The judgement alone; false when it was refused, which is told.
  static bool Judge(const std::string& destination, bool force, UserInterface& ui);

  OutputFolder(OutputFolder&& other) noexcept;
  OutputFolder& operator=(OutputFolder&&) = delete;
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;
  // Removes the folder aside unless it was placed.
  ~OutputFolder();

  // Where the files are to be written.
  std::string Path() const { return aside_.string(); }
  // Puts the complete folder in place of the destination. False when that failed, which is told.
  bool Place(UserInterface& ui);

 private:
  OutputFolder(std::filesystem::path destination, std::filesystem::path aside);

  std::filesystem::path destination_;
  std::filesystem::path aside_;  // empty once placed or moved from
};

// Bytes free where the destination is to be; nothing where that is unknown.
std::optional<std::uint64_t> FreeBytes(const std::string& destination);

}  // namespace quorvelant
