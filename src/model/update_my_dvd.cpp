#include "model/update_my_dvd.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "model/keys.h"
#include "model/messages.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

void Rename(MyDVD& disc, const DiscUpdate& update) {
  if (ProgramNumber(update.Key) > 0) {
    if (PG_P* program = FindProgram(disc, update.Key)) {
      program->PGName = update.NewName;
    }
  } else if (PgcNumber(update.Key) > 0) {
    if (PGC_P* pgc = FindPgc(disc, update.Key)) {
      pgc->PGCName = update.NewName;
    }
  } else if (Title_P* title = FindTitle(disc, update.Key)) {
    title->TitleName = update.NewName;
  }
}

void FillCell(Cell_P& cell, Track& track, const DiscUpdate& update) {
  cell.TrackName = update.TrackName;
  cell.SegmentUsed = update.Segment;
  track.UsedInStructure = true;
  cell.pScene = update.Scene;
  cell.EnableSeamlessFlag = update.Seamless;
  cell.Seamless = update.Seamless;
  if (!update.KeepName) {
    cell.SceneUsed = SceneName(track, update.Scene);
    cell.CellName = update.NewName;
  }
  // A cell that was there before keeps the time its author gave it.
  if (track.TrackType == "Still" && !update.ReNameOnly) {
    cell.StillTime = InfiniteStill;
    cell.iStill = InfiniteStill;
  }
}

template <class Stream>
const Stream* LiveStream(const std::vector<Stream>& streams, std::int32_t number) {
  const auto found = std::find_if(streams.begin(), streams.end(), [number](const Stream& stream) {
    return IsLive(stream) && stream.StreamNumber == number;
  });
  return found == streams.end() ? nullptr : &*found;
}

// "[Source <what>=a; New track <whatNew>=b]" where the values differ. The two spellings of the language's
// word are old and stay.
template <class Value>
void Differ(std::string& text, std::string_view what, std::string_view whatNew, const Value& source,
            const Value& added) {
  if (source != added) {
    text += fmt::format("[Source {}={}; New track {}={}]", what, source, whatNew, added);
  }
}

std::string Differences(const SubtitleStream& source, const SubtitleStream& added) {
  std::string text;
  Differ(text, "Language", "Langauge", source.Language, added.Language);
  Differ(text, "Extension", "Extension", source.Extension, added.Extension);
  Differ(text, "DisplayMode", "DisplayMode", source.DisplayMode, added.DisplayMode);
  return text;
}

std::string Differences(const AudioStream& source, const AudioStream& added) {
  std::string text;
  Differ(text, "Language", "Langauge", source.Language, added.Language);
  Differ(text, "Extension", "Extension", source.Extension, added.Extension);
  if (source.Traits.ChannelCount != added.Traits.ChannelCount) {
    text += fmt::format("[Source has {} channels; New track has {} channels]", source.Traits.ChannelCount,
                        added.Traits.ChannelCount);
  }
  Differ(text, "AudioType", "AudioType", source.Format, added.Format);
  Differ(text, "Bitrate", "Bitrate", source.Traits.BitRate, added.Traits.BitRate);
  return text;
}

template <class Stream>
std::optional<Message> Compare(const std::vector<Stream>& source, const std::vector<Stream>& added,
                               const MessageKind& kind) {
  for (const Stream* stream : Live(source)) {
    if (LiveStream(source, stream->StreamNumber) != stream) {
      continue;
    }
    const Stream* other = LiveStream(added, stream->StreamNumber);
    const std::string differences = other == nullptr ? std::string() : Differences(*stream, *other);
    if (!differences.empty()) {
      return MessageOf(kind, {}, differences, stream->StreamNumber);
    }
  }
  return std::nullopt;
}

}  // namespace

void TakeVideoAttributes(VideoInfo_P& info, const Track& track) {
  info.Standard = track.Standard;
  info.Resolution = track.Resolution;
  info.Aspect = track.Aspect;
  info.Coding = track.Coding;
  info.Pan = info.Pan || track.Pan;
  info.Letter = info.Letter || track.Letter;
  info.Set = true;
}

Cell_P* UpdateMyDVD(Project& project, const DiscUpdate& update) {
  if (!update.AddCell && CellNumber(update.Key) == 0) {
    Rename(project.Disc, update);
    return nullptr;
  }
  VTS_P* entry = FindEntry(project.Disc, update.Key);
  PG_P* program = FindProgram(project.Disc, update.Key);
  if (entry == nullptr || program == nullptr || update.Segment < 0 ||
      static_cast<std::size_t>(update.Segment) >= project.Tracks.Count()) {
    return nullptr;
  }
  const std::size_t after = program->Cell.Count() + (update.ReNameOnly ? 0 : 1);
  const std::size_t number = update.CellCounter == 0 ? after : static_cast<std::size_t>(update.CellCounter);
  if (update.CellCounter < 0 || number < 1 || number > after) {
    return nullptr;
  }
  Track& track = project.Tracks[static_cast<std::size_t>(update.Segment)];
  if (update.AddCell) {
    TakeVideoAttributes(InTitleDomain(update.Key) ? entry->VTSTitleInfo : entry->VTSMenuInfo, track);
  }
  if (!update.ReNameOnly) {
    program->Cell.Add({});
  }
  Cell_P* cell = program->Cell.Item(number);
  FillCell(*cell, track, update);
  return cell;
}

std::string SceneName(const Track& track, std::int32_t scene) {
  if (scene >= 0 && static_cast<std::size_t>(scene) < track.Scenes.size()) {
    return track.Scenes[static_cast<std::size_t>(scene)].Name;
  }
  return fmt::format("{}_Scene{}", track.TrackName, std::int64_t{scene} + 1);
}

std::optional<Message> CompareSubStreams(const Track& source, const Track& added) {
  return Compare(source.SubStreams, added.SubStreams, message::SubStreamsUnlike);
}

std::optional<Message> CompareAudioStreams(const Track& source, const Track& added) {
  return Compare(source.AudioStreams, added.AudioStreams, message::AudioStreamsUnlike);
}

const Track* FirstTrackOf(const PGC_P& pgc, const Tracks& tracks) {
  for (const Cell_P* cell : LiveCells(pgc)) {
    if (cell->SegmentUsed >= 0 && static_cast<std::size_t>(cell->SegmentUsed) < tracks.Count()) {
      return &tracks[static_cast<std::size_t>(cell->SegmentUsed)];
    }
  }
  return nullptr;
}

}  // namespace quorvelant
