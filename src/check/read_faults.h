// What could not be read of sources.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "analysis/messages.h"
#include "base/passing_ui.h"

namespace quorvelant {

// Keeps back what the analysis tells of files that cannot be read on, for findings on the plays that name
// them.
class KeptReadFaults : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& message) override {
    if (message.Is(message::SourceReadFailed)) {
      ByFile.emplace(message.Place, message.Text);
    } else {
      PassingUi::Tell(message);
    }
  }

  std::map<std::string, std::string> ByFile;
};

// Passes status, progress and the wish to stop on and keeps boxes back, for a command that tells everything
// itself when the work is done. What of the sources could not be read is kept: what is not known of them
// would be written wrong.
class ReadFaults : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& message) override {
    if (message.Is(message::SourceReadFailed)) {
      Told.push_back(message);
    }
  }
  std::vector<Message> Told;
};

}  // namespace quorvelant
