// The command line of today's habits: `quorvelant COMMAND ...`.
#pragma once

#include <functional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include "app/console_ui.h"
#include "base/user_interface.h"
#include "desk/settings.h"
#include "desk/user_folders.h"

namespace CLI {
class App;
}

namespace quorvelant {

inline constexpr int ExitDone = 0;
inline constexpr int ExitFailed = 1;
inline constexpr int ExitUsage = 2;

// What a command is given. Each command stands in app/command_<name>.{h,cpp} and registers itself with one
// function `void AddNameCommand(CLI::App&, CommandContext&)`, which adds a subcommand with its options and a
// callback; the callback leaves the exit status here. Results go to `Out`, everything else through `Ui`.
struct CommandContext {
  UserInterface& Ui;
  std::ostream& Out;
  Settings Options;              // read already; never written back
  std::string LogFile;           // empty where there is no place for one
  std::string CacheFolder = {};  // empty where there is no place for one
  std::string SourceDate = {};   // the environment's SOURCE_DATE_EPOCH
  int ExitStatus = ExitDone;
  bool Quiet = false;

  // Prints what a run came to, which no other program reads: --quiet leaves it out.
  void Report(std::string_view text) const {
    if (!Quiet) {
      Out << text << std::flush;
    }
  }
};

// Gives `program` its description, every command and their options, as `--help` shows them, the man page and
// the completion too. `setVerbosity` is called for --quiet and --verbose.
void AddCommandForm(CLI::App& program, CommandContext& context,
                    const std::function<void(Verbosity)>& setVerbosity);

// Runs the command that `arguments` (without the program's name) say, and gives the exit status: 0 done,
// 1 failed, 2 wrong usage. Without any argument the help is printed. `setVerbosity` is called for --quiet and
// --verbose.
int RunCommandForm(
    std::span<const std::string> arguments, UserInterface& ui, std::ostream& out, std::ostream& err,
    const EnvironmentLookup& environment,
    const std::function<void(Verbosity)>& setVerbosity = [](Verbosity) {});

}  // namespace quorvelant
