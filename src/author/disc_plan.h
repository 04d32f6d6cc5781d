// A disc before its first sector is written: which tracks each domain takes, with which streams, and what
// stands in the way.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "model/project.h"
#include "model/stream_maps.h"
#include "mux/mux_track.h"
#include "picture/picture_loader.h"
#include "subpicture/coded_bitmaps.h"

namespace quorvelant {

// One domain of one entry, its tracks in the order of writing.
struct DomainPlan {
  const VTS_P* Entry = nullptr;
  quorvelant::Domain Domain = Domain::Menu;
  TrackList List;
  AudioMap Audio;
  SubMap Subs;
  std::vector<MuxInput> Inputs;  // one a row of the list
};

struct SetPlan {
  int EntryNumber = 0;  // among live ones, as the log names it
  DomainPlan Menu;
  DomainPlan Title;
};

// What a track's files take in one domain.
struct TrackSize {
  std::string Name;
  std::uint64_t Bytes = 0;
};

// The inputs point into `Sources`: a plan can be moved and never copied. The project must outlive it.
struct DiscPlan {
  DiscPlan() = default;
  DiscPlan(DiscPlan&&) = default;
  DiscPlan& operator=(DiscPlan&&) = default;
  DiscPlan(const DiscPlan&) = delete;
  DiscPlan& operator=(const DiscPlan&) = delete;
  ~DiscPlan() = default;

  const Project* Disc = nullptr;
  quorvelant::Rules Rules;
  bool Ntsc = false;
  Tracks Sources;                // the project's tracks with the marks of the stream maps
  std::vector<SetPlan> Sets;     // live title sets: number 1 first
  SetPlan Manager;               // its menu alone
  std::uint64_t VideoBytes = 0;  // of all source files, a track counted once a domain
  std::uint64_t AudioBytes = 0;
  std::vector<TrackSize> TrackSizes;
  std::uint64_t PartPacks = 0;    // about so many packs are not full
  quorvelant::Findings Findings;  // errors hinder, warnings do not
  CodedBitmaps Coded;             // the bitmaps of subtitles, from the checks

  bool HasTitles() const;
  bool HasErrors() const { return quorvelant::HasErrors(Findings); }
  // About what the finished folder takes.
  std::uint64_t NeededBytes() const;
  // What its full packs alone take: no less.
  std::uint64_t LeastBytes() const;
};

// Builds the stream maps of every domain and looks for every source file. With `pictures`, every bitmap
// of the tracks' stills and subtitles is loaded, and subtitles are coded, to see that they can be.
[[nodiscard]] DiscPlan PlanDisc(const Project& disc, const Rules& rules, UserInterface& ui,
                                PictureLoader* pictures = nullptr);

}  // namespace quorvelant
