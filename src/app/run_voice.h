// The voice of one authoring run: passes everything on, counts what was told, and writes events.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "base/user_interface.h"

namespace quorvelant {

// With `events`, every status, step of progress (in whole per cents) and message is a JSON object on a line
// of `out`, and status and progress go nowhere else; messages always reach `ui` too.
class RunVoice : public UserInterface {
 public:
  RunVoice(UserInterface& ui, std::ostream& out, bool events) : ui_(&ui), out_(&out), events_(events) {}

  void Tell(const Message& message) override;
  bool Ask(std::string_view title, std::string_view text, bool unattended) override;
  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override;
  void Status(std::string_view words) override;
  void Progress(double done, double total) override;
  bool StopRequested() override { return ui_->StopRequested(); }

  bool Events() const { return events_; }
  // A line of JSON.
  void Write(const std::string& event);
  int Warnings() const { return warnings_; }
  int Errors() const { return errors_; }

 private:
  UserInterface* ui_;
  std::ostream* out_;
  bool events_;
  int percent_ = -1;
  int warnings_ = 0;
  int errors_ = 0;
};

}  // namespace quorvelant
