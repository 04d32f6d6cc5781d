#include "edit/import_video.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "analysis/container_sniff.h"
#include "analysis/disc_fit.h"
#include "analysis/remedies.h"
#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/messages.h"
#include "check/source_judge.h"
#include "disc/video_standard.h"
#include "edit/chapter_analysis.h"
#include "edit/messages.h"
#include "edit/new_track.h"
#include "edit/track_names.h"
#include "model/picture_file.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::string_view ProgramStream =
    "it is a program stream; take the elementary video stream out of it first";
constexpr std::string_view TransportStream =
    "it is a transport stream; take the elementary video stream out of it first";
constexpr std::string_view NoVideo = "it holds no MPEG video";
constexpr std::string_view NoBitmap = "it is no picture that can be read";
constexpr std::string_view BitmapOnMotion = "a bitmap belongs on a still or slideshow track";

// Why a file in which no video was found holds none.
std::string NoVideoBecause(const Track& track, const std::string& path) {
  const SourceKind kind = SniffFile(path);
  if (kind == SourceKind::ProgramStream || kind == SourceKind::TransportStream) {
    return std::string(kind == SourceKind::ProgramStream ? ProgramStream : TransportStream);
  }
  const std::string_view foreign = ForeignKindText(kind);
  if (!foreign.empty()) {
    const VideoTarget target{.Ntsc = EqualNoCase(track.Standard, "NTSC"), .Aspect = track.Aspect};
    return fmt::format("it is {}, and a disc is made of elementary streams. This makes one that fits: {}",
                       foreign, EncodeVideoLine(path, target));
  }
  return std::string(IsPicture(path) ? NoBitmap : NoVideo);
}

// What the judge found against the file, in the words of an import; nothing where the track may take it.
std::optional<Message> WhyRefused(const Track& track, const Judgement<VideoAttributes>& judged,
                                  const std::string& file, SourceJudge& judge) {
  const std::string path = judge.PathOf(file);
  const Findings& found = judged.Findings;
  const auto unusable = [&](std::string_view why) {
    return MessageOf(message::ImportUnusable, file, file, why);
  };
  if (Has(found, message::SourceMissing)) {
    return unusable(judge.WhyMissing(path));
  }
  if (const auto broken =
          std::ranges::find_if(found, [](const Message& one) { return one.Is(message::SourceBroken); });
      broken != found.end()) {
    return *broken;
  }
  if (Has(found, message::BitmapSizeUnfit)) {
    return track.TrackType == "Motion" ? unusable(BitmapOnMotion) : MessageOf(message::ImageSize, file);
  }
  if (!judged.Seen || Has(found, message::NoPictures)) {
    return unusable(NoVideoBecause(track, path));
  }
  const VideoInfo& info = judged.Seen->Info;
  const auto incompatible = [&](const std::string& attribute) {
    return MessageOf(message::ImportIncompatible, file, info.Coding, info.Standard, attribute);
  };
  if (Has(found, message::FrameRate)) {
    return incompatible(fmt::format("{} frames a second", FrameRateText(info.FrameRateCode)));
  }
  if (Has(found, message::FrameSize)) {
    return incompatible(judged.Seen->Resolution);
  }
  if (Has(found, message::Mpeg1Video)) {
    const VideoTarget target{.Ntsc = info.Standard == "NTSC", .Aspect = info.Aspect};
    return MessageOf(message::ImportMpeg1, file, file, EncodeVideoLine(path, target));
  }
  const Findings forTrack = JudgeForTrack(*judged.Seen, track.TrackType, {file, file});
  if (Has(forTrack, message::BitmapOnMotion)) {
    return unusable(BitmapOnMotion);
  }
  if (Has(forTrack, message::NotStill)) {
    return MessageOf(message::ImportNotStill, file);
  }
  return std::nullopt;
}

// What the file is, if the track may take it.
std::optional<VideoAttributes> Accept(const Project& project, const Track& track, const std::string& file,
                                      UserInterface& ui) {
  SourceJudge judge(project.SourceFolder(), Rules::Players, ui);
  const Judgement<VideoAttributes> judged = judge.Video({file, file});
  if (const auto refusal = WhyRefused(track, judged, file, judge)) {
    ui.Tell(*refusal);
    return std::nullopt;
  }
  if (judged.Seen->Info.NeedsPulldown) {
    ui.Tell(MessageOf(message::ImportNeedsPulldown, file));
  }
  return judged.Seen;
}

bool LikeTheFirst(const Track& track, const VideoAttributes& seen) {
  return track.Standard == seen.Info.Standard && track.Aspect == seen.Info.Aspect &&
         track.Resolution == seen.Resolution && track.Coding == seen.Info.Coding;
}

// Cells refer to scenes by name, so a track in use keeps its names.
void TakeFileName(Project& project, std::size_t trackIndex, const std::string& path) {
  Track& track = project.Tracks[trackIndex];
  if (track.UsedInStructure) {
    return;
  }
  const std::string oldScene = DefaultScene(track.TrackName).Name;
  track.TrackName = FreeTrackName(project, std::filesystem::path(path).stem().string(), trackIndex);
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
  const std::int64_t end = track.VideoFrames - TimingOf(ntsc).SceneMarginFrames;
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
  const auto seen = Accept(project, track, file, ui);
  if (!seen || play >= track.VideoPlays.size()) {
    return false;
  }
  const bool first =
      std::none_of(track.VideoPlays.begin(), track.VideoPlays.begin() + static_cast<std::ptrdiff_t>(play),
                   [](const VideoPlay& other) { return IsLive(other) && !other.File.empty(); });
  if (!first && !LikeTheFirst(track, *seen)) {
    ui.Tell(MessageOf(message::ImportVideoUnlike, file));
    return false;
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
