// A finished folder as an image takes it: the files of each set, and the tables that say where they lie.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/message.h"
#include "base/user_interface.h"

namespace quorvelant {

struct TreeFile {
  std::string Name;        // as the image has it, in capitals
  std::string Path;        // where it lies now
  std::uint64_t Size = 0;  // bytes

  [[nodiscard]] std::uint32_t Sectors() const { return static_cast<std::uint32_t>(Size / SectorBytes); }
};

// The Video Manager or a title set.
struct TreeSet {
  TreeFile Ifo;
  Bytes Tables;  // what the IFO holds
  std::optional<TreeFile> MenuVob;
  std::vector<TreeFile> TitleVobs;
  TreeFile Backup;
};

struct DiscTree {
  std::vector<TreeSet> Sets;         // the Video Manager first, then title sets 1 and up
  std::vector<std::string> LeftOut;  // names in the folder that are no files of this disc
};

// The folder that is meant: itself, or the VIDEO_TS in it where it holds no VIDEO_TS.IFO.
[[nodiscard]] std::string VideoFolderOf(const std::string& folder);

// Looks for the files that the tables name, and at their sizes. What keeps the folder from being a whole disc
// is added to `faults`, each with its file for a place. Raises FileError.
[[nodiscard]] DiscTree ReadDiscTree(const std::string& folder, UserInterface& ui,
                                    std::vector<Message>& faults);

}  // namespace quorvelant
