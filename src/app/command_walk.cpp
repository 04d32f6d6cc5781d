#include "app/command_walk.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "app/message_json.h"
#include "app/messages.h"
#include "app/rules_option.h"
#include "author/message_recorder.h"
#include "base/counted.h"
#include "base/disk.h"
#include "base/text.h"
#include "check/nav_of.h"
#include "check/navigation_check.h"
#include "check/read_faults.h"
#include "desk/place_names.h"
#include "edit/file_scanner.h"
#include "edit/outline_json.h"
#include "player/nav_chart.h"
#include "player/nav_findings.h"
#include "player/nav_words.h"
#include "script/load_findings.h"
#include "script/script_reader.h"
#include "verify/disc_source.h"
#include "verify/messages.h"
#include "verify/nav_of_disc.h"
#include "verify/verify_disc.h"

namespace quorvelant {

namespace {

struct WalkOptions {
  std::string Source;
  std::optional<std::string> Press;
  std::string Language = "en";
  RulesOption RuleSet;
  bool Json = false;
  bool Dot = false;
  bool Svg = false;
};

// What a given way comes to, a stop a key.
struct PressedStop {
  std::string Key;
  std::string Place;
};

// Nothing where a word is no key, which is told.
std::optional<std::vector<PressedStop>> StopsOf(const NavDisc& disc, const WalkOptions& options,
                                                UserInterface& ui) {
  std::string wrong;
  const auto presses = PressesOf(*options.Press, wrong);
  if (!presses) {
    ui.Tell(MessageOf(message::KeyUnknown, {}, wrong));
    return std::nullopt;
  }
  const auto language = static_cast<std::uint16_t>(static_cast<unsigned char>(options.Language[0]) << 8U |
                                                   static_cast<unsigned char>(options.Language[1]));
  const NavRandom least = [](std::uint16_t /*bound*/) { return std::uint16_t{1}; };
  NavState state = InsertDisc(disc, FreshRegisters(language), least).State;
  std::vector<PressedStop> stops{{"insert", PlaceWords(disc, state)}};
  for (const NavPress& press : *presses) {
    state = CarryOut(disc, state, press, least).State;
    stops.push_back({press.Word, PlaceWords(disc, state)});
  }
  return stops;
}

// Nothing where a word is no key.
std::optional<int> PrintStops(const NavDisc& disc, const WalkOptions& options, UserInterface& ui,
                              CommandContext& context) {
  const auto stops = StopsOf(disc, options, ui);
  if (!stops) {
    return std::nullopt;
  }
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const PressedStop& stop : *stops) {
    if (options.Json) {
      list.push_back({{"key", stop.Key}, {"place", stop.Place}});
    } else {
      context.Out << fmt::format("{}: {}\n", stop.Key, stop.Place);
    }
  }
  if (options.Json) {
    context.Out << JsonText({{"version", JsonVersion}, {"stops", list}}) << '\n';
  }
  return ExitDone;
}

nlohmann::ordered_json MapJson(const NavMap& map) {
  nlohmann::ordered_json chains = nlohmann::ordered_json::array();
  for (const NavMapChain& chain : map.Chains) {
    chains.push_back({{"name", chain.Name}, {"words", chain.Words}, {"reached", chain.IsReached}});
  }
  nlohmann::ordered_json arrows = nlohmann::ordered_json::array();
  for (const NavMapArrow& arrow : map.Arrows) {
    arrows.push_back({arrow.From, arrow.To});
  }
  return {{"chains", chains}, {"arrows", arrows}};
}

// How far it was walked.
std::string ExtentText(const std::optional<NavSurvey>& survey) {
  if (!survey) {
    return "not walked, for it is not whole";
  }
  return fmt::format("{}, {}", survey->IsWhole ? "every way walked" : "walked as far as the bound",
                     Counted(survey->States, "state"));
}

std::string VerdictText(const WalkOptions& options, const std::optional<NavSurvey>& survey,
                        const Findings& findings) {
  const std::size_t errors = CountOf(findings, Severity::Error);
  const std::size_t warnings = CountOf(findings, Severity::Warning);
  return fmt::format("{}: {}: {}, {}\n", Printable(options.Source), ExtentText(survey),
                     errors == 0 ? "no errors" : Counted(errors, "error"),
                     warnings == 0 ? "no warnings" : Counted(warnings, "warning"));
}

// Without a survey: what could not be walked.
int Print(const WalkOptions& options, const std::optional<NavSurvey>& survey, const Findings& findings,
          UserInterface& ui, CommandContext& context) {
  const int status = !survey || HasErrors(findings) ? ExitFailed : ExitDone;
  NavSurvey walked = survey.value_or(NavSurvey());
  walked.IsWhole = survey && walked.IsWhole;
  if (options.Json) {
    context.Out << JsonText({{"version", JsonVersion},
                             {"source", options.Source},
                             {"ok", status == ExitDone},
                             {"whole", walked.IsWhole},
                             {"states", walked.States},
                             {"errors", CountOf(findings, Severity::Error)},
                             {"warnings", CountOf(findings, Severity::Warning)},
                             {"messages", MessagesJson(findings)},
                             {"map", MapJson(walked.Map)}})
                << '\n';
    return status;
  }
  for (const Message& finding : findings) {
    ui.Tell(finding);
  }
  if (options.Dot || options.Svg) {
    context.Out << (options.Dot ? DotOf(walked.Map) : SvgOf(walked.Map));
    return status;
  }
  context.Report(VerdictText(options, survey, findings));
  return status;
}

// What was read wrong of a disc is for `verify` to tell; what is absent of it leads nowhere here. Gives the
// exit status, or nothing where it could not be read, which is told. Raises FileError.
std::optional<int> RunOnDisc(const WalkOptions& options, UserInterface& ui, CommandContext& context) {
  const VerifyResult read = VerifyDisc(options.Source, ui);
  if (read.Stopped) {
    ui.Tell(MessageOf(message::CheckStopped, options.Source));
    return std::nullopt;
  }
  if (!read.HasTables()) {
    for (const DiscFinding& finding : read.Findings.All()) {
      ui.Tell(MessageOfFinding(finding, options.Source));
    }
    return std::nullopt;
  }
  const NavDisc disc = NavOfDisc(read);
  if (options.Press) {
    return PrintStops(disc, options, ui, context);
  }
  const NavSurvey survey = SurveyOf(disc);
  Findings findings = ByRules(DiscNavigation(survey, read.IsOurs), options.RuleSet.Used());
  for (Message& finding : findings) {
    finding = WithDisc(std::move(finding), options.Source);
  }
  if (const std::size_t errors = read.Findings.Count(Severity::Error); errors > 0) {
    findings.push_back(MessageOf(message::DiscFaulty, options.Source, Counted(errors, "error")));
  }
  return Print(options, survey, findings, ui, context);
}

std::optional<int> RunOnProject(const WalkOptions& options, UserInterface& ui, CommandContext& context) {
  const Rules& rules = options.RuleSet.Used();
  Project project;
  ReadFaults faults(ui);  // sources matter for their streams alone
  const FileScanner scanner(rules, faults);
  const LoadResult load =
      LoadScriptFile(options.Source, project, {.Rules = rules, .Scanner = &scanner}, faults);
  const Findings loading = LoadFindings(load);
  PlaceNames named(ui, project);
  if (!load.Loaded || HasErrors(loading)) {
    for (const Message& finding : loading) {
      named.Tell(finding);
    }
    return std::nullopt;
  }
  const NavDisc disc = NavOf(project, rules);
  if (options.Press) {
    return PrintStops(disc, options, ui, context);
  }
  ProjectWalk walk = WalkProject(project, rules);
  Findings findings = loading;
  Append(findings, std::move(walk.Told));
  return Print(options, walk.Survey, findings, named, context);
}

bool IsDisc(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  return SystemDisk().KindOf(path) == FileKind::Folder ||
         (dot != std::string::npos && EqualNoCase(path.substr(dot), ".iso")) || IsImage(path);
}

int Run(const WalkOptions& options, CommandContext& context) {
  MessageRecorder told(context.Ui);
  std::optional<int> status;
  try {
    status =
        IsDisc(options.Source) ? RunOnDisc(options, told, context) : RunOnProject(options, told, context);
  } catch (const FileError& error) {
    told.Tell(MessageOf(message::DiscUnreadable, options.Source, error.OneLine()));
  }
  if (!status && options.Json) {
    return Print(options, std::nullopt, told.Release(), context.Ui, context);
  }
  return status.value_or(ExitFailed);
}

}  // namespace

void AddWalkCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<WalkOptions>();
  CLI::App* command = program.add_subcommand("walk",
                                             "Walks every way through the menus and titles of a project or a "
                                             "finished disc, and tells where one ends "
                                             "or leads nowhere");
  command
      ->add_option(
          "source", options->Source,
          "Project (.qvp), a script of the other dialect (.scp), a VIDEO_TS folder, or an image (.iso)")
      ->required()
      ->type_name("PROJECT|VIDEO_TS");
  CLI::Option* press =
      command->add_option("--press", options->Press, "Play this way instead: \"OK, Down, OK, end, Menu\"")
          ->type_name("KEYS");
  command->add_option("--language", options->Language, "Menu language of the player for --press")
      ->type_name("CODE")
      ->needs(press)
      ->check([](const std::string& code) {
        return code.size() == 2 ? std::string() : "a code has two letters";
      });
  AddRulesOption(*command, options->RuleSet, "What a disc that leads nowhere is told as");
  CLI::Option* json = command->add_flag("--json", options->Json, "Print one JSON object");
  CLI::Option* dot =
      command->add_flag("--dot", options->Dot, "Print the map as a graph for drawing programs");
  command->add_flag("--svg", options->Svg, "Print the map as a drawing")->excludes(json)->excludes(dot);
  dot->excludes(json);
  command->footer("Exit status: 0 no errors, 1 errors, 2 wrong usage.");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
