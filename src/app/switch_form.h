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

#include "author/author_order.h"
#include "author/author_result.h"
#include "base/rules.h"
#include "base/user_interface.h"
#include "desk/user_folders.h"
#include "model/project.h"

namespace quorvelant {

// This form keeps every traditional number.
inline constexpr const Rules& SwitchFormRules = Rules::Classic;

struct Switches {
  std::string ScriptPath;
  std::string DestinationFolder;
  bool CreateOnStart = false;
  bool ExitOnFinish = false;
  bool AnalyseOnLoad = false;
  bool operator==(const Switches&) const = default;
};

// Whether the arguments are of this form: the first one is, or begins with, a switch, or is all blanks.
[[nodiscard]] bool IsSwitchForm(std::span<const std::string> arguments);

// The line as it was before the shell took the quotes away: an argument after "-i" or "-d" stands in double
// quotes, unless it still holds quotes of its own.
[[nodiscard]] std::string RawCommandLine(std::span<const std::string> arguments);

// Nothing when a path switch lacks the quotes around its path: the program then ends without a word.
[[nodiscard]] std::optional<Switches> ParseSwitches(std::string_view commandLine);

// Why a run with these switches cannot start; nothing where it can.
[[nodiscard]] std::optional<Message> WhyRefused(const Switches& switches);

// The rooms that a run needs, handed in so that every path through a run can be tested without them.
struct BatchServices {
  // Reads the script into the project. False when nothing may be authored from it; the reason is told.
  std::function<bool(const std::string& script, bool analyse, Project& project)> LoadScriptFile;
  // Makes the disc that the order says.
  std::function<AuthorResult(const Project& project, AuthorOrder order)> Author;
};

// A whole run; gives the exit status. Authoring goes by built-in settings, and with "-exit" these are what
// the settings file holds afterwards. A run that would leave the window open ends instead.
[[nodiscard]] int RunSwitchForm(std::span<const std::string> arguments, UserInterface& ui,
                                const EnvironmentLookup& environment, const BatchServices& services);

}  // namespace quorvelant
