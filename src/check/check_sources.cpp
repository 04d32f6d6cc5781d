#include "check/check_sources.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

#include "analysis/disc_fit.h"
#include "analysis/picture_index.h"
#include "analysis/quick_scan.h"
#include "base/file_text.h"
#include "base/text.h"
#include "check/preflight.h"
#include "model/keys.h"
#include "picture/bitmap_size.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoFileNamed = "the play names no file";
constexpr std::string_view Because = "'{}': {}";
constexpr std::string_view NoKnownKind = "its name tells no kind of audio";
constexpr std::string_view NoVideo = "it holds no MPEG video and no bitmap that becomes a still";
constexpr std::string_view BitmapSizes = "a bitmap of {}x{}: sizes are 720x576, 360x288, 720x480 and 360x240";
constexpr std::string_view BitmapOnMotion = "a bitmap on a motion track";
constexpr std::string_view NoStill = "a still or slide of more than one picture";
constexpr std::string_view UnlikeTrack = "{} where the track is {}";
constexpr std::string_view UnlikeFirst = "{} where the first play is {}";
constexpr std::string_view OldIndex = "its index is older than the file";

std::string VideoText(const VideoAttributes& seen) {
  return fmt::format("{} {} {} {}", seen.Info.Coding, seen.Info.Standard, seen.Resolution, seen.Info.Aspect);
}

std::string AudioText(const AudioAttributes& seen) {
  return fmt::format("{} {} kHz, {} kbit/s, {} channels", seen.Format, seen.SampleRate, seen.BitRate,
                     seen.ChannelCount());
}

// The check of one project; findings are collected.
class Checker {
 public:
  Checker(const Project& project, const Rules& rules, PictureLoader& pictures, UserInterface& ui)
      : project_(&project), rules_(rules), pictures_(&pictures), ui_(&ui), folder_(project.SourceFolder()) {}

  std::vector<Message> Run() {
    for (std::size_t i = 0; i < project_->Tracks.Count() && !ui_->StopRequested(); ++i) {
      const Track& track = project_->Tracks[i];
      if (!track.Removed) {
        CheckVideo(track, i);
        CheckAudio(track, i);
        CheckSubtitles(track, i);
      }
      ui_->Progress(static_cast<double>(i + 1), static_cast<double>(project_->Tracks.Count()));
    }
    return std::move(found_);
  }

 private:
  void CheckVideo(const Track& track, std::size_t number);
  void CheckVideoPlay(const Track& track, const std::string& file, std::optional<VideoAttributes>& first);
  void CheckAudio(const Track& track, std::size_t number);
  void CheckSubtitles(const Track& track, std::size_t number);
  std::optional<AudioAttributes> CheckAudioPlay(const AudioStream& stream, const std::string& file);

  // Whether the file is there to be looked at; `place_` is set by then.
  bool Present(const std::string& file);
  void Find(Severity level, std::string_view title, std::string text) {
    found_.push_back({level, std::string(title), std::move(text), place_});
  }
  void SetPlace(const Track& track, const std::string& key) {
    place_ = fmt::format("{} ({})", key, track.TrackName);
  }

  const Project* project_;
  Rules rules_;
  PictureLoader* pictures_;
  UserInterface* ui_;
  std::string folder_;
  std::string place_;
  std::vector<Message> found_;
};

bool Checker::Present(const std::string& file) {
  if (file.empty()) {
    Find(Severity::Warning, SourceMissing, std::string(NoFileNamed));
    return false;
  }
  if (const std::string_view fault = NoPlainFile(SystemPath(file, folder_)); !fault.empty()) {
    Find(Severity::Error, SourceMissing, fmt::format(Because, file, fault));
    return false;
  }
  return true;
}

void Checker::CheckVideo(const Track& track, std::size_t number) {
  std::optional<VideoAttributes> first;
  for (std::size_t i = 0; i < track.VideoPlays.size(); ++i) {
    SetPlace(track, VideoPlayKey(number, i + 1));
    if (!track.VideoPlays[i].Removed && Present(track.VideoPlays[i].File)) {
      CheckVideoPlay(track, track.VideoPlays[i].File, first);
    }
  }
}

