// An error that is a message.
#pragma once

#include <stdexcept>
#include <utility>

#include "base/message.h"

namespace quorvelant {

// Raised where the trouble is met and told at the edge of a room. what() is the message's text.
class MessageError : public std::runtime_error {
 public:
  explicit MessageError(Message message) : std::runtime_error(message.Text), message_(std::move(message)) {}

  const Message& What() const { return message_; }

 private:
  Message message_;
};

}  // namespace quorvelant
