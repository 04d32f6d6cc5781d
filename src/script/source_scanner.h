// What the load of a project asks about source files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/tracks.h"

namespace quorvelant {

// What the first pictures of a video file tell.
struct VideoTraits {
  std::string Standard;    // "PAL", "NTSC"; empty when the file tells neither
  std::string Resolution;  // "720x576"
  std::string Aspect;      // "4:3", "16:9"
  std::string Coding;      // "MPEG1", "MPEG2"
  bool IsPicture = false;  // which has no aspect of its own: it shows in 4:3 unless the script says more
};

// Quick looks at the heads of files. Paths are of this system. Nothing comes back for a file that is missing
// or is not of its kind: a load never fails because of a source.
class SourceScanner {
 public:
  SourceScanner() = default;
  SourceScanner(const SourceScanner&) = delete;
  SourceScanner& operator=(const SourceScanner&) = delete;
  virtual ~SourceScanner() = default;

  virtual std::optional<VideoTraits> Video(const std::string& path) const = 0;
  // `format` is "AC3", "PCM" or "DTS".
  virtual std::optional<AudioTraits> Audio(const std::string& path, std::string_view format) const = 0;
};

// What the files of a track tell of it: what it says itself stands, and they fill in the rest. The aspect
// that a picture's track says stands where it was said on purpose.
void ScanTrack(Track& track, const SourceScanner& scanner, const std::string& folder, bool aspectSaid);

}  // namespace quorvelant
