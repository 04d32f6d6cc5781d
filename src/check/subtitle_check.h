// What the subtitles of a track would do wrong on the disc, found before its first sector is written.
#pragma once

#include <cstddef>
#include <string>

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "model/tracks.h"
#include "picture/picture_loader.h"
#include "subpicture/coded_bitmaps.h"

namespace quorvelant {

// What the check needs besides the track.
struct SubtitleChecks {
  quorvelant::Rules Rules;
  UserInterface& Ui;
  PictureLoader* Pictures = nullptr;  // without one no bitmap is looked at
  std::string SourceFolder = {};      // relative bitmap paths count from here
  bool MuxedOnly = false;             // streams that go on the disc, by their marks
  CodedBitmaps* Coded = nullptr;      // takes what was coded, for the multiplexer
};

// Checks times, colours and bitmaps of the track of that index; every bitmap is loaded and coded. A finding's
// place names the track, stream and entry. Ends early when the user asks to stop.
Findings CheckSubtitles(const Track& track, std::size_t trackIndex, const SubtitleChecks& checks);

}  // namespace quorvelant
