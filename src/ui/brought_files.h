// Files that a user brings, from wherever, sorted to what becomes of each.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/message.h"
#include "edit/film_files.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// Where files are to go.
struct BringTarget {
  std::string Key;       // of a source; empty for none
  bool IsMeant = false;  // files were put right there; otherwise it takes what nothing else does
};

// One file, or a film with what belongs to it, with the operation that takes it in.
struct BroughtStep {
  std::function<Outcome(EditSession& session, UserInterface& ui, Consent consent)> Take;
};

struct BroughtFiles {
  std::vector<BroughtStep> Steps;
  std::vector<std::string> Videos;  // paths that the steps need an index of
  std::vector<std::string> Projects;
  std::vector<Message> Told;  // of files that nothing becomes of
};

// Opens folders: all that a track can be made of in them, at any depth, in the order of names. What is passed
// over is told.
[[nodiscard]] std::vector<std::string> FilesBelow(const std::vector<std::string>& paths,
                                                  std::vector<Message>& told);

// By the names of files and of what the project has. Videos become tracks, with the streams and chapters
// whose names begin as theirs; sound, subtitles and chapter lists without a video belong to the track whose
// video's name theirs begins with; pictures become stills, or slides of a slideshow that is the target. A
// single file goes onto the play or stream that is the target, where it is of that kind. `asHeld` gives a
// path as the script holds it.
[[nodiscard]] BroughtFiles SortBrought(const Project& project, const std::vector<std::string>& files,
                                       const BringTarget& target,
                                       const std::function<std::string(const std::string&)>& asHeld);

// The paths of a track's videos.
[[nodiscard]] std::vector<std::string> VideosOf(const Project& project, std::size_t track);

}  // namespace quorvelant
