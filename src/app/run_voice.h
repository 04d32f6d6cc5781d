// The voice of one authoring run: passes everything on, counts what was told, and writes events.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "base/passing_ui.h"

namespace quorvelant {

// With `events`, every status, step of progress (in whole per cents) and message is a JSON object on a line
// of `out`, and status and progress go nowhere else; messages always reach `ui` too.
class RunVoice : public PassingUi {
 public:
  RunVoice(UserInterface& ui, std::ostream& out, bool events) : PassingUi(ui), out_(&out), events_(events) {}

  void Tell(const Message& message) override;
  bool Ask(std::string_view title, std::string_view text, bool unattended) override;
  void Status(std::string_view words) override;
  void Progress(double done, double total) override;

  bool Events() const { return events_; }
  // A line of JSON.
  void Write(const std::string& event);
  int Warnings() const { return warnings_; }
  int Errors() const { return errors_; }

 private:
  std::ostream* out_;
  bool events_;
  int percent_ = -1;
  int warnings_ = 0;
  int errors_ = 0;
};

}  // namespace quorvelant
