#pragma once

// Operations one after another.

#include <string>
#include <utility>

#include "edit/outcome.h"

namespace quorvelant {

// Goes on with operations until one is not done.
class Steps {
 public:
  // The key of what was done; empty, and nothing was called, after a refusal.
  template <class Operation>
  std::string Do(Operation operation) {
    if (refusal_.IsDone()) {
      Outcome outcome = operation();
      if (outcome.IsDone()) {
        return std::move(outcome.Key);
      }
      refusal_ = std::move(outcome);
    }
    return {};
  }
  [[nodiscard]] bool GoOn() const { return refusal_.IsDone(); }
  // Done where all were.
  [[nodiscard]] const Outcome& Refusal() const { return refusal_; }

 private:
  Outcome refusal_ = Outcome::Done();
};

}  // namespace quorvelant
