#include "edit/file_scanner.h"

#include "analysis/quick_scan.h"

namespace quorvelant {

std::optional<VideoTraits> FileScanner::Video(const std::string& path) const {
  const auto seen = QuickScanVideo(path, *ui_);
  if (!seen) {
    return std::nullopt;
  }
  return VideoTraits{seen->Info.Standard, seen->Resolution, seen->Info.Aspect, seen->Info.Coding};
}

std::optional<AudioTraits> FileScanner::Audio(const std::string& path, std::string_view format) const {
  const auto seen = QuickScanAudio(path, format, rules_, *ui_);
  if (!seen) {
    return std::nullopt;
  }
  return AudioTraits{.FrameBytes = seen->FrameBytes,
                     .BitRate = seen->BitRate,
                     .SampleRate = seen->SampleRate,
                     .ChannelCount = seen->ChannelCount(),
                     .Quantisation = seen->Quantisation,
                     .ServiceMode = seen->ServiceMode};
}

}  // namespace quorvelant
