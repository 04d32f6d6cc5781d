// The command line of the window.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvelant {

struct WindowArguments {
  std::vector<std::string> Files;  // to open
  std::string Printed;             // for --help and --version: no window opens
  std::string Fault;               // what is wrong with them; nothing opens then either
};

// Without the program's name, and without what Qt takes for itself ("-platform offscreen").
[[nodiscard]] WindowArguments ReadWindowArguments(const std::vector<std::string>& arguments);

}  // namespace quorvelant
