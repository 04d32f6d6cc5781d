#include "app/command_verify.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "app/message_json.h"
#include "app/messages.h"
#include "author/size_text.h"
#include "base/counted.h"
#include "base/disk.h"
#include "check/navigation_check.h"
#include "edit/outline_json.h"
#include "player/nav_findings.h"
#include "verify/messages.h"
#include "verify/nav_of_disc.h"
#include "verify/verify_disc.h"

namespace quorvelant {

namespace {

struct VerifyOptions {
  std::string Disc;
  bool Json = false;
};

// What the sectors show, then the ways through the disc.
struct DiscProof {
  VerifyResult Read;
  Findings Ways;  // their places begin with a file of the disc

  [[nodiscard]] std::size_t Count(Severity level) const {
    return Read.Findings.Count(level) + CountOf(Ways, level);
  }
  [[nodiscard]] bool IsProven() const {
    return Count(Severity::Error) + Count(Severity::Warning) == 0 && !Read.Stopped;
  }
};

DiscProof Prove(const VerifyOptions& options, UserInterface& ui) {
  DiscProof proof{.Read = VerifyDisc(options.Disc, ui), .Ways = {}};
  if (!proof.Read.Stopped && proof.Read.HasTables()) {
    proof.Ways = DiscNavigation(SurveyOf(NavOfDisc(proof.Read)), proof.Read.IsOurs);
  }
  return proof;
}

nlohmann::ordered_json WayJson(const Message& way, const std::string& disc) {
  const std::size_t blank = way.Place.find(' ');
  nlohmann::ordered_json json = MessageJson(WithDisc(way, disc));
  json["file"] = way.Place.substr(0, blank);
  json["table"] = blank == std::string::npos ? std::string() : way.Place.substr(blank + 1);
  return json;
}

nlohmann::ordered_json FindingJson(const DiscFinding& finding, const std::string& disc) {
  nlohmann::ordered_json json = MessageJson(MessageOfFinding(finding, disc));
  json["file"] = finding.Spot.File;
  if (finding.Spot.Sector) {
    json["sector"] = *finding.Spot.Sector;
  }
  if (finding.Spot.Sectors) {
    json["sectors"] = *finding.Spot.Sectors;
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

void PrintJson(const DiscProof& proof, const VerifyOptions& options, const Findings& failures,
               CommandContext& context) {
  nlohmann::ordered_json list = MessagesJson(failures);
  for (const DiscFinding& finding : proof.Read.Findings.All()) {
    list.push_back(FindingJson(finding, options.Disc));
  }
  for (const Message& way : proof.Ways) {
    list.push_back(WayJson(way, options.Disc));
  }
  context.Out << JsonText({{"version", JsonVersion},
                           {"disc", options.Disc},
                           {"bytes", proof.Read.Bytes},
                           {"proven", proof.IsProven() && failures.empty()},
                           {"findings", list}})
              << '\n';
}

void Print(const DiscProof& proof, const VerifyOptions& options, CommandContext& context) {
  for (const DiscFinding& finding : proof.Read.Findings.All()) {
    context.Ui.Tell(MessageOfFinding(finding, options.Disc));
  }
  for (const Message& way : proof.Ways) {
    context.Ui.Tell(WithDisc(way, options.Disc));
  }
  context.Report(
      fmt::format("{}: {}, {}, {} in {}\n", options.Disc, Counted(proof.Count(Severity::Error), "error"),
                  Counted(proof.Count(Severity::Warning), "warning"),
                  Counted(proof.Count(Severity::Information), "note"), SizeText(proof.Read.Bytes)));
}

int Run(const VerifyOptions& options, CommandContext& context) {
  DiscProof proof;
  Findings failures;  // to read it
  try {
    context.Ui.Status("Reading " + options.Disc);
    proof = Prove(options, context.Ui);
    if (proof.Read.Stopped) {
      failures.push_back(MessageOf(message::CheckStopped, options.Disc));
      context.Ui.Tell(failures.back());
    }
  } catch (const FileError& error) {
    failures.push_back(MessageOf(message::DiscUnreadable, options.Disc, error.OneLine()));
    context.Ui.Tell(failures.back());
  }
  if (options.Json) {
    PrintJson(proof, options, failures, context);
  } else if (failures.empty()) {
    Print(proof, options, context);
  }
  return proof.IsProven() && failures.empty() ? ExitDone : ExitFailed;
}

}  // namespace

void AddVerifyCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<VerifyOptions>();
  CLI::App* command = program.add_subcommand(
      "verify",
      "Proves a finished disc: reads it whole, compares its tables with its sectors, and walks its menus");
  command->add_option("disc", options->Disc, "VIDEO_TS folder, or an image")->required()->type_name("DISC");
  command->add_flag("--json", options->Json, "Print one JSON object");
  command->footer("Exit status: 0 proven (notes aside), 1 there is an error or a warning, 2 wrong usage.");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
