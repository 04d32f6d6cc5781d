// The option `--rules` of the commands.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "base/rules.h"

namespace quorvelant {

struct RulesOption {
  std::string Name = "players";  // or "classic"

  const Rules& Used() const { return Name == "classic" ? Rules::Classic : Rules::Players; }
};

// `decides` tells what the choice changes for this command, in the words of its help.
void AddRulesOption(CLI::App& command, RulesOption& option, const std::string& decides);

}  // namespace quorvelant
