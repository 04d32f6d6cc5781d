#include "app/command_command.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "app/message_json.h"
#include "app/messages.h"
#include "app/rules_option.h"
#include "base/passing_ui.h"
#include "base/rules.h"
#include "edit/outline_json.h"
#include "model/project.h"
#include "script/messages.h"
#include "script/script_reader.h"
#include "vm/check_commands.h"
#include "vm/decoder.h"
#include "vm/resolver.h"

namespace quorvelant {

namespace {

constexpr std::string_view UnknownCommand = "unknown command";

struct CommandOptions {
  std::vector<std::string> Texts;
  std::string Project;
  RulesOption RuleSet;
  bool Decode = false;
  bool Json = false;
};

// What one argument came to, in either direction.
struct CommandLineResult {
  std::string Text;
  std::string Hex;
  bool Good = true;
  std::vector<Message> Messages = {};
};

void TellAll(CommandLineResult& result, TextFault faults) {
  for (Message& warning : WarningsFor(faults, {}, result.Text, {})) {
    result.Messages.push_back(std::move(warning));
  }
}

CommandLineResult Encode(const std::string& text, NameIndex* names, const ResolveOptions& options) {
  const Resolution resolved = ResolveText(text, {}, names, options);
  CommandLineResult result{.Text = text, .Hex = resolved.Hex};
  TellAll(result, resolved.Faults);
  const bool stands = names == nullptr && !Has(resolved.Faults, TextFault::UnknownLink);
  for (const std::string& name : resolved.MissingNames) {
    const MessageKind& kind = stands ? message::CommandNameUnnumbered : message::CommandNameMissing;
    result.Messages.push_back(MessageOf(kind, {}, text, name));
  }
  result.Good = !Has(resolved.Faults, TextFault::UnknownText) && (stands || !resolved.TargetMissing);
  return result;
}

CommandLineResult Decode(const std::string& hex) {
  CommandLineResult result{.Text = {}, .Hex = hex};
  if (!IsCommandHex(hex)) {
    result.Good = false;
    result.Messages.push_back(MessageOf(message::CommandNotDigits, {}, hex));
    return result;
  }
  const DecodedCommand decoded = DecodeCommand(hex);
  result.Text = decoded.Text;
  result.Good = decoded.Known;
  if (decoded.Known) {
    TellAll(result, ParseCommand(decoded.Text).Faults);
  }
  return result;
}

nlohmann::ordered_json ToJson(const CommandLineResult& result) {
  return {{"text", result.Text},
          {"hex", result.Hex},
          {"ok", result.Good},
          {"messages", MessagesJson(result.Messages)}};
}

// Prints every result on its line and tells its messages; whether all were good.
bool Print(const std::vector<CommandLineResult>& results, const CommandOptions& options,
           CommandContext& context) {
  bool good = true;
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const CommandLineResult& result : results) {
    good = good && result.Good;
    if (options.Json) {
      list.push_back(ToJson(result));
      continue;
    }
    const std::string& said = options.Decode ? result.Text : result.Hex;
    context.Out << (options.Decode && !result.Good ? std::string(UnknownCommand) : said) << '\n';
    for (const Message& message : result.Messages) {
      context.Ui.Tell(message);
    }
  }
  if (options.Json) {
    // Texts are bytes: what is no UTF-8 is shown by the replacement character.
    context.Out << JsonText({{"version", JsonVersion}, {"commands", list}}) << '\n';
  }
  return good;
}

// Hears the load of a project that is wanted for its names alone: failures pass, the words of its stages and
// the faults of its own commands do not.
class NamesOnlyUi : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& message) override {
    if (!message.Is(message::CommandErrorsNoted)) {
      PassingUi::Tell(message);
    }
  }
  void Status(std::string_view /*words*/) override {}
  void Progress(double /*done*/, double /*total*/) override {}
};

int Run(const CommandOptions& options, CommandContext& context) {
  Project project;
  const Rules& rules = options.RuleSet.Used();
  std::unique_ptr<NameIndex> names;
  ResolveOptions resolve{.Numbers = NumericTargets::First};
  if (!options.Project.empty()) {
    NamesOnlyUi ui(context.Ui);
    const LoadResult load = LoadScriptFile(options.Project, project, {.Rules = rules}, ui);
    if (!load.Loaded) {
      return ExitFailed;
    }
    names = std::make_unique<NameIndex>(project, rules);
    resolve.Numbers = NumbersOf(load.IsScenarist);
  }
  std::vector<CommandLineResult> results;
  results.reserve(options.Texts.size());
  for (const std::string& text : options.Texts) {
    results.push_back(options.Decode ? Decode(text) : Encode(text, names.get(), resolve));
  }
  return Print(results, options, context) ? ExitDone : ExitFailed;
}

}  // namespace

void AddCommandCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<CommandOptions>();
  CLI::App* command = program.add_subcommand(
      "command", "Prints the 16 digits of navigation commands, or what digits do (--decode)");
  command->add_option("text", options->Texts, "A command, e.g. \"JumpSS TitleMenu\"; 16 digits with --decode")
      ->required()
      ->type_name("TEXT");
  command->add_option("--project", options->Project, "Project script in which names are looked up")
      ->type_name("FILE");
  AddRulesOption(*command, options->RuleSet, "How PGCs and cells are counted");
  command->add_flag("--decode", options->Decode, "Print the text of digits");
  command->add_flag("--json", options->Json, "Print one JSON object");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
