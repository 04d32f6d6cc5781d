// Files of a data folder, and the plays that name them.
#include <fmt/format.h>

#include <filesystem>
#include <fstream>

#include "base/random.h"
#include "base/text.h"
#include "script/line_reader.h"
#include "script/script_reader.h"
#include "script/special_keys.h"

namespace quorvelant {

namespace {

constexpr std::size_t MostListedFiles = 1000;

bool NameVideoPlay(ReaderState& state, std::string_view name) {
  Track* track = state.LastTrack();
  if (track == nullptr || track->VideoPlays.empty()) {
    return false;
  }
  const DataFile_P* data = state.Data.Video.Find(name);
  if (data == nullptr) {
    track->VideoPlays.back().File = name;
    return true;
  }
  track->VideoPlays.back().File = data->FilePath;
  if (!data->Parts.empty()) {
    track->VideoPlays.back().File = data->Parts.front();
    for (std::size_t i = 1; i < data->Parts.size(); ++i) {
      track->VideoPlays.emplace_back().File = data->Parts[i];
    }
  }
  if (track->Standard.empty() && !data->Resolution.empty()) {
    track->Standard = data->Resolution;
  }
  if (track->Aspect.empty()) {
    track->Aspect = data->AspectRatio;
  }
  return true;
}

bool NameAudioPlay(ReaderState& state, std::string_view name) {
  AudioStream* stream = state.LastAudio();
  if (stream == nullptr || stream->AudioPlays.empty()) {
    return false;
  }
  const DataFile_P* data = state.Data.Audio.Find(name);
  if (data == nullptr) {
    stream->AudioPlays.back().File = name;
    return true;
  }
  stream->AudioPlays.back().File = data->FilePath;
  if (!data->Parts.empty()) {
    stream->AudioPlays.back().File = data->Parts.front();
    for (std::size_t i = 1; i < data->Parts.size(); ++i) {
      stream->AudioPlays.emplace_back().File = data->Parts[i];
    }
  }
  stream->Format = data->AudioType;
  stream->Emphasis = data->Emphasis;
  stream->Mute = data->Mute;
  return true;
}

bool NameSubPlay(ReaderState& state, std::string_view name) {
  SubPicturePlay* play = state.LastSubPlay();
  if (play == nullptr) {
    return false;
  }
  const DataFile_P* data = state.Data.Subs.Find(name);
  if (data == nullptr) {
    play->File = name;
    return true;
  }
  // The play's own times and its forced mark may stand before its name.
  SubPicturePlay named = data->Subtitle;
  named.File = data->FilePath;
  named.Start = play->Start;
  named.Duration = play->Duration.empty() ? data->Subtitle.Duration : play->Duration;
  named.Forced = play->Forced || data->Subtitle.Forced;
  *play = named;
  return true;
}

// The bitmap or source of a subtitle, in the folder named for all.
std::string SubtitlePath(const ReaderState& state, std::string_view file) {
  const bool hasFolder = file.find_first_of("\\/") != std::string_view::npos;
  const std::string& folder = state.Data.SubFolder;
  return hasFolder || folder.empty() ? std::string(file) : folder + "\\" + std::string(file);
}

// A list of the files of a multi-part source, one a line; "#" starts a remark. False, and no files, where it
// cannot be read to its end.
bool ReadParts(const ReaderState& state, DataFile_P& data) {
  const std::string path = SystemPath(data.FilePath, state.Target.SourceFolder());
  std::error_code failed;
  std::ifstream list;
  if (std::filesystem::is_regular_file(path, failed)) {
    list.open(path, std::ios::binary);
  }
  if (!list.is_open()) {
    return false;
  }
  LineReader lines(list);
  while (data.Parts.size() <= MostListedFiles && lines.Next()) {
    const std::string_view part = Trim(lines.Line());
    if (!part.empty() && !part.starts_with('#')) {
      data.Parts.emplace_back(part);
    }
  }
  if (lines.Broken()) {
    data.Parts.clear();
  }
  return !data.Parts.empty();
}

}  // namespace

bool NameDataFile(ReaderState& state, std::string_view name) {
  if (state.OpenData() != nullptr) {
    (state.Open == Segment::DataVideo   ? state.Data.Video
     : state.Open == Segment::DataAudio ? state.Data.Audio
                                        : state.Data.Subs)
        .NameLast(name);
    return true;
  }
  if (state.Open == Segment::DataVideo) {
    return NameVideoPlay(state, name);
  }
  return state.Open == Segment::DataAudio ? NameAudioPlay(state, name) : NameSubPlay(state, name);
}

bool ReadFile(ReaderState& state, std::string_view value, std::size_t /*number*/) {
  if (DataFile_P* data = state.OpenData()) {
    data->FilePath = state.Open == Segment::DataSub ? SubtitlePath(state, value) : std::string(value);
    if (Lower(value).ends_with("cfx") && !ReadParts(state, *data)) {
      state.Outcome.SkipReason = UnreadableList;
      return false;
    }
    if (data->Parts.size() > MostListedFiles) {
      state.Outcome.TooMany = fmt::format("{} files in a list", MostListedFiles);
      return false;
    }
    return true;
  }
  if (state.Open == Segment::SubPlay) {
    state.LastSubPlay()->File = SubtitlePath(state, value);
    return true;
  }
  return (state.Open == Segment::DataVideo || state.Open == Segment::DataAudio) && NameDataFile(state, value);
}

}  // namespace quorvelant
