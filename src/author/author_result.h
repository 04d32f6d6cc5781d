// What a run of authoring came to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "check/findings.h"
#include "iso/make_image.h"

namespace quorvelant {

enum class AuthorOutcome {
  Done,
  Failed,    // told
  Stopped,   // by the user's request
  NoTitles,  // no title track was there to write; told
};

// One title of the finished disc.
struct TitleFigures {
  int TitleSet = 0;
  int Title = 0;  // within the set
  std::string Name;
  std::size_t Chapters = 0;
  std::int64_t Frames = 0;
};

struct AuthorResult {
  AuthorOutcome Outcome = AuthorOutcome::Failed;
  bool Begun = false;             // the plan held, and so did what it needs
  quorvelant::Findings Findings;  // all that was told, in order
  bool Ntsc = false;              // what the titles' frames count in
  std::vector<TitleFigures> Titles;
  std::uint64_t Bytes = 0;  // of all files, BUP included
  ImageResult Image;        // where one was ordered
  int Underflows = 0;       // of the video buffer
  int BufferFaults = 0;
};

}  // namespace quorvelant
