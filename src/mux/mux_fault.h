// How a track's multiplex ends before its time. Raised by the steps, told once by MuxTrack.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "base/message.h"

namespace quorvelant {

// A failure that ends the build. The place is a file, "file@byte", or empty where the text says it all.
struct MuxFault : std::runtime_error {
  template <class... Values>
  MuxFault(const MessageKind& kind, std::string place, const Values&... values)
      : MuxFault(MessageOf(kind, std::move(place), values...)) {}
  explicit MuxFault(Message message) : std::runtime_error(message.Text), Told(std::move(message)) {}
  Message Told;
};

// The user asked to stop.
struct MuxStopped : std::runtime_error {
  MuxStopped() : std::runtime_error("stopped") {}
};

}  // namespace quorvelant
