// One track of a domain as the multiplexer takes it.
#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "check/findings.h"
#include "check/source_judge.h"
#include "model/project.h"
#include "model/stream_maps.h"
#include "mux/mux_track.h"

namespace quorvelant {

// The domain that the track is to be written for. `Sources` are the project's tracks with the marks that
// the domain's stream maps gave them; they must outlive the input, which points into them.
struct MuxInputSource {
  const Project& Disc;
  const Tracks& Sources;
  const VTS_P& Entry;
  quorvelant::Domain Domain;
  SourceJudge& Judge;
  const quorvelant::Rules& Rules;
};

// What is learned on the way.
struct MuxInputNotes {
  quorvelant::Findings Findings;  // on the track and its streams; the check of the sources judges their files
  std::set<std::string> OnDisc;   // the keys of the track and of its streams that reach the disc
};

// Paths become paths of this system; scenes become marks with what the cells that play them say; button
// commands are dealt.
[[nodiscard]] MuxInput MakeMuxInput(const MuxInputSource& source, std::size_t trackIndex,
                                    MuxInputNotes& notes);

}  // namespace quorvelant
