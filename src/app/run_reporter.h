// The user interface of one authoring run.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "app/told_messages.h"
#include "base/passing_ui.h"

namespace quorvelant {

// With `events`, every status, step of progress (in whole per cents), question and message is a JSON object
// on a line of `out`, and status and progress go nowhere else; messages reach `ui` too. Each message is told
// once.
class RunReporter : public PassingUi {
 public:
  RunReporter(UserInterface& ui, std::ostream& out, bool events)
      : PassingUi(ui), out_(&out), events_(events) {}

  void Tell(const Message& message) override;
  bool Ask(std::string_view title, std::string_view text, bool unattended) override;
  void Status(std::string_view words) override;
  void Progress(double done, double total) override;

 private:
  void WriteEvent(const std::string& event);

  std::ostream* out_;
  bool events_;
  int percent_ = -1;
  ToldMessages told_;
};

}  // namespace quorvelant
