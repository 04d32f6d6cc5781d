// The user interface where nobody is there.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/user_interface.h"

namespace quorvelant {

// Everything is heard and nothing kept; questions get the answer for nobody.
class SilentUi : public UserInterface {
 public:
  void Tell(const Message& /*message*/) override {}
  bool Ask(std::string_view /*title*/, std::string_view /*text*/, bool unattended) override {
    return unattended;
  }
  std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*text*/,
                                     std::string_view /*proposal*/) override {
    return std::nullopt;
  }
  void Status(std::string_view /*words*/) override {}
  void Progress(double /*done*/, double /*total*/) override {}
  bool StopRequested() override { return false; }
};

}  // namespace quorvelant
