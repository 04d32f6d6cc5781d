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
#include "app/command_edit.h"
#include "app/command_index.h"
#include "app/command_iso.h"
#include "app/command_new.h"
#include "app/command_picture.h"
#include "app/command_probe.h"
#include "app/command_still.h"
#include "app/command_subtitles.h"
#include "app/command_verify.h"
#include "app/command_walk.h"
#include "app/command_wizard.h"
#include "app/messages.h"
#include "base/message_error.h"
#include "desk/version.h"

namespace quorvelant {

namespace {

constexpr std::string_view Description =
    "Authors DVD-Video: MPEG-2 video, AC3 and PCM audio, bitmaps and a project script become a complete "
    "VIDEO_TS folder.";
constexpr std::string_view Footer =
    "quorvelant COMMAND --help tells more of each.\n"
    "Exit status: 0 done, 1 failed, 2 wrong usage.\n"
    "Existing scripts and schedulers use:  quorvelant -i \"project.qvp\" -d \"folder\" -create -exit "
    "-analyse";

std::string UsageText(const std::string& fault) {
  return "error: " + fault + "\nnote: run with --help for more information\n";
}

// The commands in the order in which the help lists them: one line each.
void AddCommands(CLI::App& program, CommandContext& context) {
  AddAuthorCommand(program, context);
  AddCheckCommand(program, context);
  AddIsoCommand(program, context);
  AddConvertCommand(program, context);
  AddNewCommand(program, context);
  AddWizardCommand(program, context);
  AddEditCommand(program, context);
  AddWalkCommand(program, context);
  AddProbeCommand(program, context);
  AddVerifyCommand(program, context);
  AddIndexCommand(program, context);
  AddCommandCommand(program, context);
  AddSubtitlesCommand(program, context);
  AddPictureCommand(program, context);
  AddStillCommand(program, context);
}

// The options that every command has.
void AddVerbosity(CLI::App& program, CommandContext& context,
                  const std::function<void(Verbosity)>& setVerbosity) {
  for (CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; })) {
    const auto set = [&context, &setVerbosity](Verbosity loudness) {
      context.Quiet = loudness == Verbosity::Quiet;
      setVerbosity(loudness);
    };
    CLI::Option* quiet = command->add_flag_callback(
        "-q,--quiet", [set] { set(Verbosity::Quiet); }, "Print warnings, errors and data alone");
    command
        ->add_flag_callback(
            "-v,--verbose", [set] { set(Verbosity::Verbose); },
            "Print each stage as it begins, and the code of each message")
        ->excludes(quiet);
  }
}

std::string UsageFault(const CLI::App* /*program*/, const CLI::Error& fault) {
  return UsageText(fault.what());
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
    err << UsageText("There is no command \"" + first + "\"");
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

void AddCommandForm(CLI::App& program, CommandContext& context,
                    const std::function<void(Verbosity)>& setVerbosity) {
  program.name("quorvelant");
  program.description(std::string(Description));
  program.set_version_flag("--version", std::string("quorvelant ") + std::string(ProgramVersion()));
  program.footer(std::string(Footer));
  AddCommands(program, context);
  AddVerbosity(program, context, setVerbosity);
  program.failure_message(UsageFault);
}

int RunCommandForm(std::span<const std::string> arguments, UserInterface& ui, std::ostream& out,
                   std::ostream& err, const EnvironmentLookup& environment,
                   const std::function<void(Verbosity)>& setVerbosity) {
  CommandContext context{.Ui = ui,
                         .Out = out,
                         .Options = ReadUserSettings(SettingsFile(environment), ui),
                         .LogFile = LogFile(environment),
                         .CacheFolder = CacheFolder(environment),
                         .SourceDate = environment("SOURCE_DATE_EPOCH")};
  CLI::App program;
  AddCommandForm(program, context, setVerbosity);
  program.require_subcommand(arguments.empty() ? 0 : 1);
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
    ui.Tell(fault.What());
  } catch (const std::exception& fault) {
    ui.Tell(MessageOf(message::UnexpectedFault, {}, fault.what()));
  }
  return ExitFailed;
}

}  // namespace quorvelant
