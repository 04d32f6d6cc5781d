#include "check/stream_numbers.h"

#include "check/messages.h"

namespace quorvelant {

std::optional<Message> StreamNumbers::WhyRefused(std::int32_t number, const std::string& place) {
  if (number < 0 || static_cast<std::size_t>(number) >= count_) {
    return MessageOf(message::StreamNumberBeyond, place, kind_, count_ - 1, number);
  }
  if (!taken_.insert(number).second) {
    return MessageOf(message::StreamNumberRepeated, place, kind_, number);
  }
  return std::nullopt;
}

}  // namespace quorvelant
