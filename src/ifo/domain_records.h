// What one domain of the disc became: its stream maps and what the multiplexer left behind. The tables
// are pure functions of the model and these.
#pragma once

#include <bitset>
#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/rules.h"
#include "disc/vob_records.h"
#include "model/project.h"
#include "model/stream_maps.h"
#include "model/walk.h"

namespace quorvelant {

// The stream numbers that one VOB carries.
struct CarriedStreams {
  std::bitset<AudioStreamCount> Audio;
  std::bitset<SubStreamCount> Subs;
};

// A cell of the model as it was written.
struct WrittenCell {
  const VobRecord* Vob = nullptr;
  const CellRecord* Cell = nullptr;
};

class DomainRecords {
 public:
  AudioMap Audio;
  SubMap Subs;
  VobSetRecords Vobs;

  // To be called for each VOB once it is written: it can be found by its track from then on.
  void AddVob(std::size_t vobOrdinal, CarriedStreams carried);

  // Where the scene of a cell was written; nothing for a scene that opened no cell.
  std::optional<WrittenCell> Find(const Cell_P& cell) const;
  // The streams of a cell's track; none where it was not written.
  CarriedStreams StreamsOf(const Cell_P& cell) const;

 private:
  std::unordered_map<int, std::size_t> vobOfTrack_;
  std::vector<CarriedStreams> carried_;  // by VOB ordinal
};

// The two domains of one entry of the disc, for the tables of its IFO.
struct EntryRecords {
  const Project& Disc;
  const VTS_P& Entry;
  const DomainRecords& Menu;
  const DomainRecords& Title;
  quorvelant::Rules Rules;
  bool Ntsc = false;  // the project's standard, which times count in

  std::string_view Standard() const { return Ntsc ? "NTSC" : "PAL"; }
};

// Frames that a cell counts for. Traditionally one of less than two frames counts for 10 (PAL) or 15 (NTSC).
int FramesOf(const CellRecord& cell, bool ntsc, const Rules& rules);

// Frames of all cells of a title that were written.
std::int64_t FramesOf(const Title_P& title, const EntryRecords& records);

// A title plays in sequence: it has one PGC, and this neither shuffles nor picks at random.
bool IsSequential(const Title_P& title);

}  // namespace quorvelant
