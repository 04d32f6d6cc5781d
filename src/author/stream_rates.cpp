#include "author/stream_rates.h"

#include "author/messages.h"

namespace quorvelant {
namespace {

constexpr double MuxRate = 10.08;       // Mbit/s, with all headers
constexpr double LeastVideoRate = 0.3;  // Mbit/s: below this a film shows nothing
constexpr double PackBytes = 2048;
constexpr double Ac3PayloadBytes = 2016;
constexpr double PcmPayloadBytes = 2013;

// Mbit/s of packs.
double RateOf(const MuxAudioStream& stream) {
  const AudioTraits& traits = stream.Traits;
  const double kbps = stream.Pcm
                          ? static_cast<double>(traits.SampleRate) * traits.Quantisation * traits.ChannelCount
                          : static_cast<double>(traits.BitRate);
  return kbps / 1000 * PackBytes / (stream.Pcm ? PcmPayloadBytes : Ac3PayloadBytes);
}

}  // namespace

Findings JudgeRates(const MuxInput& input, const std::string& place, const Rules& rules) {
  double rate = 0;
  for (const MuxAudioStream& stream : input.Audio) {
    rate += RateOf(stream);
  }
  if (rate <= MuxRate - LeastVideoRate) {
    return {};
  }
  return ByRules(
      {MessageOf(message::StreamsBeyondRate, place, input.Name, input.Audio.size(), rate, MuxRate)}, rules);
}

}  // namespace quorvelant
