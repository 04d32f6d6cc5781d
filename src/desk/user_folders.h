// Where the program keeps its own two files.
#pragma once

#include <functional>
#include <string>

namespace quorvelant {

// The value of an environment variable, empty where it is not set.
using EnvironmentLookup = std::function<std::string(const std::string& name)>;
std::string ProcessEnvironment(const std::string& name);

// "<config>/quorvelant/Quorvelant.ini" and "<state>/quorvelant/Quorvelant.LOG" by the XDG Base Directory
// rules: XDG_CONFIG_HOME (XDG_STATE_HOME) when it is an absolute path, else ".config" (".local/state")
// below HOME. Empty where neither is set.
std::string SettingsFile(const EnvironmentLookup& environment);
std::string LogFile(const EnvironmentLookup& environment);
// For indexes of files whose own folder cannot be written to.
std::string CacheFolder(const EnvironmentLookup& environment);

}  // namespace quorvelant
