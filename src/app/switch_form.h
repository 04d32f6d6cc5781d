// The command line of existing scripts and schedulers:
//
//   quorvelant -i "project.qvp" -d "folder" -create -exit -analyse
//
// Its five switches are found anywhere in the whole line, also within a path, and never by words.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "app/settings.h"
#include "app/user_folders.h"
#include "base/log.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

inline constexpr std::string_view NoScript = "No script file specified";
inline constexpr std::string_view NoDestination = "No Destination folder specified";
inline constexpr std::string_view ScriptNotFound = "Unable to find script file: ";

struct Switches {
  std::string ScriptPath;
  std::string DestinationFolder;
  bool CreateOnStart = false;
  bool ExitOnFinish = false;
  bool AnalyseOnLoad = false;
  bool operator==(const Switches&) const = default;
};

// Whether the arguments are of this form: the first one is, or begins with, a switch, or is all blanks.
bool IsSwitchForm(std::span<const std::string> arguments);

// The line as it was before the shell took the quotes away: an argument behind "-i" or "-d" stands in double
// quotes, unless it still holds quotes of its own.
std::string RawCommandLine(std::span<const std::string> arguments);

// Nothing when a path switch lacks the quotes around its path: the program then ends without a word.
std::optional<Switches> ParseSwitches(std::string_view commandLine);

// Why a run with these switches cannot start; empty where it can.
std::string RefuseSwitches(const Switches& switches);

// The rooms that a run needs, handed in so that every path through a run can be tested without them.
struct BatchServices {
  // Reads the script into the project. False when nothing may be authored from it; the reason is told.
  std::function<bool(const std::string& script, bool analyse, Project& project)> LoadScriptFile;
  // Makes the disc in the project's destination folder. False when there is none at the end; told.
  std::function<bool(Project& project, const Settings& settings, bool exitOnFinish, Log& log)> Author;
};

// A whole run; gives the exit status. Authoring goes by built-in settings, and with "-exit" these are what
// the settings file holds afterwards. A run that would leave the window open ends instead.
int RunSwitchForm(std::span<const std::string> arguments, UserInterface& ui,
                  const EnvironmentLookup& environment, const BatchServices& services);

}  // namespace quorvelant
