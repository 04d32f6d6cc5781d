#pragma once

// The user interface that functions of lower rooms get within an operation.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/passing_ui.h"
#include "edit/outcome.h"

namespace quorvelant {

// Keeps errors and questions back, so that the operation's outcome can bring them; all else is passed on. A
// question whose answer is yes where nobody is there is passed on too.
class OperationUi : public PassingUi {
 public:
  OperationUi(UserInterface& next, Consent consent) : PassingUi(next), consent_(consent) {}

  void Tell(const Message& message) override {
    if (message.Level == Severity::Error) {
      errors_.push_back(message);
    } else {
      PassingUi::Tell(message);
    }
  }
  bool Ask(std::string_view title, std::string_view text, bool unattended) override {
    if (unattended) {
      return PassingUi::Ask(title, text, unattended);
    }
    if (consent_ == Consent::None && !question_) {
      question_ = Message{.Level = Severity::Information,
                          .Title = std::string(title),
                          .Text = std::string(text),
                          .Place = {}};
    }
    return consent_ == Consent::Given;
  }

  [[nodiscard]] bool HasErrors() const { return !errors_.empty(); }
  // Of a function that gave up: what it asked, or the last that it told; nothing where it was stopped.
  Outcome GaveUp() {
    if (question_) {
      return Outcome::Asks(*question_);
    }
    Message last = errors_.empty() ? Message{} : errors_.back();
    if (!errors_.empty()) {
      errors_.pop_back();
    }
    TellKept();
    return Outcome::Refused(std::move(last));
  }
  // Of one that went on in spite of some errors.
  void TellKept() {
    for (const Message& error : errors_) {
      PassingUi::Tell(error);
    }
    errors_.clear();
  }

 private:
  Consent consent_;
  std::vector<Message> errors_;
  std::optional<Message> question_;
};

}  // namespace quorvelant
