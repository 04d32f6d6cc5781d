#include "edit/track_names.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "edit/messages.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::string_view NotCarried = "\t\r\n;{}";

bool IsTaken(const Project& project, std::string_view name, std::size_t own) {
  return std::ranges::any_of(LiveWithIndex(project.Tracks), [&](const auto& live) {
    return live.first != own && EqualNoCase(Trim(live.second.TrackName), Trim(name));
  });
}

}  // namespace

std::string ProposedTrackName(const Project& project) {
  const std::size_t none = project.Tracks.Count();
  std::size_t number = none + 1;
  while (IsTaken(project, fmt::format("Track_{}", number), none)) {
    ++number;
  }
  return fmt::format("Track_{}", number);
}

std::optional<Message> RefuseTrackName(const Project& project, std::string_view name) {
  if (Trim(name).empty() || name.find_first_of(NotCarried) != std::string_view::npos) {
    return MessageOf(message::TrackNameUnfit, {}, name);
  }
  return IsTaken(project, name, project.Tracks.Count())
             ? std::optional(MessageOf(message::TrackNameTaken, {}, name))
             : std::nullopt;
}

std::string FreeTrackName(const Project& project, std::string_view wanted, std::size_t own) {
  std::string stem(Trim(wanted));
  std::ranges::replace_if(
      stem, [](char c) { return NotCarried.find(c) != std::string_view::npos; }, '_');
  if (stem.empty()) {
    return ProposedTrackName(project);
  }
  std::string name = stem;
  for (int number = 2; IsTaken(project, name, own); ++number) {
    name = fmt::format("{}_{}", stem, number);
  }
  return name;
}

}  // namespace quorvelant
