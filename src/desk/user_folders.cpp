#include "desk/user_folders.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace quorvelant {

namespace {

std::string UserFile(const EnvironmentLookup& environment, const std::string& variable,
                     std::string_view belowHome, std::string_view name) {
  std::string folder = environment(variable);
  if (!folder.starts_with('/')) {
    folder = environment("HOME");
    if (folder.empty()) {
      return {};
    }
    folder.append("/").append(belowHome);
  }
  return folder.append("/quorvelant/").append(name);
}

}  // namespace

std::string ProcessEnvironment(const std::string& name) {
  const char* value = std::getenv(name.c_str());  // NOLINT(concurrency-mt-unsafe): read once at the start
  return value == nullptr ? std::string() : std::string(value);
}

std::string SettingsFile(const EnvironmentLookup& environment) {
  return UserFile(environment, "XDG_CONFIG_HOME", ".config", "Quorvelant.ini");
}

std::string LogFile(const EnvironmentLookup& environment) {
  return UserFile(environment, "XDG_STATE_HOME", ".local/state", "Quorvelant.LOG");
}

std::string CacheFolder(const EnvironmentLookup& environment) {
  return UserFile(environment, "XDG_CACHE_HOME", ".cache", "indexes");
}

}  // namespace quorvelant
