// What the subtitles of a track would do wrong on the disc, found before its first sector is written.
#pragma once

#include <cstddef>
#include <string>

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "check/source_judge.h"
#include "model/tracks.h"
#include "picture/picture_loader.h"
#include "subpicture/coded_bitmaps.h"

namespace quorvelant {

// What the check needs besides the track.
struct SubtitleChecks {
  quorvelant::Rules Rules;
  SourceJudge& Judge;
  UserInterface& Ui;
  std::string SourceFolder = {};      // relative bitmap paths count from here
  PictureLoader* Pictures = nullptr;  // loads every bitmap to code it; without it heads alone are looked at
  CodedBitmaps* Coded = nullptr;      // takes what was coded, for the multiplexer
};

// Checks times, colours and bitmaps of a stream of the track of that index. A finding's place is the stream's
// key and the number of the entry. Ends early when the user asks to stop.
Findings CheckSubtitles(const Track& track, std::size_t trackIndex, std::size_t streamIndex,
                        const SubtitleChecks& checks);

}  // namespace quorvelant
