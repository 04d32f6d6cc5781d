// Which channels a stream of sound has.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace quorvelant {

// Presence of left, right, centre, left surround, right surround, single rear, low frequency; and the
// total number of channels.
using AudioChannels = std::array<std::uint8_t, 8>;
inline constexpr std::size_t ChannelTotal = 7;

enum class Channel : std::uint8_t {
  Left,
  Right,
  Centre,
  LeftSurround,
  RightSurround,
  SingleRear,
  LowFrequency
};

constexpr AudioChannels ChannelsOf(std::initializer_list<Channel> list) {
  AudioChannels channels{};
  for (const Channel channel : list) {
    channels[static_cast<std::size_t>(channel)] = 1;
    ++channels[ChannelTotal];
  }
  return channels;
}

constexpr void AddLowFrequency(AudioChannels& channels) {
  channels[static_cast<std::size_t>(Channel::LowFrequency)] = 1;
  ++channels[ChannelTotal];
}

}  // namespace quorvelant
