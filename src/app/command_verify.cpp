#include "app/command_verify.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "app/message_json.h"
#include "author/size_text.h"
#include "base/disk.h"
#include "edit/outline_json.h"
#include "verify/messages.h"
#include "verify/verify_disc.h"

namespace quorvelant {

namespace {

struct VerifyOptions {
  std::string Disc;
  bool Json = false;
};

nlohmann::ordered_json FindingJson(const DiscFinding& finding, const std::string& disc) {
  nlohmann::ordered_json json = MessageJson(MessageOfFinding(finding, disc));
  json["file"] = finding.Spot.File;
  if (finding.Spot.Sector) {
    json["sector"] = *finding.Spot.Sector;
  }
  if (finding.Spot.Offset) {
    json["offset"] = *finding.Spot.Offset;
  }
  json["table"] = finding.Table;
  json["field"] = finding.Field;
  json["expected"] = finding.Expected;
  json["seen"] = finding.Seen;
  if (finding.More > 0) {
    json["more"] = finding.More;
  }
  return json;
}

std::string Counted(std::size_t count, const char* noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

void Print(const VerifyResult& result, const VerifyOptions& options, CommandContext& context) {
  const DiscFindings& findings = result.Findings;
  if (options.Json) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const DiscFinding& finding : findings.All()) {
      list.push_back(FindingJson(finding, options.Disc));
    }
    context.Out << JsonText({{"version", JsonVersion},
                             {"disc", options.Disc},
                             {"bytes", result.Bytes},
                             {"proven", !findings.HasFaults() && !result.Stopped},
                             {"findings", list}})
                << '\n';
    return;
  }
  for (const DiscFinding& finding : findings.All()) {
    context.Ui.Tell(MessageOfFinding(finding, options.Disc));
  }
  if (!result.Stopped) {
    context.Report(
        fmt::format("{}: {}, {}, {} in {}\n", options.Disc, Counted(findings.Count(Severity::Error), "error"),
                    Counted(findings.Count(Severity::Warning), "warning"),
                    Counted(findings.Count(Severity::Information), "note"), SizeText(result.Bytes)));
  }
}

int Run(const VerifyOptions& options, CommandContext& context) {
  try {
    context.Ui.Status("Reading " + options.Disc);
    const VerifyResult result = VerifyDisc(options.Disc, context.Ui);
    Print(result, options, context);
    return result.Findings.HasFaults() || result.Stopped ? ExitFailed : ExitDone;
  } catch (const FileError& error) {
    context.Ui.Tell(MessageOf(message::DiscUnreadable, options.Disc, error.OneLine()));
    return ExitFailed;
  }
}

}  // namespace

void AddVerifyCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<VerifyOptions>();
  CLI::App* command = program.add_subcommand(
      "verify", "Proves a finished disc: reads it whole, and compares its tables with its sectors");
  command->add_option("disc", options->Disc, "VIDEO_TS folder, or an image")->required()->type_name("DISC");
  command->add_flag("--json", options->Json, "Print one JSON object");
  command->footer("Exit status: 0 proven (notes aside), 1 there is an error or a warning, 2 wrong usage.");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
