#include "edit/command_lists.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "disc/limits.h"
#include "edit/change.h"
#include "edit/messages.h"
#include "model/keys.h"
#include "model/walk.h"
#include "vm/command_builder.h"
#include "vm/command_choices.h"
#include "vm/command_parser.h"
#include "vm/encoder.h"

namespace quorvelant {

namespace {

constexpr std::string_view NopText = "NOP";

// --- the list at a place ---

// The PGC of a list, whether a play of the cell's buttons is there or not.
std::optional<CommandStand> StandOf(const Project& project, const CommandPlace& place) {
  auto stand = StandOf(project, place.Key);
  if (!stand) {
    return stand;
  }
  const bool isThere =
      place.List == ListKind::Button
          ? std::ranges::any_of(LiveCells(*stand->Chain),
                                [&place](const Cell_P* cell) { return cell->Key == place.Key; })
          : stand->Entry == nullptr || stand->Chain->Key == place.Key;
  return isThere ? stand : std::nullopt;
}

PGC_P& EditPgc(Change& change, const CommandPlace& place) {
  if (place.Key == FirstPgcKey) {
    return change.EditFirstPlay();
  }
  const auto entry = static_cast<std::size_t>(TitleSetEntry(place.Key));
  return *FindPgc(change.Touch({Part::OfEntry(entry)}).Disc, place.Key);
}

std::string_view KeyWord(const CommandPlace& place) {
  constexpr std::array<std::string_view, 4> Words{"Pre", "Post", "Cell", "Button"};
  return place.Key == FirstPgcKey ? FirstPgcKey : Words.at(static_cast<std::size_t>(place.List));
}

void NumberAnew(CommandList& list, const CommandPlace& place) {
  for (std::size_t i = 0; i < list.size(); ++i) {
    list[i].Key = fmt::format("{}{}", KeyWord(place), i + 1);
  }
}

std::string WordsOf(const Project& project, CommandPlace place, std::size_t position) {
  place.Position = position;
  return WordsOf(project, place);
}

// --- numbers that follow ---

// Entry i is the new number of the command that had number i + 1; 0 for none.
using NewNumbers = std::vector<std::int32_t>;

NewNumbers OldNumbers(std::size_t count) {
  NewNumbers numbers(count);
  for (std::size_t i = 0; i < count; ++i) {
    numbers[i] = static_cast<std::int32_t>(i + 1);
  }
  return numbers;
}

std::int32_t Followed(const NewNumbers& numbers, std::int32_t number) {
  const bool isThere = number >= 1 && static_cast<std::size_t>(number) <= numbers.size();
  return isThere ? numbers[static_cast<std::size_t>(number - 1)] : number;
}

// A line that leads to none of the commands stays as it is; one of a removed command leads to the next.
void FollowLine(VMICommand_P& command, const NewNumbers& numbers) {
  auto fields = FieldsOf(command.FullCommand);
  if (!fields ||
      (fields->Command.What != Instruction::GoTo && fields->Command.What != Instruction::SetTmpPml)) {
    return;
  }
  const std::int32_t line = Followed(numbers, fields->Command.Line);
  if (line != 0 && line != fields->Command.Line) {
    fields->Command.Line = line;
    command.FullCommand = CommandText(*fields);
  }
}

void Follow(PGC_P& chain, const CommandPlace& place, CommandList& list, const NewNumbers& numbers) {
  if (place.List == ListKind::Button) {  // each is alone
    for (Cell_P* cell : AllCells(chain)) {
      if (cell->Key == place.Key) {
        KeyButtons(*cell);
      }
    }
    return;
  }
  NumberAnew(list, place);
  for (VMICommand_P& command : list) {
    FollowLine(command, numbers);
  }
  if (place.List == ListKind::Cell) {
    for (Cell_P* cell : AllCells(chain)) {
      cell->CellCommand = Followed(numbers, cell->CellCommand);
    }
  }
}

// --- refusals ---

Outcome NoList(const CommandPlace& place) {
  return Outcome::Refused(MessageOf(message::CommandListMissing, place.Key, place.Key));
}

// Nothing where the place has a command.
std::optional<Outcome> RefuseMissing(const Project& project, const CommandPlace& place) {
  const CommandList* list = CommandsAt(project, place);
  if (list == nullptr) {
    return NoList(place);
  }
  if (place.Position >= list->size()) {
    return Outcome::Refused(MessageOf(message::CommandMissing, place.Key,
                                      std::min(place.Position, list->size()) + 1, list->size()));
  }
  return std::nullopt;
}

// A change to the commands of one list, and what follows from it.
Outcome EditList(EditSession& session, const CommandPlace& place, std::string_view words,
                 std::size_t position, const std::function<NewNumbers(CommandList&)>& edit) {
  Change change(session, words);
  PGC_P& chain = EditPgc(change, place);
  CommandList& list = *FindCommands(change.Touch({}), place);
  Follow(chain, place, list, edit(list));
  return change.Commit(WordsOf(change.Work(), place, position));
}

// A play after the cell's last one.
void AddPlay(Change& change, const CommandPlace& place) {
  for (Cell_P* cell : LiveCells(EditPgc(change, place))) {
    if (cell->Key == place.Key && cell->ButtonCommands.size() == place.Play) {
      cell->ButtonCommands.emplace_back();
    }
  }
}

bool HasControlByte(std::string_view text) {
  constexpr char FirstPrintable = ' ';
  return std::ranges::any_of(text, [](char c) { return c >= 0 && c < FirstPrintable; });
}

}  // namespace

const CommandList* CommandsAt(const Project& project, const CommandPlace& place) {
  return StandOf(project, place) ? FindCommands(project, place) : nullptr;
}

std::optional<Message> RefuseNewCommand(const EditSession& session, const CommandPlace& place) {
  constexpr std::size_t MostOfList = 24;
  constexpr std::size_t MostButtons = 36;
  const auto stand = StandOf(session.Work(), place);
  const CommandList* list = stand ? FindCommands(session.Work(), place) : nullptr;
  std::size_t count = list == nullptr ? 0 : list->size();
  std::size_t most = MostOfList;
  if (session.RulesInForce().CommandsToFormatLimit) {
    const bool ofButtons = place.List == ListKind::Button;
    most = ofButtons ? MostButtons : MostCommands;
    if (stand && !ofButtons) {
      const PGC_P& chain = *stand->Chain;
      count = chain.PreCommands.size() + chain.PostCommands.size() + chain.CellCommands.size();
    }
  }
  return count < most ? std::nullopt : std::optional(MessageOf(message::CommandListFull, place.Key, most));
}

Outcome InsertCommand(EditSession& session, const CommandPlace& place) {
  const CommandList* list = CommandsAt(session.Work(), place);
  const std::size_t count = list == nullptr ? 0 : list->size();
  const std::size_t at = place.Position == ListEnd ? count : place.Position;
  if (at > count) {
    return Outcome::Refused(MessageOf(message::CommandMissing, place.Key, at + 1, count));
  }
  if (auto refusal = RefuseNewCommand(session, place)) {
    return Outcome::Refused(*std::move(refusal));
  }
  if (list == nullptr && (place.List != ListKind::Button || !StandOf(session.Work(), place))) {
    return NoList(place);
  }
  Change change(session, "New Command");
  if (list == nullptr) {
    AddPlay(change, place);
    if (CommandsAt(session.Work(), place) == nullptr) {
      return NoList(place);  // more than one past the last
    }
  }
  Outcome outcome = EditList(session, place, "New Command", at, [at](CommandList& commands) {
    NewNumbers numbers = OldNumbers(commands.size());
    std::ranges::for_each(numbers.begin() + static_cast<std::ptrdiff_t>(at), numbers.end(),
                          [](std::int32_t& number) { ++number; });
    VMICommand_P command;
    command.FullCommand = NopText;
    command.CommandHex = NopHex;
    commands.insert(commands.begin() + static_cast<std::ptrdiff_t>(at), std::move(command));
    return numbers;
  });
  return change.Commit(std::move(outcome.Key));
}

Outcome SetCommand(EditSession& session, const CommandPlace& place, const std::string& text) {
  if (auto refusal = RefuseMissing(session.Work(), place)) {
    return *std::move(refusal);
  }
  const std::string trimmed(Trim(text));
  const std::string line = trimmed.empty() ? std::string(NopText) : trimmed;
  if (HasControlByte(line) || Has(ParseCommand(line).Faults, TextFault::UnknownText)) {
    return Outcome::Refused(MessageOf(message::CommandTextUnknown, place.Key, Printable(line)));
  }
  const std::size_t at = place.Position;
  const VMICommand_P& former = (*CommandsAt(session.Work(), place))[at];
  if (former.FullCommand == line && former.To_Action.empty()) {
    return Outcome::Done(WordsOf(session.Work(), place));
  }
  return EditList(session, place, "Edit Command", at, [&](CommandList& commands) {
    // No digits and no target of the former text are kept: where the new one leads nowhere, none must stand
    // in.
    commands[at] = {};
    commands[at].FullCommand = line;
    return OldNumbers(commands.size());
  });
}

Outcome MoveCommand(EditSession& session, const CommandPlace& place, std::size_t to) {
  if (auto refusal = RefuseMissing(session.Work(), place)) {
    return *std::move(refusal);
  }
  const std::size_t count = CommandsAt(session.Work(), place)->size();
  if (to >= count) {
    return Outcome::Refused(MessageOf(message::CommandMissing, place.Key, to + 1, count));
  }
  const std::size_t from = place.Position;
  if (from == to) {
    return Outcome::Done(WordsOf(session.Work(), place));
  }
  return EditList(session, place, "Move Command", to, [from, to](CommandList& commands) {
    const auto rotate = [from, to](auto& list) {
      const auto at = [&list](std::size_t i) { return list.begin() + static_cast<std::ptrdiff_t>(i); };
      from < to ? std::rotate(at(from), at(from + 1), at(to + 1))
                : std::rotate(at(to), at(from), at(from + 1));
    };
    rotate(commands);
    NewNumbers former = OldNumbers(commands.size());
    rotate(former);
    NewNumbers numbers(former.size());
    for (std::size_t i = 0; i < former.size(); ++i) {
      numbers[static_cast<std::size_t>(former[i] - 1)] = static_cast<std::int32_t>(i + 1);
    }
    return numbers;
  });
}

Outcome RemoveCommand(EditSession& session, const CommandPlace& place) {
  if (auto refusal = RefuseMissing(session.Work(), place)) {
    return *std::move(refusal);
  }
  const std::size_t at = place.Position;
  return EditList(session, place, "Remove Command", at, [at](CommandList& commands) {
    NewNumbers numbers = OldNumbers(commands.size());
    const auto removed = numbers.begin() + static_cast<std::ptrdiff_t>(at);
    std::for_each(removed, numbers.end(), [](std::int32_t& number) { --number; });
    *removed = 0;
    commands.erase(commands.begin() + static_cast<std::ptrdiff_t>(at));
    return numbers;
  });
}

}  // namespace quorvelant
