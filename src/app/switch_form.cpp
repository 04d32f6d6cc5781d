#include "app/switch_form.h"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <system_error>
#include <vector>

#include "app/command_author.h"
#include "app/command_form.h"
#include "app/messages.h"
#include "base/log.h"
#include "base/random.h"
#include "base/text.h"
#include "desk/author_options.h"
#include "desk/messages.h"
#include "desk/settings.h"
#include "desk/version.h"

namespace quorvelant {

namespace {

constexpr std::string_view ScriptSwitch = "-i";
constexpr std::string_view DestinationSwitch = "-d";
constexpr std::string_view CreateSwitch = "-create";
constexpr std::string_view ExitSwitch = "-exit";
constexpr std::string_view AnalyseSwitch = "-analyse";

constexpr std::string_view CompilingWords = "Quorvelant Compiling....";
constexpr std::string_view InitialisingWords = "Initialising Database...";
constexpr std::string_view ReadyWords = "Ready";

// The path in quotes directly after "<name> ": empty without the switch, nothing without the quotes.
std::optional<std::string> QuotedPath(std::string_view line, std::string_view name) {
  const std::string spaced = std::string(name) + " ";
  if (!Contains(line, spaced)) {
    return std::string();
  }
  const std::string opening = spaced + "\"";
  const std::size_t at = line.find(opening);
  if (at == std::string_view::npos) {
    return std::nullopt;
  }
  // The piece ends at the next path of the same switch too.
  std::string_view piece = line.substr(at + opening.size());
  piece = piece.substr(0, piece.find(opening));
  return std::string(Trim(piece.substr(0, piece.find('"'))));
}

bool ScriptExists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(SystemPath(path), ignored);
}

// A relative folder of the command line counts from where the program was started; one of a script counts
// from the script.
std::string FromHere(const std::string& folder) {
  const bool absolute = SystemPath(folder) == SystemPath(folder, "/");
  std::error_code failed;
  return absolute ? folder : SystemPath(folder, std::filesystem::current_path(failed).string());
}

bool AuthorBatch(const Switches& switches, const Project& project, UserInterface& ui,
                 const EnvironmentLookup& environment, const BatchServices& services) {
  ui.Status(CompilingWords);
  Settings settings;
  settings.DestinationFolder = project.DestinationFolder;
  AuthorOrder order = OrderOf(settings, SwitchFormRules);
  order.Folder = SystemPath(project.DestinationFolder, project.SourceFolder());
  order.InPlace = true;
  order.ReadBack = false;
  order.LogFile = LogFile(environment);
  const bool done = services.Author(project, std::move(order)).Outcome == AuthorOutcome::Done;
  if (!switches.ExitOnFinish) {
    if (done) {
      ui.Tell(MessageOf(message::DiscComplete, {}));
    }
    ui.Status(VersionCaption());
  } else if (const std::string file = SettingsFile(environment);
             !file.empty() && !WriteSettings(file, settings)) {
    ui.Tell(MessageOf(message::SettingsNotWritten, file));
  }
  return done;
}

int RunSwitches(const Switches& switches, UserInterface& ui, const EnvironmentLookup& environment,
                const BatchServices& services) {
  StartLog(LogFile(environment));
  Project project;
  project.DestinationFolder = FromHere(switches.DestinationFolder);
  const bool loaded = services.LoadScriptFile(switches.ScriptPath, switches.AnalyseOnLoad, project);
  if (project.DestinationFolder.empty()) {
    project.DestinationFolder = FromHere(switches.DestinationFolder);
  }
  if (switches.CreateOnStart && loaded) {
    return AuthorBatch(switches, project, ui, environment, services) ? ExitDone : ExitFailed;
  }
  ui.Status(InitialisingWords);
  ui.Status(ReadyWords);
  return loaded ? ExitDone : ExitFailed;
}

}  // namespace

bool IsSwitchForm(std::span<const std::string> arguments) {
  if (arguments.empty()) {
    return false;
  }
  const std::string_view line = Trim(arguments.front());
  if (line.empty()) {
    return !arguments.front().empty();  // a line of blanks is no empty line: it lacks its script
  }
  const std::string_view first = line.substr(0, line.find(' '));
  const std::array switches{ScriptSwitch, DestinationSwitch, CreateSwitch, ExitSwitch, AnalyseSwitch};
  return std::find(switches.begin(), switches.end(), first) != switches.end();
}

std::string RawCommandLine(std::span<const std::string> arguments) {
  std::string line;
  bool pathNext = false;
  for (const std::string& argument : arguments) {
    if (!line.empty()) {
      line += ' ';
    }
    line += pathNext && !Contains(argument, "\"") ? "\"" + argument + "\"" : argument;
    pathNext = argument == ScriptSwitch || argument == DestinationSwitch;
  }
  return line;
}

std::optional<Switches> ParseSwitches(std::string_view commandLine) {
  const auto script = QuotedPath(commandLine, ScriptSwitch);
  auto destination = QuotedPath(commandLine, DestinationSwitch);
  if (!script || !destination) {
    return std::nullopt;
  }
  if (destination->ends_with('\\')) {
    destination->pop_back();
  }
  return Switches{.ScriptPath = *script,
                  .DestinationFolder = *destination,
                  .CreateOnStart = Contains(commandLine, CreateSwitch),
                  .ExitOnFinish = Contains(commandLine, ExitSwitch),
                  .AnalyseOnLoad = Contains(commandLine, AnalyseSwitch)};
}

std::optional<Message> WhyRefused(const Switches& switches) {
  if (switches.ScriptPath.empty()) {
    return MessageOf(message::NoScript, {});
  }
  if (switches.DestinationFolder.empty()) {
    return MessageOf(message::NoDestination, {});
  }
  if (!ScriptExists(switches.ScriptPath)) {
    return MessageOf(message::ScriptNotFound, {}, switches.ScriptPath);
  }
  return std::nullopt;
}

int RunSwitchForm(std::span<const std::string> arguments, UserInterface& ui,
                  const EnvironmentLookup& environment, const BatchServices& services) {
  const std::optional<Switches> switches = ParseSwitches(RawCommandLine(arguments));
  if (!switches) {
    return ExitFailed;
  }
  if (const auto refusal = WhyRefused(*switches)) {
    ui.Tell(*refusal);
    return ExitFailed;
  }
  try {
    return RunSwitches(*switches, ui, environment, services);
  } catch (const std::exception& fault) {
    ui.Tell(MessageOf(message::UnexpectedFault, {}, fault.what()));
    return ExitFailed;
  }
}

}  // namespace quorvelant
