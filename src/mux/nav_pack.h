// Navigation packs: PCI and DSI of one VOBU as a pure function of the records of its track.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "base/rules.h"
#include "disc/clock.h"
#include "disc/video_standard.h"
#include "disc/vob_records.h"
#include "mux/mux_track.h"
#include "mux/search_tables.h"

namespace quorvelant {

// Everything the packs of one VOB are made from. The records are complete: every address is known.
struct NavSource {
  std::span<const VobuRecord> Records;
  const MuxInput& Input;
  quorvelant::Rules Rules;
  std::int64_t VobStartPts = VideoStartPts;
  std::int64_t VobEndPts = 0;  // the end of the last picture
};

// The mark that opened the cell of a VOBU; null in a track without marks.
const MuxMark* MarkOf(const NavSource& source, const VobuRecord& record);

// Fills the sector of record `index`; `search` is made of the same records.
void BuildNavPack(const NavSource& source, const SearchTables& search, std::size_t index, ByteSpan sector);

}  // namespace quorvelant
