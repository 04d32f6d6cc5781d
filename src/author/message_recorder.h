// A user interface before another that keeps what is told.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "base/passing_ui.h"

namespace quorvelant {

// Passes everything on. Not for several threads.
class MessageRecorder : public PassingUi {
 public:
  using PassingUi::PassingUi;

  void Tell(const Message& message) override {
    messages_.push_back(message);
    PassingUi::Tell(message);
  }

  [[nodiscard]] bool HasWarnings() const {
    return std::ranges::count(messages_, Severity::Warning, &Message::Level) > 0;
  }
  [[nodiscard]] std::vector<Message> Release() { return std::exchange(messages_, {}); }

 private:
  std::vector<Message> messages_;
};

}  // namespace quorvelant
