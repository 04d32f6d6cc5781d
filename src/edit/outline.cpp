#include "edit/outline.h"

#include <unordered_set>

#include "base/rules.h"
#include "base/timecode.h"
#include "model/cls_dvd.h"
#include "model/keys.h"
#include "model/stream_maps.h"
#include "model/walk.h"
#include "script/script_tracks.h"

namespace quorvelant {

namespace {

OutlineNode Folder(std::string_view kind) {
  return {.Kind = kind, .Key = {}, .Name = {}, .Facts = {}, .Children = {}};
}

OutlineNode Node(std::string_view kind, std::string key, std::string name,
                 std::vector<OutlineFact> facts = {}) {
  return {.Kind = kind,
          .Key = std::move(key),
          .Name = std::move(name),
          .Facts = std::move(facts),
          .Children = {}};
}

std::int64_t Count(std::size_t number) {
  return static_cast<std::int64_t>(number);
}

std::string UopNames(const UopMask& uops) {
  std::string names;
  for (std::size_t i = 0; i < uops.size(); ++i) {
    if (uops[i]) {
      names.append(names.empty() ? "" : " ").append(CLsDVD::UserOP(i));
    }
  }
  return names;
}

// --- sources ---

OutlineNode AudioNode(const AudioStream& stream, std::size_t track, std::size_t number) {
  OutlineNode node = Node("audio", AudioStreamKey(track, number), stream.StreamName,
                          {{"stream", std::int64_t{stream.StreamNumber}},
                           {"format", stream.Format},
                           {"language", stream.Language},
                           {"extension", stream.Extension},
                           {"delay", std::int64_t{stream.Delay}},
                           {"kHz", std::int64_t{stream.Traits.SampleRate}},
                           {"channels", std::int64_t{stream.Traits.ChannelCount}},
                           {"bits", std::int64_t{stream.Traits.Quantisation}},
                           {"kbit/s", std::int64_t{stream.Traits.BitRate}}});
  for (std::size_t i = 0; i < stream.AudioPlays.size(); ++i) {
    node.Children.push_back(Node("file", AudioPlayKey(track, number, i + 1), stream.AudioPlays[i].File));
  }
  return node;
}

OutlineNode SubNode(const SubtitleStream& stream, std::size_t track, std::size_t number) {
  return Node("subtitles", SubStreamKey(track, number), stream.StreamName,
              {{"stream", std::int64_t{stream.StreamNumber}},
               {"language", stream.Language},
               {"extension", stream.Extension},
               {"display", stream.DisplayMode},
               {"entries", Count(stream.SubPlays.size())}});
}

OutlineNode TrackNode(const Project& project, const Track& track, std::size_t index) {
  OutlineNode node = Node("track", TrackKey(index), track.TrackName,
                          {{"type", track.TrackType},
                           {"standard", track.Standard},
                           {"size", track.Resolution},
                           {"aspect", track.Aspect},
                           {"coding", track.Coding},
                           {"display", track.DisplayMode},
                           {"frames", std::int64_t{track.VideoFrames}},
                           {"used", track.UsedInStructure}});
  for (std::size_t i = 0; i < track.VideoPlays.size(); ++i) {
    node.Children.push_back(Node("file", VideoPlayKey(index, i + 1), track.VideoPlays[i].File,
                                 {{"duration", track.VideoPlays[i].SlideDuration}}));
  }
  for (const auto& [place, stream] : LiveWithIndex(track.AudioStreams)) {
    node.Children.push_back(AudioNode(stream, index, place + 1));
  }
  for (const auto& [place, stream] : LiveWithIndex(track.SubStreams)) {
    node.Children.push_back(SubNode(stream, index, place + 1));
  }
  for (std::size_t i = 0; i < track.HighlightPlays.size(); ++i) {
    const HighlightPlay& play = track.HighlightPlays[i];
    node.Children.push_back(Node("highlight", HighStreamKey(index, i + 1), {},
                                 {{"start", play.StartTimeToVideo},
                                  {"duration", play.Duration},
                                  {"buttons", Count(play.Buttons.size())}}));
  }
  const int rate = TrackFramesPerSecond(project, track);
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    const Scene& scene = track.Scenes[i];
    node.Children.push_back(
        Node("scene", SceneKey(index, i + 1), scene.Name,
             {{"time", FramesToTimecode(scene.Frame, rate)}, {"prohibits", UopNames(scene.Uops)}}));
  }
  return node;
}

// --- disc ---

void AddCommands(OutlineNode& node, std::string_view kind, const CommandList& list) {
  for (const VMICommand_P& command : list) {
    if (!command.Deleted) {
      node.Children.push_back(Node(kind, command.Key, command.FullCommand, {{"bytes", command.CommandHex}}));
    }
  }
}

OutlineNode CellNode(const Cell_P& cell) {
  OutlineNode node = Node("cell", cell.Key, cell.CellName,
                          {{"scene", cell.SceneUsed},
                           {"track", cell.TrackName},
                           {"still", std::int64_t{cell.StillTime}},
                           {"command", std::int64_t{cell.CellCommand}},
                           {"seamless", cell.Seamless},
                           {"restricted", cell.RestrictedAccess}});
  for (const ButtonCommands_P& entry : cell.ButtonCommands) {
    AddCommands(node, "button", entry.Commands);
  }
  return node;
}

std::string LinkName(const std::string& link) {
  return link == "none" ? std::string() : link;
}

OutlineNode PgcNode(const PGC_P& pgc) {
  OutlineNode node = Node("pgc", pgc.Key, pgc.PGCName,
                          {{"menu", pgc.MenuType},
                           {"palette", pgc.PaletteName},
                           {"next", LinkName(pgc.NextPGC)},
                           {"previous", LinkName(pgc.PrevPGC)},
                           {"up", LinkName(pgc.GoUpPGC)},
                           {"still", std::int64_t{pgc.StillTime}},
                           {"random", pgc.PlayBackMode == PlayBack::Random},
                           {"shuffle", pgc.PlayBackMode == PlayBack::Shuffle},
                           {"repeat", std::int64_t{pgc.Repeat}},
                           {"prohibits", UopNames(pgc.Uops)}});
  AddCommands(node, "pre", pgc.PreCommands);
  for (const PG_P* program : Live(pgc.PG)) {
    OutlineNode& child = node.Children.emplace_back(Node("program", program->Key, program->PGName));
    for (const Cell_P* cell : Live(program->Cell)) {
      child.Children.push_back(CellNode(*cell));
    }
  }
  AddCommands(node, "post", pgc.PostCommands);
  AddCommands(node, "cellcommand", pgc.CellCommands);
  return node;
}

void AddPgcs(OutlineNode& node, const Collection<PGC_P>& pgcs) {
  for (const PGC_P* pgc : Live(pgcs)) {
    node.Children.push_back(PgcNode(*pgc));
  }
}

OutlineNode EntryNode(const VTS_P& entry) {
  OutlineNode node = Node("entry", entry.Key, entry.VTSName,
                          {{"standard", entry.Standard()},
                           {"menuAspect", entry.VTSMenuInfo.Aspect},
                           {"titleAspect", entry.VTSTitleInfo.Aspect},
                           {"menuLetterBoxed", entry.MenuLetterBoxed},
                           {"titleLetterBoxed", entry.TitleLetterBoxed},
                           {"filmMode", entry.TitleCameraMode}});
  for (const Lang_P* language : Live(entry.Lang)) {
    AddPgcs(node.Children.emplace_back(Node("language", language->Key, language->Language)), language->PGC);
  }
  for (const Title_P* title : Live(entry.Title)) {
    AddPgcs(node.Children.emplace_back(Node("title", title->Key, title->TitleName,
                                            {{"customAudio", title->Custom},
                                             {"customSubtitles", title->SubCustom},
                                             {"noTimePlay", title->UOPTimePlay},
                                             {"noChapterPlay", title->UOPPTTPlay}})),
            title->PGC);
  }
  return node;
}

OutlineNode DiscNode(const Project& project) {
  OutlineNode disc = Folder("disc");
  disc.Facts = {{"folder", project.DestinationFolder}, {"standard", project.Standard()}};
  disc.Children.push_back(PgcNode(project.FirstPlay));
  for (const VTS_P* entry : Live(project.Disc)) {
    disc.Children.push_back(EntryNode(*entry));
  }
  return disc;
}

// --- stream maps ---

// The numbers of streams that are multiplexed; the marks are those of the map built last.
template <class Streams>
std::unordered_set<std::int32_t> MuxedNumbers(const TrackList& list, const Tracks& tracks,
                                              Streams Track::*streams) {
  std::unordered_set<std::int32_t> numbers;
  for (const TrackListRow& row : list) {
    for (const auto* stream : Live(tracks[row.Index].*streams)) {
      if (stream->MuxThisStream) {
        numbers.insert(stream->StreamNumber);
      }
    }
  }
  return numbers;
}

OutlineNode MapNode(const VTS_P& entry, Domain domain, Tracks& tracks) {
  const TrackList list = BuildTrackList(entry, domain, tracks);
  OutlineNode node = Node(domain == Domain::Menu ? "menus" : "titles", entry.Key, {});
  const AudioMap audio = BuildAudioMap(list, tracks, Rules::Players);
  const auto muxedAudio = MuxedNumbers(list, tracks, &Track::AudioStreams);
  for (const AudioMapRow& row : audio) {
    node.Children.push_back(Node("audio", {}, {},
                                 {{"stream", std::int64_t{row.StreamNumber}},
                                  {"format", row.Format},
                                  {"language", row.Language},
                                  {"extension", row.Extension},
                                  {"kHz", std::int64_t{row.SampleRate}},
                                  {"channels", std::int64_t{row.ChannelCount}},
                                  {"uses", std::int64_t{row.UseCount}},
                                  {"muxed", muxedAudio.contains(row.StreamNumber)}}));
  }
  const SubMap subs = BuildSubMap(list, tracks, Rules::Players);
  const auto muxedSubs = MuxedNumbers(list, tracks, &Track::SubStreams);
  for (const SubMapRow& row : subs) {
    node.Children.push_back(Node("subtitles", {}, {},
                                 {{"stream", std::int64_t{row.StreamNumber}},
                                  {"language", row.Language},
                                  {"extension", row.Extension},
                                  {"display", row.DisplayMode},
                                  {"uses", std::int64_t{row.UseCount}},
                                  {"muxed", muxedSubs.contains(row.StreamNumber)}}));
  }
  return node;
}

OutlineNode MapsNode(const Project& project) {
  OutlineNode maps = Folder("streammaps");
  Tracks tracks = project.Tracks;  // building a map marks the streams
  for (const VTS_P* entry : Live(project.Disc)) {
    for (const Domain domain : {Domain::Menu, Domain::Title}) {
      OutlineNode node = MapNode(*entry, domain, tracks);
      if (!node.Children.empty()) {
        maps.Children.push_back(std::move(node));
      }
    }
  }
  return maps;
}

}  // namespace

OutlineNode OutlineOf(const Project& project) {
  OutlineNode root = Folder("project");
  OutlineNode& segments = root.Children.emplace_back(Folder("segments"));
  for (const auto& [index, track] : LiveWithIndex(project.Tracks)) {
    segments.Children.push_back(TrackNode(project, track, index));
  }
  root.Children.push_back(DiscNode(project));
  OutlineNode& palettes = root.Children.emplace_back(Folder("palettes"));
  for (const Palette_P* palette : Live(project.Palettes)) {
    palettes.Children.push_back(Node("palette", {}, palette->Name()));
  }
  root.Children.push_back(MapsNode(project));
  return root;
}

}  // namespace quorvelant
