// The plays of one list against the list: a player takes all of them as it takes the first.
#pragma once

#include <optional>
#include <string>

#include "analysis/quick_scan.h"
#include "base/rules.h"
#include "check/findings.h"
#include "check/source_judge.h"
#include "model/tracks.h"

namespace quorvelant {

// The standard by which a track's times count and that its pictures are marked with.
std::optional<Message> WhyNoStandard(const Track& track, const std::string& place, const Rules& rules);

// The video files of one track, in order.
class VideoPlays {
 public:
  VideoPlays(const Track& track, const Rules& rules) : track_(track), rules_(rules) {}

  // `path` is the file's, as lines for a shell name it.
  Findings Judge(const VideoAttributes& seen, const SourcePlay& play, const std::string& path);

 private:
  struct First {
    VideoAttributes Seen;
    std::string File;
  };

  const Track& track_;
  Rules rules_;
  std::optional<First> first_;
};

// The sound files of one stream, in order.
class AudioPlays {
 public:
  explicit AudioPlays(const Rules& rules) : rules_(rules) {}

  Findings Judge(const AudioAttributes& seen, const SourcePlay& play, const std::string& path);

 private:
  struct First {
    AudioAttributes Seen;
    std::string File;
  };

  Rules rules_;
  std::optional<First> first_;
};

}  // namespace quorvelant
