// Which stream numbers of a track are taken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "base/message.h"
#include "disc/limits.h"

namespace quorvelant {

// The numbers of the audio or the subpicture streams of one track, stream after stream.
class StreamNumbers {
 public:
  static StreamNumbers OfAudio() { return {"Audio", AudioStreamCount}; }
  static StreamNumbers OfSubpictures() { return {"Subpicture", SubStreamCount}; }

  // Why a stream cannot be written under its number: a warning where no disc has the number, which costs
  // the stream, and an error where an earlier stream has it. Otherwise the number is taken now.
  std::optional<Message> WhyRefused(std::int32_t number, const std::string& place);

 private:
  StreamNumbers(std::string_view kind, std::size_t count) : kind_(kind), count_(count) {}

  std::string_view kind_;
  std::size_t count_;
  std::unordered_set<std::int32_t> taken_;
};

}  // namespace quorvelant
