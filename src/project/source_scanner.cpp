#include "project/source_scanner.h"

#include <filesystem>

#include "analysis/quick_scan.h"

namespace quorvelant {

namespace {

// A folder or a pipe is no source, and opening one may never end.
bool IsFile(const std::string& path) {
  std::error_code failed;
  return std::filesystem::is_regular_file(path, failed);
}

}  // namespace

std::optional<VideoTraits> FileScanner::Video(const std::string& path) const {
  const auto seen = IsFile(path) ? QuickScanVideo(path, *ui_) : std::nullopt;
  if (!seen) {
    return std::nullopt;
  }
  return VideoTraits{seen->Info.Standard, seen->Resolution, seen->Info.Aspect, seen->Info.Coding};
}

std::optional<AudioTraits> FileScanner::Audio(const std::string& path, std::string_view format) const {
  const auto seen = IsFile(path) ? QuickScanAudio(path, format, rules_, *ui_) : std::nullopt;
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
