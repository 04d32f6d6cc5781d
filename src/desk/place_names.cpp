#include "desk/place_names.h"

#include <fmt/format.h>

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace quorvelant {

namespace {

// Of the track whose key that is, or part of whose key; empty for other places.
std::string_view TrackNameOf(std::string_view key, const Project& project) {
  constexpr std::string_view Start = "Track.";
  if (!key.starts_with(Start)) {
    return {};
  }
  key.remove_prefix(Start.size());
  std::size_t index = 0;
  const auto [end, fault] = std::from_chars(key.data(), key.data() + key.size(), index);
  const bool ends = end == key.data() + key.size() || *end == '.';
  return fault == std::errc() && ends && index < project.Tracks.Count()
             ? std::string_view(project.Tracks[index].TrackName)
             : std::string_view();
}

}  // namespace

void PlaceNames::Tell(const Message& message) {
  const std::string_view place = message.Place;
  const std::string_view key = place.substr(0, place.find(' '));
  const std::string_view name = TrackNameOf(key, *project_);
  // Many texts name the track themselves.
  if (name.empty() || message.Text.find(fmt::format("\"{}\"", name)) != std::string::npos) {
    PassingUi::Tell(message);
    return;
  }
  Message named = message;
  named.Place = fmt::format("{} ({}){}", key, name, place.substr(key.size()));
  PassingUi::Tell(named);
}

}  // namespace quorvelant
