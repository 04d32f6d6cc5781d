// Folders that hold a disc, as this program makes, moves and clears them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quorvelant {

// The folder that a destination means: absolute, without "/" at its end, links followed.
[[nodiscard]] std::filesystem::path DestinationPath(const std::string& destination);

// A hidden neighbour of the destination: ".VIDEO_TS.lock" for the suffix ".lock".
[[nodiscard]] std::filesystem::path Neighbour(const std::filesystem::path& destination,
                                              std::string_view suffix);

// A folder and no link to one.
[[nodiscard]] bool IsOwnFolder(const std::filesystem::path& path);

// Removes the disc files of a folder, and the folder when it is empty then. A link is not followed.
void RemoveDisc(const std::filesystem::path& folder);

// Returns when the files of the folder, and their names, are on the disk. Raises FileError.
void SyncFolder(const std::filesystem::path& folder);
// The same for the names alone.
void SyncNames(const std::filesystem::path& folder);

// Puts the folder `made` in place of `target`, in one step, and what stood there in place of `made`; `former`
// takes it meanwhile where the system cannot exchange two folders. Gives the error of what was refused, which
// leaves both as they were.
[[nodiscard]] std::error_code ExchangeFolders(const std::filesystem::path& made,
                                              const std::filesystem::path& target,
                                              const std::filesystem::path& former);

}  // namespace quorvelant
