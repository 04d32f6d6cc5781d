#include "vm/command_completion.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "base/text.h"
#include "vm/check_commands.h"
#include "vm/command_words.h"
#include "vm/messages.h"
#include "vm/resolver.h"

namespace quorvelant {

namespace {

std::string_view NounOf(TargetKind kind) {
  switch (kind) {
    case TargetKind::LinkPgc:
    case TargetKind::TimerPgc:
      return "PGC";
    case TargetKind::VmgPgc:
      return "PGC of the Video Manager";
    case TargetKind::LinkProgram:
      return "program";
    case TargetKind::LinkPart:
    case TargetKind::JumpSetPart:
      return "chapter";
    case TargetKind::LinkCell:
    case TargetKind::ResumeCell:
      return "cell";
    case TargetKind::JumpTitle:
    case TargetKind::JumpSetTitle:
      return "title";
  }
  return {};
}

std::string_view SystemSpaceTitle(const ParsedCommand& command) {
  const auto* const row = std::ranges::find_if(SystemSpaceTargets, [&](const SystemSpaceTarget& target) {
    return target.Space == command.Space && target.MenuId == command.MenuId;
  });
  return row == SystemSpaceTargets.end() ? std::string_view() : row->Title;
}

// The commands of a place, type by type.
class OfferList {
 public:
  OfferList(const Project& project, const Rules& rules, const CommandStand& stand)
      : project_(project), rules_(rules), stand_(stand) {}

  std::vector<CommandOffer> Commands() {
    for (const CommandTypeRow& row : CommandTypes) {
      Add(row);
    }
    return std::move(offers_);
  }

  // What a set can go on to.
  std::vector<CommandOffer> Links() {
    for (const CommandTypeRow& row : CommandTypes) {
      const bool isLink = row.Type == CommandType::SubInstruction || row.Type == CommandType::LinkPgc ||
                          row.Type == CommandType::LinkProgram || row.Type == CommandType::LinkCell ||
                          row.Type == CommandType::LinkPart;
      if (isLink) {
        Add(row);
      }
    }
    return std::move(offers_);
  }

 private:
  void Add(const CommandTypeRow& row) {
    if (row.Type == CommandType::JumpSystemSpace) {
      for (const CommandFields& choice : SystemSpaceChoices(project_, rules_, stand_)) {
        Offer(CommandText(choice), SystemSpaceTitle(choice.Command));
      }
      return;
    }
    auto fields = DefaultFields(project_, rules_, stand_, row.Type);
    if (!fields) {
      return;
    }
    if (const auto kind = TargetKindOf(fields->Command)) {
      for (std::string& name : TargetsFor(project_, rules_, stand_, *kind)) {
        fields->Target = std::move(name);
        Offer(CommandText(*fields), NounOf(*kind));
      }
      return;
    }
    AddPlain(row, *fields);
  }

  void AddPlain(const CommandTypeRow& row, CommandFields fields) {
    switch (row.Type) {
      case CommandType::SubInstruction:
        for (std::size_t i = 0; i < SubInstructions.size(); ++i) {
          fields.Command.Link.Number = SubInstructions.at(i).Code;
          Offer(CommandText(fields), SubInstructionTitles.at(i));
        }
        break;
      case CommandType::SetGprm:
        for (const ArithmeticRow& operation : ArithmeticRows) {
          fields.Command.Operation = operation.Operation;
          Offer(CommandText(fields), operation.Title);
        }
        break;
      case CommandType::SetStreams:
        for (const std::string_view text :
             {"SetSTN audio=1", "SetSTN subpicture=1:ON", "SetSTN subpicture=1:OFF", "SetSTN angle=1"}) {
          Offer(std::string(text), row.Title);
        }
        break;
      case CommandType::SetButton:
        Offer("SetHL_BTNN HL_BTTN=1", row.Title);
        Offer(CommandText(fields), row.Title);
        break;
      default:
        Offer(CommandText(fields), row.Title);
    }
  }

  void Offer(std::string text, std::string_view note) { offers_.push_back({std::move(text), note}); }

