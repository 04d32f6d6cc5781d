// Whether a disc can carry a source, and if not, why: in the user's words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/quick_scan.h"
#include "analysis/video_probe.h"
#include "base/message.h"

namespace quorvelant {

inline constexpr std::int32_t MostAc3Kbps = 448;
inline constexpr std::int32_t LeastDtsKbps = 64;
inline constexpr std::int32_t MostDtsKbps = 1536;

struct DiscFit {
  std::vector<std::string> Reasons;  // why not; empty when a disc can carry it
  std::vector<std::string> Notes;    // what the author may want to know

  bool Fits() const { return Reasons.empty(); }
};

// What a frame_rate_code means, e.g. "29.97".
std::string_view FrameRateText(int code);

// Frame sizes of a disc: full, cropped, half and quarter, by the standard's height.
bool IsDiscSize(std::string_view standard, int width, int height);

// Why no disc can carry a video with these first headers, or this sound: kinds of analysis/messages.h without
// a place. Empty when one can.
std::vector<Message> FaultsOf(const VideoInfo& info);
std::vector<Message> FaultsOf(const AudioAttributes& audio);

// That a header claims a higher rate than a disc's picture may have: without a place, too.
std::optional<Message> WhyRateDoubtful(const VideoInfo& info);

DiscFit JudgeVideo(const VideoProbe& probe);
DiscFit JudgeAudio(const AudioAttributes& audio);

}  // namespace quorvelant
