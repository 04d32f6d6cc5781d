// One run of the command form, with all that it said.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "app/command_form.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {

struct CommandRun {
  explicit CommandRun(
      const std::vector<std::string>& arguments,
      const EnvironmentLookup& environment = [](const std::string&) { return std::string(); },
      std::function<bool()> stopWhen = {}) {
    std::ostringstream out;
    std::ostringstream err;
    Ui.Unattended = true;
    Ui.StopWhen = std::move(stopWhen);
    Status = RunCommandForm(arguments, Ui, out, err, environment);
    Out = out.str();
    Err = err.str();
    Messages = Ui.Messages;
  }
  std::string LastText() const { return Messages.empty() ? std::string() : Messages.back().Text; }

  RecordingUi Ui;
  int Status = 0;
  std::string Out;
  std::string Err;
  std::vector<Message> Messages;
};

}  // namespace quorvelant
