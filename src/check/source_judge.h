// The one judgement of a source: what its file is, and what keeps it from a disc.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "analysis/container_sniff.h"
#include "analysis/quick_scan.h"
#include "analysis/video_head.h"
#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "check/read_faults.h"
#include "model/picture_file.h"
#include "model/tracks.h"

namespace quorvelant {

// A file that a project names.
struct SourcePlay {
  std::string File;   // as the project holds it
  std::string Place;  // of the findings
  bool Ntsc = false;  // of the track, for what makes a fitting file of this one
};

template <class Attributes>
struct Judgement {
  std::optional<Attributes> Seen;  // nothing where the file is missing or of no use
  quorvelant::Findings Findings;
};

// Judges the sources of one run. It remembers what it has seen: however many domains use a file, its head is
// read once. Not for several threads.
class SourceJudge {
 public:
  // Relative paths count from `folder`.
  SourceJudge(std::string folder, const Rules& rules, UserInterface& ui)
      : folder_(std::move(folder)), rules_(rules), faults_(ui) {}

  // The path of this system.
  std::string PathOf(const std::string& file) const;

  // Why there is no plain file at a path of this system, as in "it is a folder, not a file"; empty where
  // there is one.
  std::string_view WhyMissing(const std::string& path);
  // The same as a finding on a play.
  std::optional<Message> Missing(const SourcePlay& play);

  // The file by itself. What no disc carries is an error where the rules refuse it, otherwise a warning.
  Judgement<VideoAttributes> Video(const SourcePlay& play);
  // `format` is "AC3", "PCM" or "DTS", or empty to go by the file's name. DTS stays off the disc, which is
  // right without it: warnings tell of it.
  Judgement<AudioAttributes> Audio(const SourcePlay& play, std::string_view format);
  // Why a subtitle's bitmap makes none, as far as its head tells.
  std::optional<Message> Subtitle(const SubPicturePlay& entry, const SourcePlay& play);

 private:
  struct Head {
    SourceKind Kind = SourceKind::Unknown;
    bool ShowsDiscVideo = false;
  };

  const Head& HeadOf(const std::string& path);
  // That the file is something no disc is made of; `line` makes something of it.
  Findings WhyForeign(const SourcePlay& play, const std::string& line);
  // That the system failed to read the file.
  std::optional<Message> WhyBroken(const SourcePlay& play) const;
  VideoHead VideoHeadOf(const std::string& path);
  Message WhyNoVideo(const SourcePlay& play);
  Findings JudgeHead(const VideoAttributes& seen, const SourcePlay& play);

  std::string folder_;
  Rules rules_;
  KeptReadFaults faults_;
  std::map<std::string, std::string_view> missing_;
  std::map<std::string, Head> heads_;
  std::map<std::string, std::optional<VideoHead>> videoHeads_;
  std::map<std::string, std::optional<VideoAttributes>> videos_;
  std::map<std::pair<std::string, std::string>, std::optional<AudioAttributes>> audios_;  // with the format
};

// What keeps a video or bitmap from a track of that type ("Motion", "Still", "SlideShow").
[[nodiscard]] Findings JudgeForTrack(const VideoAttributes& seen, std::string_view trackType,
                                     const SourcePlay& play, const Rules& rules = Rules::Players);

// What a track keeps of a stream's first file.
AudioTraits TraitsOf(const AudioAttributes& audio);

}  // namespace quorvelant
