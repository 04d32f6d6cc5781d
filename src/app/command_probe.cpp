#include "app/command_probe.h"

#include <fmt/format.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "app/message_json.h"
#include "app/probe_report.h"
#include "app/rules_option.h"
#include "edit/outline_json.h"

namespace quorvelant {

namespace {

struct ProbeOptions {
  std::vector<std::string> Files;
  RulesOption RuleSet;
  bool Json = false;
};

// Done when a disc can carry each of the files.
int Run(const ProbeOptions& options, CommandContext& context) {
  const Rules& rules = options.RuleSet.Used();
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  bool good = true;
  for (const std::string& file : options.Files) {
    context.Ui.Status("Reading " + file);
    const auto report = ProbeFile(file, rules, context.Ui);
    good = good && report && report->Fit.Fits();
    if (context.Ui.StopRequested()) {
      return ExitFailed;
    }
    if (!report) {
      continue;
    }
    if (options.Json) {
      list.push_back(ProbeJson(*report));
    } else {
      context.Out << ProbeText(*report);
    }
  }
  if (options.Json) {
    // File names are bytes: what is no UTF-8 is shown by the replacement character.
    context.Out << JsonText({{"version", JsonVersion}, {"files", list}}) << '\n';
  }
  return good ? ExitDone : ExitFailed;
}

}  // namespace

void AddProbeCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<ProbeOptions>();
  CLI::App* command = program.add_subcommand(
      "probe", "Tells what source files are, whether a disc can carry them, and if not why");
  command->add_option("file", options->Files, "Video, audio and bitmap files")->required()->type_name("FILE");
  AddRulesOption(*command, options->RuleSet, "Where the samples of WAV files start");
  command->add_flag("--json", options->Json, "Print one JSON object");
  command->footer("Exit status: 0 a disc can carry every file, 1 not every one, 2 wrong usage.");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
