// Programs that judge a finished folder.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quorvelant {

// The lines of what a shell command prints on both its outputs.
std::vector<std::string> LinesOf(const std::string& command);

// The ERROR lines of the folder's checker; nothing where it is not at hand.
std::optional<std::vector<std::string>> CheckerErrors(const std::string& folder);

// What ffmpeg says when it decodes these VOB files, taken as one, to their end.
struct Decoded {
  std::vector<std::string> Complaints;
  int Pictures = 0;
};
Decoded Decode(const std::vector<std::string>& files);

// The title VOB files of a set, in order.
std::vector<std::string> TitleVobs(const std::string& folder, int set);

}  // namespace quorvelant
