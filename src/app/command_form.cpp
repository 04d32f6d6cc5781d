#include "app/command_form.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <new>
#include <ostream>
#include <vector>

#include "app/command_author.h"
#include "app/command_check.h"
#include "app/command_command.h"
#include "app/command_convert.h"
#include "app/command_index.h"
#include "app/command_picture.h"
#include "app/command_probe.h"
#include "app/command_still.h"
#include "app/command_subtitles.h"
#include "app/messages.h"
#include "app/version.h"
#include "base/message_error.h"

namespace quorvelant {

namespace {

constexpr std::string_view Description =
    "Authors DVD-Video: MPEG-2 video, AC3 and PCM audio, bitmaps and a project script become a complete "
    "VIDEO_TS folder.";
constexpr std::string_view Footer =
    "Exit status: 0 done, 1 failed, 2 wrong usage.\n"
    "Existing scripts and schedulers use:  quorvelant -i \"project.qvp\" -d \"folder\" -create -exit "
    "-analyse";

// The commands in the order in which the help lists them: one line each.
void AddCommands(CLI::App& program, CommandContext& context) {
  AddAuthorCommand(program, context);
  AddCheckCommand(program, context);
  AddConvertCommand(program, context);
  AddProbeCommand(program, context);
  AddIndexCommand(program, context);
  AddCommandCommand(program, context);
  AddSubtitlesCommand(program, context);
  AddPictureCommand(program, context);
  AddStillCommand(program, context);
}

// Results that nobody got are no success.
bool Written(std::ostream& out, UserInterface& ui) {
  out.flush();
  if (!out) {
    ui.Tell(MessageOf(message::ResultsNotWritten, {}));
  }
  return static_cast<bool>(out);
}

int Run(CLI::App& program, std::span<const std::string> arguments, CommandContext& context,
        std::ostream& err) {
  const std::string& first = arguments.front();
  const bool known =
      !program.get_subcommands([&first](const CLI::App* command) { return command->check_name(first); })
           .empty();
  if (!first.starts_with('-') && !known) {
    err << "There is no command \"" << first << "\"\nRun with --help for more information.\n";
    return ExitUsage;
  }
  try {
    // The parser takes its arguments from the end.
    program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::ParseError& outcome) {
    const bool asked = outcome.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
    program.exit(outcome, context.Out, err);
    return asked ? ExitDone : ExitUsage;
  }
  return context.ExitStatus;
}

}  // namespace

int RunCommandForm(std::span<const std::string> arguments, UserInterface& ui, std::ostream& out,
                   std::ostream& err, const EnvironmentLookup& environment) {
  CommandContext context{.Ui = ui,
                         .Out = out,
                         .Options = ReadUserSettings(SettingsFile(environment)),
                         .LogFile = LogFile(environment),
                         .CacheFolder = CacheFolder(environment)};
  CLI::App program{std::string(Description), "quorvelant"};
  program.set_version_flag("--version", std::string("quorvelant ") + std::string(ProgramVersion()));
  program.footer(std::string(Footer));
  program.require_subcommand(arguments.empty() ? 0 : 1);
  AddCommands(program, context);
  try {
    int status = ExitDone;
    if (arguments.empty()) {
      out << program.help();
    } else {
      status = Run(program, arguments, context, err);
    }
    return Written(out, ui) ? status : std::max(status, ExitFailed);
  } catch (const std::bad_alloc&) {
    ui.Tell(MessageOf(message::OutOfMemory, {}));
  } catch (const MessageError& fault) {
    Message message = fault.What();
    message.Title = "Error";
    ui.Tell(message);
  } catch (const std::exception& fault) {
    ui.Tell(MessageOf(message::UnexpectedFault, {}, fault.what()));
  }
  return ExitFailed;
}

}  // namespace quorvelant
