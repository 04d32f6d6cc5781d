#include "check/track_demand.h"

#include <algorithm>
#include <filesystem>

#include "base/counted.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/messages.h"
#include "disc/audio_start.h"
#include "model/messages.h"

namespace quorvelant {
namespace {

constexpr double MuxRate = 10.08;       // Mbit/s, with all headers
constexpr double LeastVideoRate = 0.3;  // Mbit/s: below this a film shows nothing
constexpr double PackBytes = 2048;
constexpr double Ac3PayloadBytes = 2016;
constexpr double PcmPayloadBytes = 2013;
constexpr double VideoPayloadBytes = 2025;
constexpr double BufferedMegabits = 1.86;  // of video, that a player holds

double MbitsOf(const SoundDemand& stream) {
  const AudioTraits& traits = stream.Traits;
  const double kbps = stream.Pcm
                          ? static_cast<double>(traits.SampleRate) * traits.Quantisation * traits.ChannelCount
                          : static_cast<double>(traits.BitRate);
  return kbps / 1000;
}

// Mbit/s of packs.
double RateOf(const SoundDemand& stream) {
  return MbitsOf(stream) * PackBytes / (stream.Pcm ? PcmPayloadBytes : Ac3PayloadBytes);
}

double SecondsOf(const SoundDemand& stream) {
  const double rate = MbitsOf(stream);
  return rate > 0 ? static_cast<double>(stream.Bytes) * 8 / 1e6 / rate : 0;
}

// Whether sound and picture together starve the player before the sound ends. A head may claim too much: the
// picture asks for no more than its files hold in the time of the longest stream.
bool Starves(const TrackDemand& track, double soundRate, double& pictureRate) {
  double seconds = 0;
  for (const SoundDemand& stream : track.Sound) {
    seconds = std::max(seconds, SecondsOf(stream));
  }
  if (track.Video.Kbps.value_or(0) == 0 || seconds == 0) {
    return false;
  }
  const double mbits =
      std::min(*track.Video.Kbps / 1e3, static_cast<double>(track.Video.Bytes) * 8 / 1e6 / seconds);
  pictureRate = mbits * PackBytes / VideoPayloadBytes;
  return (soundRate + pictureRate - MuxRate) * seconds > BufferedMegabits;
}

Findings JudgeRates(const TrackDemand& track, const std::string& place, const Rules& rules) {
  double rate = 0;
  for (const SoundDemand& stream : track.Sound) {
    rate += RateOf(stream);
  }
  if (rate > MuxRate - LeastVideoRate) {
    return ByRules({MessageOf(message::StreamsBeyondRate, place, track.Name,
                              Counted(track.Sound.size(), "stream"), rate, MuxRate)},
                   rules);
  }
  double pictureRate = 0;
  if (!Starves(track, rate, pictureRate)) {
    return {};
  }
  return ByRules({MessageOf(message::FilmBeyondRate, place, track.Name, pictureRate, rate, MuxRate)}, rules);
}

// The stamps of a track count 90,000 a second in 32 bits.
Findings JudgeLength(const TrackDemand& track, const std::string& place, const Rules& rules) {
  constexpr std::int64_t MostSeconds = 47721;
  const std::int64_t seconds = track.Video.HeldFrames / track.FramesPerSecond;
  if (seconds <= MostSeconds) {
    return {};
  }
  return ByRules({MessageOf(message::TrackTooLong, place, track.Name, seconds / 3600, seconds / 60 % 60)},
                 rules);
}

Findings JudgeDelays(const TrackDemand& track, const std::string& place, const Rules& rules) {
  const std::size_t count = track.Sound.size();
  Findings findings;
  for (std::size_t i = 0; i < count; ++i) {
    const SoundDemand& stream = track.Sound[i];
    if (!IsDelayKept(stream.DelayMs, i, count, rules)) {
      findings.push_back(MessageOf(message::AudioDelayUnfit, place, stream.Number, track.Name, stream.DelayMs,
                                   LeastDelayAtAllMs(i, count, rules), MostDelayAtAllMs));
    }
  }
  return findings;
}

}  // namespace

void VideoDemand::AddFilm(const VideoInfo& info, const std::string& path) {
  std::error_code failed;
  const std::uintmax_t bytes = std::filesystem::file_size(path, failed);
  Kbps = std::min(Kbps.value_or(info.Kbps), info.VariableRate ? 0 : info.Kbps);
  Bytes += failed ? 0 : bytes;
}

std::optional<std::int64_t> HeldFrames(const Track& track, const VideoPlay& play, int framesPerSecond) {
  if (EqualNoCase(track.TrackType, "Motion")) {
    return std::nullopt;
  }
  const std::int64_t frames = TimecodeToFrames(play.SlideDuration, framesPerSecond);
  const bool isHeld = frames > (EqualNoCase(track.TrackType, "Still") ? 1 : 0);  // of one frame: for ever
  return isHeld ? std::optional(frames) : std::nullopt;
}

Findings JudgeDemand(const TrackDemand& track, const std::string& place, const Rules& rules) {
  Findings findings;
  if (!track.Video.HasFiles) {
    findings.push_back(MessageOf(message::TrackWithoutVideo, place, track.Name));
  }
  Append(findings, JudgeLength(track, place, rules));
  Append(findings, JudgeDelays(track, place, rules));
  Append(findings, JudgeRates(track, place, rules));
  return findings;
}

}  // namespace quorvelant
