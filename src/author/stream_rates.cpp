#include "author/stream_rates.h"

#include <algorithm>
#include <numeric>

#include "author/messages.h"

namespace quorvelant {
namespace {

constexpr double MuxRate = 10.08;       // Mbit/s, with all headers
constexpr double LeastVideoRate = 0.3;  // Mbit/s: below this a film shows nothing
constexpr double PackBytes = 2048;
constexpr double Ac3PayloadBytes = 2016;
constexpr double PcmPayloadBytes = 2013;
constexpr double VideoPayloadBytes = 2025;
constexpr double BufferedMegabits = 1.86;  // of video, that a player holds

double MbitsOf(const MuxAudioStream& stream) {
  const AudioTraits& traits = stream.Traits;
  const double kbps = stream.Pcm
                          ? static_cast<double>(traits.SampleRate) * traits.Quantisation * traits.ChannelCount
                          : static_cast<double>(traits.BitRate);
  return kbps / 1000;
}

// Mbit/s of packs.
double RateOf(const MuxAudioStream& stream) {
  return MbitsOf(stream) * PackBytes / (stream.Pcm ? PcmPayloadBytes : Ac3PayloadBytes);
}

double SecondsOf(const MuxAudioStream& stream) {
  const double bytes = std::accumulate(stream.DataBytes.begin(), stream.DataBytes.end(), 0.0);
  const double rate = MbitsOf(stream);
  return rate > 0 ? bytes * 8 / 1e6 / rate : 0;
}

// Whether sound and picture together starve the player before the sound ends. A head may claim too much: the
// picture asks for no more than its files hold in the time of the longest stream.
bool Starves(const MuxInput& input, const VideoDemand& video, double soundRate, double& pictureRate) {
  double seconds = 0;
  for (const MuxAudioStream& stream : input.Audio) {
    seconds = std::max(seconds, SecondsOf(stream));
  }
  if (video.Kbps.value_or(0) == 0 || seconds == 0) {
    return false;
  }
  const double mbits = std::min(*video.Kbps / 1e3, static_cast<double>(video.Bytes) * 8 / 1e6 / seconds);
  pictureRate = mbits * PackBytes / VideoPayloadBytes;
  return (soundRate + pictureRate - MuxRate) * seconds > BufferedMegabits;
}

}  // namespace

Findings JudgeRates(const MuxInput& input, const VideoDemand& video, const std::string& place,
                    const Rules& rules) {
  double rate = 0;
  for (const MuxAudioStream& stream : input.Audio) {
    rate += RateOf(stream);
  }
  if (rate > MuxRate - LeastVideoRate) {
    return ByRules(
        {MessageOf(message::StreamsBeyondRate, place, input.Name, input.Audio.size(), rate, MuxRate)}, rules);
  }
  double pictureRate = 0;
  if (!Starves(input, video, rate, pictureRate)) {
    return {};
  }
  return ByRules({MessageOf(message::FilmBeyondRate, place, input.Name, pictureRate, rate, MuxRate)}, rules);
}

}  // namespace quorvelant
