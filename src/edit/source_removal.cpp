#include "edit/source_removal.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "edit/button_commands.h"
#include "edit/change.h"
#include "edit/live_sources.h"
#include "edit/messages.h"
#include "edit/removal.h"
#include "edit/shown_sources.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

using Node = SourceKey::Node;
std::size_t FilesOf(const Track& track) {
  return static_cast<std::size_t>(std::ranges::count_if(
      Live(track.VideoPlays), [](const VideoPlay* play) { return !play->File.empty(); }));
}

std::optional<Message> RefuseSourceRemoval(const Project& project, const SourceKey& source,
                                           std::string_view key) {
  const Track& track = project.Tracks[source.Track];
  if (source.Kind == Node::Scene && source.Number == 1) {
    return MessageOf(message::FirstSceneStays, key);
  }
  const bool isLastFile = source.Kind == Node::VideoPlay &&
                          !track.VideoPlays[source.Number - 1].File.empty() && FilesOf(track) == 1;
  return isLastFile && track.UsedInStructure
             ? std::optional(MessageOf(message::LastFileStays, key, track.TrackName))
             : std::nullopt;
}

ShownSource ShowingOf(const Project& project, const SourceKey& source) {
  if (source.Kind == Node::Track) {
    return CellsShowing(project, source.Track, {});
  }
  if (source.Kind == Node::Scene) {
    return CellsShowing(project, source.Track, {&project.Tracks[source.Track].Scenes[source.Number - 1], 1});
  }
  return {};
}

void TakeAwaySource(Track& track, const SourceKey& source) {
  const std::size_t place = source.Number - 1;
  switch (source.Kind) {
    case Node::Track:
      track.Removed = true;
      break;
    case Node::VideoPlay:
      track.VideoPlays[place].Removed = true;
      track.VideoFrames = 0;  // not known until it is analysed again
      break;
    case Node::AudioStream:
      track.AudioStreams[place].Removed = true;
      break;
    case Node::AudioPlay:
      track.AudioStreams[place].AudioPlays[source.Play - 1].Removed = true;
      break;
    case Node::SubStream:
      track.SubStreams[place].Removed = true;
      break;
    case Node::Scene:
      track.Scenes.erase(track.Scenes.begin() + static_cast<std::ptrdiff_t>(place));
      break;
    default:
      break;
  }
}

std::optional<SourceKey> Removable(const Project& project, std::string_view key) {
  for (const Node kind :
       {Node::Track, Node::VideoPlay, Node::AudioStream, Node::AudioPlay, Node::SubStream, Node::Scene}) {
    if (const auto source = LiveSource(project, key, kind)) {
      return source;
    }
  }
  return std::nullopt;
}

// What questions call it.
std::string NameOf(const Project& project, const SourceKey& source, std::string_view key) {
  const Track& track = project.Tracks[source.Track];
  switch (source.Kind) {
    case Node::Track:
      return track.TrackName;
    case Node::Scene:
      return track.Scenes[source.Number - 1].Name;
    case Node::AudioStream:
      return track.AudioStreams[source.Number - 1].StreamName;
    case Node::SubStream:
      return track.SubStreams[source.Number - 1].StreamName;
    default:
      return std::string(key);
  }
}

}  // namespace

Outcome RemoveSource(EditSession& session, std::string_view key, Consent consent) {
  const Project& work = session.Work();
  const auto source = Removable(work, key);
  if (!source) {
    return Outcome::Refused(MessageOf(message::NoSuchElement, key, "track, play, stream or scene", key));
  }
  if (auto refusal = RefuseSourceRemoval(work, *source, key)) {
    return Outcome::Refused(std::move(*refusal));
  }
  const std::string name = NameOf(work, *source, key);
  const ShownSource showing = ShowingOf(work, *source);
  if (consent == Consent::None) {
    return Outcome::Asks(showing.CellCount == 0
                             ? MessageOf(message::AskRemoval, key, name)
                             : MessageOf(message::AskSourceRemoval, key, name, showing.CellCount));
  }
  Change change(session, "Remove " + name);
  const ButtonCommandCarrier buttons(work, source->Track);
  for (const std::string& shown : showing.Keys) {
    TakeAway(change, session, shown);
  }
  TakeAwaySource(change.EditTrack(source->Track), *source);
  if (source->Kind == Node::Scene) {
    buttons.Carry(change);
  }
  return change.Commit(std::string(key));
}

}  // namespace quorvelant
