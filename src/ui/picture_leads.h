// At which frame the intra pictures of a film are shown.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "base/random.h"
#include "base/silent_ui.h"
#include "edit/track_viewer.h"

namespace quorvelant {

// How many pictures of a group are shown before its intra picture although they come after it: the picture's
// temporal_reference (ISO/IEC 13818-2 6.3.9). `head` begins at the sequence header; 0 where no group header
// says that the count begins there.
[[nodiscard]] std::int64_t LeadIn(ByteView head);

// Reads the leads of a track's pictures from its films, in order. A lead that reaches beyond its group is
// none, and neither is one that cannot be read.
class LeadReader {
 public:
  // The paths of this system, by the plays of the track.
  explicit LeadReader(std::vector<std::string> paths) : paths_(std::move(paths)) {}

  // Goes on for so long with the same pictures, those of a track of `frames`, 0 where that is not known.
  // Whether all are read.
  bool ReadFor(std::chrono::milliseconds time, std::vector<ViewerPicture>& pictures, std::int64_t frames);

 private:
  [[nodiscard]] std::int64_t Read(const ViewerPicture& picture);
  bool Open(std::size_t play);

  std::vector<std::string> paths_;
  std::size_t next_ = 0;
  std::size_t open_ = SIZE_MAX;  // the play whose film is open, or was tried
  std::unique_ptr<SilentUi> ui_;
  std::unique_ptr<Random> film_;  // null where it cannot be read
};

}  // namespace quorvelant
