#pragma once

// What became of an operation on a project.

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "base/message.h"

namespace quorvelant {

class UserInterface;

// Operations never speak by themselves: the window's drag-over, a script of operations and the tests want the
// answer as a value. A refusal and a question leave the project as it was.
struct [[nodiscard]] Outcome {
  enum class Kind : std::uint8_t { Done, Refused, Asks };

  Kind Result = Kind::Done;
  Message Words;    // Refused: the box. Asks: title and text of a question with Yes and No
  std::string Key;  // Done: of what was made or changed

  [[nodiscard]] bool IsDone() const { return Result == Kind::Done; }

  static Outcome Done(std::string key = {}) { return {.Words = {}, .Key = std::move(key)}; }
  static Outcome Refused(Message words) {
    return {.Result = Kind::Refused, .Words = std::move(words), .Key = {}};
  }
  static Outcome Asks(Message question) {
    return {.Result = Kind::Asks, .Words = std::move(question), .Key = {}};
  }
};

// An operation that asks is called once more with the answer.
enum class Consent : std::uint8_t { None, Given };

// Calls the operation, tells a refusal, asks a question (nobody there: no) and calls again with the consent.
Outcome Carry(UserInterface& ui, const std::function<Outcome(Consent)>& operation);

}  // namespace quorvelant
