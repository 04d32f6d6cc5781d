#include "edit/live_sources.h"

#include "model/walk.h"

namespace quorvelant {

namespace {

template <class List>
bool HasLive(const List& list, std::size_t number) {
  return number >= 1 && number <= list.size() && IsLive(list[number - 1]);
}

bool IsThere(const Track& track, const SourceKey& key) {
  using Node = SourceKey::Node;
  switch (key.Kind) {
    case Node::Track:
    case Node::VideoList:
    case Node::AudioList:
    case Node::SubList:
      return true;
    case Node::VideoPlay:
      return HasLive(track.VideoPlays, key.Number);
    case Node::AudioStream:
      return HasLive(track.AudioStreams, key.Number);
    case Node::AudioPlay:
      return HasLive(track.AudioStreams, key.Number) &&
             HasLive(track.AudioStreams[key.Number - 1].AudioPlays, key.Play);
    case Node::SubStream:
      return HasLive(track.SubStreams, key.Number);
    case Node::HighStream:
      return key.Number >= 1 && key.Number <= track.HighlightPlays.size();
    case Node::Scene:
      return key.Number >= 1 && key.Number <= track.Scenes.size();
  }
  return false;
}

}  // namespace

std::optional<SourceKey> LiveSource(const Project& project, std::string_view key, SourceKey::Node kind) {
  const auto parsed = ParseSourceKey(key);
  const bool isLive = parsed && parsed->Kind == kind && parsed->Track < project.Tracks.Count() &&
                      IsLive(project.Tracks[parsed->Track]) &&
                      IsThere(project.Tracks[parsed->Track], *parsed);
  return isLive ? parsed : std::nullopt;
}

}  // namespace quorvelant
