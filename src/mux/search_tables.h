// VOBU_SRI: where a player jumps from a VOBU when it scans forwards or backwards.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "disc/clock.h"
#include "disc/video_standard.h"
#include "disc/vob_records.h"

namespace quorvelant {

// The search rows of all VOBUs of a track, whose records must outlive it. A jump never leaves the cell:
// players take the end of a cell from NEXT_VOBU, and one that led on would play the following cell twice.
class SearchTables {
 public:
  SearchTables(std::span<const VobuRecord> records, const FrameTiming& timing);

  // Fills the rows of the navigation pack of record `index`.
  void Fill(std::size_t index, ByteSpan sector) const;

 private:
  std::span<const VobuRecord> records_;
  const FrameTiming* timing_;
  // The VOBUs with video, in order. A slide that is held for hours has one in thousands, and each of those
  // asks for it.
  std::vector<std::size_t> withVideo_;
};

}  // namespace quorvelant
