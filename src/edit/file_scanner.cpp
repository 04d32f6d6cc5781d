#include "edit/file_scanner.h"

#include "analysis/messages.h"
#include "analysis/quick_scan.h"
#include "base/file_text.h"
#include "model/picture_file.h"

namespace quorvelant {

namespace {

constexpr std::string_view UnreadableSource = "the file cannot be read";

// Where the judgement of sources tells why a file cannot be read, the load asks nobody to close applications.
bool IsUnreadable(const std::string& path, const Rules& rules, UserInterface& ui) {
  const bool unreadable = rules.RefusesDeadDiscs && WhyNotPlainFile(path).empty() && !ReadHead(path, 1);
  if (unreadable) {
    ui.Tell(MessageOf(message::SourceReadFailed, path, UnreadableSource));
  }
  return unreadable;
}

}  // namespace

std::optional<VideoTraits> FileScanner::Video(const std::string& path) const {
  const auto seen = IsUnreadable(path, rules_, *ui_) ? std::nullopt : QuickScanVideo(path, *ui_);
  if (!seen) {
    return std::nullopt;
  }
  return VideoTraits{seen->Info.Standard, seen->Resolution, seen->Info.Aspect, seen->Info.Coding,
                     IsPicture(path)};
}

std::optional<AudioTraits> FileScanner::Audio(const std::string& path, std::string_view format) const {
  const auto seen =
      IsUnreadable(path, rules_, *ui_) ? std::nullopt : QuickScanAudio(path, format, rules_, *ui_);
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
