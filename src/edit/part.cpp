#include "edit/part.h"

#include <stdexcept>
#include <type_traits>
#include <utility>

namespace quorvelant {

namespace {

// Of an element of a list that grows at its end alone: `place` counts from 0.
template <class Element, class List, class At>
PartContent ExchangeElement(List& list, std::size_t place, PartContent content, At at) {
  if (place >= list.Count() && std::holds_alternative<std::monostate>(content)) {
    return {};  // nothing for nothing
  }
  if (place < list.Count() && std::holds_alternative<Element>(content)) {
    return std::exchange(at(), std::get<Element>(std::move(content)));
  }
  if (place == list.Count() && std::holds_alternative<Element>(content)) {
    list.Add(std::get<Element>(std::move(content)));
    return {};
  }
  if (place + 1 == list.Count() && std::holds_alternative<std::monostate>(content)) {
    PartContent former = std::move(at());
    list.DropLast();
    return former;
  }
  throw std::logic_error("a part of the project can only be added or taken away at the end");
}

std::size_t TextBytes(const std::string& text) {
  constexpr std::size_t Inline = 15;
  return text.size() > Inline ? text.size() + 1 : 0;
}

std::size_t Bytes(const CommandList& commands) {
  std::size_t bytes = commands.size() * sizeof(VMICommand_P);
  for (const VMICommand_P& command : commands) {
    bytes += TextBytes(command.FullCommand) + TextBytes(command.CommandHex) + TextBytes(command.To_Action) +
             TextBytes(command.Naming) + TextBytes(command.LinkNaming);
  }
  return bytes;
}

// A collection keeps a deque, whose blocks hold at least one element each, and its keys a second time.
template <class Element>
std::size_t ListBytes(const Collection<Element>& list) {
  constexpr std::size_t EmptyDeque = 576;
  constexpr std::size_t KeyNode = 64;
  return EmptyDeque + list.Count() * (sizeof(Element) + KeyNode);
}

std::size_t Bytes(const Cell_P& cell) {
  std::size_t bytes = TextBytes(cell.Key) + TextBytes(cell.TrackName) + TextBytes(cell.CellName) +
                      TextBytes(cell.SceneUsed) + cell.ButtonCommands.size() * sizeof(ButtonCommands_P);
  for (const ButtonCommands_P& entry : cell.ButtonCommands) {
    bytes += Bytes(entry.Commands);
  }
  return bytes;
}

std::size_t Bytes(const PGC_P& chain) {
  std::size_t bytes = TextBytes(chain.Key) + TextBytes(chain.PGCName) + ListBytes(chain.PG) +
                      Bytes(chain.PreCommands) + Bytes(chain.PostCommands) + Bytes(chain.CellCommands);
  for (const PG_P& program : chain.PG) {
    bytes += TextBytes(program.Key) + TextBytes(program.PGName) + ListBytes(program.Cell);
    for (const Cell_P& cell : program.Cell) {
      bytes += Bytes(cell);
    }
  }
  return bytes;
}

template <class Unit>
std::size_t UnitBytes(const Collection<Unit>& units) {
  std::size_t bytes = ListBytes(units);
  for (const Unit& unit : units) {
    bytes += TextBytes(unit.Key) + ListBytes(unit.PGC);
    for (const PGC_P& chain : unit.PGC) {
      bytes += Bytes(chain);
    }
  }
  return bytes;
}

std::size_t Bytes(const VTS_P& entry) {
  return sizeof(entry) + UnitBytes(entry.Lang) + UnitBytes(entry.Title);
}

std::size_t Bytes(const Track& track) {
  std::size_t bytes = sizeof(track);
  for (const VideoPlay& play : track.VideoPlays) {
    bytes += sizeof(play) + TextBytes(play.File);
  }
  for (const AudioStream& stream : track.AudioStreams) {
    bytes += sizeof(stream);
    for (const AudioPlay& play : stream.AudioPlays) {
      bytes += sizeof(play) + TextBytes(play.File);
    }
  }
  for (const SubtitleStream& stream : track.SubStreams) {
    bytes += sizeof(stream);
    for (const SubPicturePlay& play : stream.SubPlays) {
      bytes += sizeof(play) + TextBytes(play.File);
    }
  }
  for (const HighlightPlay& play : track.HighlightPlays) {
    bytes += sizeof(play) + play.Buttons.size() * sizeof(HighlightButton);
  }
  for (const Scene& scene : track.Scenes) {
    bytes += sizeof(scene) + TextBytes(scene.Name);
  }
  return bytes;
}

std::size_t Bytes(const Collection<Palette_P>& palettes) {
  return ListBytes(palettes);
}

std::size_t Bytes(const std::string& text) {
  return sizeof(std::string) + TextBytes(text);
}

std::size_t Bytes(const std::monostate& /*nothing*/) {
  return 0;
}

}  // namespace

std::vector<std::size_t> EntriesOf(const PartImages& images) {
  std::vector<std::size_t> entries;
  for (const auto& [part, content] : images) {
    if (part.Kind == PartKind::Entry || part.Kind == PartKind::FirstPlay) {
      entries.push_back(part.Number);
    }
  }
  return entries;
}

std::vector<Part> PartsOf(const PartImages& images) {
  std::vector<Part> parts;
  parts.reserve(images.size());
  for (const auto& [part, content] : images) {
    parts.push_back(part);
  }
  return parts;
}

PartContent ContentOf(const Project& project, const Part& part) {
  switch (part.Kind) {
    case PartKind::Track:
      return part.Number < project.Tracks.Count() ? PartContent(project.Tracks[part.Number]) : PartContent();
    case PartKind::Entry: {
      const VTS_P* entry = project.Disc.Item(part.Number);
      return entry != nullptr ? PartContent(*entry) : PartContent();
    }
    case PartKind::FirstPlay:
      return project.FirstPlay;
    case PartKind::Palettes:
      return project.Palettes;
    case PartKind::Destination:
      return project.DestinationFolder;
  }
  return {};
}

bool Holds(const Project& project, const Part& part, const PartContent& content) {
  const auto is = [&content](const auto& value) {
    const auto* held = std::get_if<std::decay_t<decltype(value)>>(&content);
    return held != nullptr && *held == value;
  };
  switch (part.Kind) {
    case PartKind::Track:
      return part.Number < project.Tracks.Count() ? is(project.Tracks[part.Number]) : is(std::monostate());
    case PartKind::Entry: {
      const VTS_P* entry = project.Disc.Item(part.Number);
      return entry != nullptr ? is(*entry) : is(std::monostate());
    }
    case PartKind::FirstPlay:
      return is(project.FirstPlay);
    case PartKind::Palettes:
      return is(project.Palettes);
    case PartKind::Destination:
      return is(project.DestinationFolder);
  }
  return false;
}

PartContent Exchange(Project& project, const Part& part, PartContent content) {
  switch (part.Kind) {
    case PartKind::Track:
      return ExchangeElement<Track>(project.Tracks, part.Number, std::move(content),
                                    [&]() -> Track& { return project.Tracks[part.Number]; });
    case PartKind::Entry:
      return ExchangeElement<VTS_P>(project.Disc, part.Number - 1, std::move(content),
                                    [&]() -> VTS_P& { return *project.Disc.Item(part.Number); });
    case PartKind::FirstPlay:
      return std::exchange(project.FirstPlay, std::get<PGC_P>(std::move(content)));
    case PartKind::Palettes:
      return std::exchange(project.Palettes, std::get<Collection<Palette_P>>(std::move(content)));
    case PartKind::Destination:
      return std::exchange(project.DestinationFolder, std::get<std::string>(std::move(content)));
  }
  return {};
}

std::size_t BytesOf(const PartContent& content) {
  return std::visit([](const auto& value) { return Bytes(value); }, content);
}

}  // namespace quorvelant
