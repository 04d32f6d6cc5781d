#include "app/window_start.h"

#include <unistd.h>

#include <array>
#include <filesystem>
#include <string>
#include <system_error>

namespace quorvelant {

void BecomeWindow(const EnvironmentLookup& environment) {
  if (environment("DISPLAY").empty() && environment("WAYLAND_DISPLAY").empty()) {
    return;
  }
  std::error_code failed;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", failed);
  std::string program = (self.parent_path() / "quorvelant-window").string();
  const std::array<char*, 2> arguments{program.data(), nullptr};
  if (!failed) {
    execv(program.c_str(), arguments.data());  // comes back only where it could not be started
  }
}

}  // namespace quorvelant
