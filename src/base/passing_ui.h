// A user interface in front of another.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/user_interface.h"

namespace quorvelant {

// Passes everything on: for one that says one thing differently.
class PassingUi : public UserInterface {
 public:
  explicit PassingUi(UserInterface& next) : next_(&next) {}

  void Tell(const Message& message) override { next_->Tell(message); }
  bool Ask(std::string_view title, std::string_view text, bool unattended) override {
    return next_->Ask(title, text, unattended);
  }
  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override {
    return next_->AskText(title, text, proposal);
  }
  void Status(std::string_view words) override { next_->Status(words); }
  void Progress(double done, double total) override { next_->Progress(done, total); }
  bool StopRequested() override { return next_->StopRequested(); }

 private:
  UserInterface* next_;
};

}  // namespace quorvelant
