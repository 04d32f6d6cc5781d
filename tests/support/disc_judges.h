// Programs that judge a finished folder.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvelant {

// The lines of what a shell command prints on both its outputs.
std::vector<std::string> LinesOf(const std::string& command);

// The ERROR lines of the folder's checker. A test of its own asks it, and is skipped where it is missing.
std::vector<std::string> CheckerErrors(const std::string& folder);
bool HasChecker();
inline constexpr std::string_view CheckerMissing =
    "dvdcheck is not at hand: no dvdcheck/dvdcheck.py in ../shared";

// What ffmpeg says when it decodes these VOB files, taken as one, to their end.
struct Decoded {
  std::vector<std::string> Complaints;
  int Pictures = 0;
};
Decoded Decode(const std::vector<std::string>& files);

// The title VOB files of a set, in order.
std::vector<std::string> TitleVobs(const std::string& folder, int set);

}  // namespace quorvelant