void Checker::CheckVideoPlay(const Track& track, const std::string& file,
                             std::optional<VideoAttributes>& first) {
  const std::string path = SystemPath(file, folder_);
  const bool motion = EqualNoCase(track.TrackType, "Motion");
  const auto bitmap = ReadBitmapSize(path);
  const auto refuse = [&](const std::string& why) {
    Find(Severity::Error, SourceRefused, fmt::format(Because, file, why));
  };
  if (bitmap && !IsBitmapSize(bitmap->Width, bitmap->Height)) {
    return refuse(fmt::format(BitmapSizes, bitmap->Width, bitmap->Height));
  }
  if (bitmap && motion) {
    return refuse(std::string(BitmapOnMotion));
  }
  const auto seen = QuickScanVideo(path, *ui_);
  if (!seen) {
    return refuse(std::string(NoVideo));
  }
  for (const std::string& reason : JudgeHeaders(seen->Info).Reasons) {
    refuse(reason);
  }
  if (!motion && !seen->Still) {
    refuse(std::string(NoStill));
  }
  if (!track.Standard.empty() && !seen->Info.Standard.empty() && track.Standard != seen->Info.Standard) {
    Find(Severity::Error, SourceMismatched,
         fmt::format(Because, file, fmt::format(UnlikeTrack, seen->Info.Standard, track.Standard)));
  }
  if (first && VideoText(*first) != VideoText(*seen)) {
    Find(Severity::Error, SourceMismatched,
         fmt::format(Because, file, fmt::format(UnlikeFirst, VideoText(*seen), VideoText(*first))));
  }
  if (IndexIsOlder(path)) {
    Find(Severity::Warning, SourceNote, fmt::format(Because, file, OldIndex));
  }
  first = first ? first : seen;
}

void Checker::CheckAudio(const Track& track, std::size_t number) {
  for (std::size_t i = 0; i < track.AudioStreams.size(); ++i) {
    const AudioStream& stream = track.AudioStreams[i];
    std::optional<AudioAttributes> first;
    for (std::size_t play = 0; play < stream.AudioPlays.size() && !stream.Removed; ++play) {
      SetPlace(track, AudioPlayKey(number, i + 1, play + 1));
      if (stream.AudioPlays[play].Removed || !Present(stream.AudioPlays[play].File)) {
        continue;
      }
      const auto seen = CheckAudioPlay(stream, stream.AudioPlays[play].File);
      if (first && seen && AudioText(*first) != AudioText(*seen)) {
        Find(Severity::Error, SourceMismatched,
             fmt::format(Because, stream.AudioPlays[play].File,
                         fmt::format(UnlikeFirst, AudioText(*seen), AudioText(*first))));
      }
      first = first ? first : seen;
    }
  }
}

std::optional<AudioAttributes> Checker::CheckAudioPlay(const AudioStream& stream, const std::string& file) {
  auto seen = QuickScanAudio(SystemPath(file, folder_), stream.Format, rules_, *ui_);
  if (!seen) {
    Find(Severity::Error, SourceRefused, fmt::format(Because, file, NoKnownKind));
    return std::nullopt;
  }
  const DiscFit fit = JudgeAudio(*seen);
  // A DTS stream stays off the disc, which is right without it.
  const bool leftOut = seen->Format == "DTS" && seen->Problem.empty();
  for (const std::string& reason : fit.Reasons) {
    Find(leftOut ? Severity::Warning : Severity::Error, SourceRefused, fmt::format(Because, file, reason));
  }
  return fit.Reasons.empty() || seen->Problem.empty() ? seen : std::nullopt;
}

void Checker::CheckSubtitles(const Track& track, std::size_t number) {
  // Links between buttons are a matter of the script alone and told without looking at any file.
  const SubpictureChecks checks{rules_, *pictures_, *ui_, folder_, false, false};
  std::ranges::move(CheckTrackSubpictures(track, number, checks), std::back_inserter(found_));
}

}  // namespace

std::vector<Message> CheckSources(const Project& project, const Rules& rules, PictureLoader& pictures,
                                  UserInterface& ui) {
  return Checker(project, rules, pictures, ui).Run();
}

}  // namespace quorvelant