  const Project& project_;
  const Rules& rules_;
  const CommandStand& stand_;
  std::vector<CommandOffer> offers_;
};

std::size_t AfterBlanks(std::string_view text, std::size_t at) {
  const std::size_t found = text.find_first_not_of(" {", at);
  return found == std::string_view::npos ? text.size() : found;
}

// The place after the bracket of an "If" that is not closed yet.
std::optional<std::size_t> OpenBracket(std::string_view text) {
  const std::size_t open = text.rfind('(');
  if (open == std::string_view::npos || text.find(')', open) != std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view before = Trim(text.substr(0, open));
  const bool isIf = before.size() >= 2 && EqualNoCase(before.substr(before.size() - 2), "if");
  return isIf ? std::optional(open + 1) : std::nullopt;
}

void AddRegisters(std::string_view word, NumberRange range, std::vector<CommandOffer>& offers) {
  for (std::int32_t number = range.Least; number <= range.Most; ++number) {
    offers.push_back({fmt::format("{}{}", word, number), "register"});
  }
}

// Left side, operator or right side, by the words that stand there already.
CommandOffers Comparing(std::string_view before, std::size_t open) {
  CommandOffers found;
  const std::size_t blank = before.rfind(' ');
  found.Begin = blank == std::string_view::npos || blank < open ? open : blank + 1;
  const auto words = [&] {
    std::size_t count = 0;
    for (std::size_t at = AfterBlanks(before, open); at < found.Begin; at = AfterBlanks(before, at)) {
      ++count;
      at = std::min(before.find(' ', at), before.size());
    }
    return count;
  }();
  if (words == 0) {
    AddRegisters("GPRM", range::Gprm, found.Offers);
  } else if (words == 1) {
    for (const CompareOperator& row : CompareOperators) {
      found.Offers.push_back({std::string(row.Text), "comparison"});
    }
  } else if (words == 2) {
    AddRegisters("GPRM", range::Gprm, found.Offers);
    AddRegisters("SPRM", range::Sprm, found.Offers);
  } else {
    found.Offers.push_back({")", "end of the comparison"});
  }
  return found;
}

// Where a name stands in a text, blanks and case aside.
std::pair<std::size_t, std::size_t> Find(std::string_view text, std::string_view name) {
  const std::string lowered = Lower(text);
  const std::size_t at = name.empty() ? std::string::npos : lowered.rfind(name);
  return at == std::string::npos ? std::pair(std::size_t{0}, text.size()) : std::pair(at, at + name.size());
}

}  // namespace

CommandCompletion::CommandCompletion(const Project& project, const Rules& rules, const CommandStand& stand)
    : commands_(OfferList(project, rules, stand).Commands()),
      links_(OfferList(project, rules, stand).Links()) {}

CommandOffers CommandCompletion::At(std::string_view before) const {
  if (const auto open = OpenBracket(before)) {
    return Comparing(before, *open);
  }
  const std::size_t semicolon = before.rfind(';');
  const std::size_t close = before.rfind(')');
  const bool startsWithIf = EqualNoCase(Trim(before).substr(0, 2), "if");
  if (semicolon != std::string_view::npos) {
    // "set ; If ( ... ) link"
    const std::size_t from = close != std::string_view::npos && close > semicolon ? close : semicolon;
    CommandOffers found{AfterBlanks(before, from + 1), links_};
    if (from == semicolon && !startsWithIf) {
      found.Offers.push_back({"If ( ", "condition"});
    }
    return found;
  }
  if (startsWithIf && close != std::string_view::npos) {
    return {AfterBlanks(before, close + 1), commands_};
  }
  CommandOffers found{AfterBlanks(before, 0), commands_};
  found.Offers.push_back({"If ( ", "condition"});
  return found;
}

std::optional<CommandTrouble> TroubleIn(std::string_view text, NameIndex& names) {
  const Resolution result = ResolveText(text, {}, &names, {.Numbers = NumericTargets::BehindNames});
  if (result.Faults != TextFault::None) {
    return CommandTrouble{WarningsFor(result.Faults, {}, text, {}).front(), 0, text.size()};
  }
  if (!result.TargetMissing) {
    return std::nullopt;
  }
  const std::string name = result.MissingNames.empty() ? std::string() : result.MissingNames.front();
  const auto [begin, end] = Find(text, name);
  return CommandTrouble{MessageOf(message::CommandLeadsNowhere, {}, text.substr(begin, end - begin)), begin,
                        end};
}

}  // namespace quorvelant
