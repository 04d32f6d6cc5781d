#include "edit/import_video.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "analysis/disc_fit.h"
#include "analysis/quick_scan.h"
#include "base/file_text.h"
#include "base/timecode.h"
#include "edit/chapter_analysis.h"
#include "edit/new_track.h"
#include "model/walk.h"
#include "picture/bitmap_size.h"

namespace quorvelant {

namespace {

constexpr std::string_view ProgramStream =
    "it is a program stream; take the elementary video stream out of it first";
constexpr std::string_view TransportStream =
    "it is a transport stream; take the elementary video stream out of it first";
constexpr std::string_view NoVideo = "it holds no MPEG video";
constexpr std::string_view BitmapOnMotion = "a bitmap belongs on a still or slideshow track";

bool Refuse(UserInterface& ui, std::string_view title, std::string_view text, const std::string& file) {
  TellError(ui, title, text, file);
  return false;
}

bool Unusable(UserInterface& ui, const std::string& file, std::string_view why) {
  return Refuse(ui, ImportErrorTitle, fmt::format(UnusableText, file, why), file);
}

// Why a file in which no video was found holds none.
std::string_view NoVideoBecause(const std::string& path) {
  switch (SniffFile(path)) {
    case SourceKind::ProgramStream:
      return ProgramStream;
    case SourceKind::TransportStream:
      return TransportStream;
    default:
      return NoVideo;
  }
}

bool AcceptStream(const VideoAttributes& seen, bool wantStill, const std::string& file, UserInterface& ui) {
  const VideoInfo& info = seen.Info;
  const auto incompatible = [&](const std::string& attribute) {
    return Refuse(ui, ImportErrorTitle, fmt::format(IncompatibleText, info.Coding, info.Standard, attribute),
                  file);
  };
  if (info.Standard.empty()) {
    return incompatible(fmt::format("frame rate code {}", info.FrameRateCode));
  }
  if (!IsDiscSize(info.Standard, info.Width, info.Height)) {
    return incompatible(seen.Resolution);
  }
  if (info.Coding == "MPEG1") {
    return Refuse(ui, Mpeg1Title, Mpeg1Text, file);
  }
  if (wantStill && !seen.Still) {
    return Refuse(ui, StillTitle, StillText, file);
  }
  if (info.NeedsPulldown) {
    TellWarning(ui, ImportWarningTitle, PulldownText, file);
  }
  return true;
}

// What the file is, if the track may take it.
std::optional<VideoAttributes> Accept(const Track& track, const std::string& path, const std::string& file,
                                      UserInterface& ui) {
  const bool wantStill = track.TrackType != "Motion";
  if (const std::string_view fault = NoPlainFile(path); !fault.empty()) {
    Unusable(ui, file, fault);
    return std::nullopt;
  }
  const auto bitmap = ReadBitmapSize(path);
  if (bitmap && !wantStill) {
    Unusable(ui, file, BitmapOnMotion);
    return std::nullopt;
  }
  if (bitmap && !IsBitmapSize(bitmap->Width, bitmap->Height)) {
    Refuse(ui, ImageSizeTitle, ImageSizeText, file);
    return std::nullopt;
  }
  auto seen = QuickScanVideo(path, ui);
  if (!seen) {
    Unusable(ui, file, NoVideoBecause(path));
    return std::nullopt;
  }
  if (!seen->Bitmap && !AcceptStream(*seen, wantStill, file, ui)) {
    return std::nullopt;
  }
  return seen;
}

bool LikeTheFirst(const Track& track, const VideoAttributes& seen) {
  return track.Standard == seen.Info.Standard && track.Aspect == seen.Info.Aspect &&
         track.Resolution == seen.Resolution && track.Coding == seen.Info.Coding;
}

// The file's name without folder and extension, made unique among the tracks.
std::string NameAfter(const Project& project, std::size_t trackIndex, const std::string& path) {
  const std::string stem = std::filesystem::path(path).stem().string();
  std::string name = stem;
  const auto taken = [&](const std::string& wanted) {
    return std::ranges::any_of(Live(project.Tracks), [&](const Track* track) {
      return track != &project.Tracks[trackIndex] && track->TrackName == wanted;
    });
  };
  for (int number = 2; taken(name); ++number) {
    name = fmt::format("{}_{}", stem, number);
  }
  return name;
}

// Cells refer to scenes by name, so a track in use keeps its names.
void TakeFileName(Project& project, std::size_t trackIndex, const std::string& path) {
  Track& track = project.Tracks[trackIndex];
  if (track.UsedInStructure) {
    return;
  }
  const std::string oldScene = DefaultScene(track.TrackName).Name;
  track.TrackName = NameAfter(project, trackIndex, path);
  if (track.Scenes.size() == 1 && track.Scenes[0].Name == oldScene) {
    track.Scenes[0].Name = DefaultScene(track.TrackName).Name;
  }
}

void CreateChapters(Project& project, std::size_t trackIndex, const VideoImportOptions& options,
                    IndexStore& store, UserInterface& ui) {
  Track& track = project.Tracks[trackIndex];
  const bool ntsc = track.Standard == "NTSC";
  const std::int64_t interval = ntsc ? options.NtscChapters : options.PalChapters;
  if (interval <= 0 || !AnalyseChapters(project, trackIndex, store, ui)) {
    return;
  }
  const auto starts = ChapterStarts(project, trackIndex, store);
  const std::int64_t end = track.VideoFrames - (ntsc ? 12 : 15);  // a scene cannot start closer to the end
  const int rate = FramesPerSecond(track.Standard);
  for (std::int64_t frame = interval; frame < end; frame += interval) {
    if (!AddScene(track, FramesToTimecode(frame, rate), rate, ui,
                  [&](std::int64_t wanted) { return MoveToChapterStart(starts, wanted); })) {
      break;
    }
  }
}

}  // namespace

bool ImportVideo(Project& project, std::size_t trackIndex, std::size_t play, const std::string& file,
                 const VideoImportOptions& options, IndexStore& store, UserInterface& ui) {
  Track& track = project.Tracks[trackIndex];
  const std::string path = SystemPath(file, project.SourceFolder());
  const auto seen = Accept(track, path, file, ui);
  if (!seen || play >= track.VideoPlays.size()) {
    return false;
  }
  const bool first =
      std::none_of(track.VideoPlays.begin(), track.VideoPlays.begin() + static_cast<std::ptrdiff_t>(play),
                   [](const VideoPlay& other) { return IsLive(other) && !other.File.empty(); });
  if (!first && !LikeTheFirst(track, *seen)) {
    return Refuse(ui, VideoFileTitle, VideoFileText, file);
  }
  track.VideoPlays[play].File = file;
  if (!first) {
    track.VideoFrames = 0;  // not known until it is analysed again
    return true;
  }
  track.Standard = seen->Info.Standard;
  track.Aspect = seen->Info.Aspect;
  track.Resolution = seen->Resolution;
  track.Coding = seen->Info.Coding;
  track.Pan = seen->Info.PanScan;
  const auto index = FindPictureIndex(path, store);
  const std::int64_t known = index ? index->TotalFrames : 0;
  track.VideoFrames = seen->Still ? 1 : static_cast<std::int32_t>(known);
  SetVideoInfo(track);
  if (options.UseTrackNames) {
    TakeFileName(project, trackIndex, path);
  }
  if (options.AutoCreateChapters && track.TrackType == "Motion") {
    CreateChapters(project, trackIndex, options, store, ui);
  }
  return true;
}

}  // namespace quorvelant
