#include "vm/command_place.h"

#include <fmt/format.h>

#include <optional>

#include "vm/disc_place.h"

namespace quorvelant {

namespace {

// The same walk for a project that may be written and for one that may not.

template <class Unit>
auto* PgcOf(Unit* unit, const DiscPlace& at) {
  return unit == nullptr ? nullptr : unit->PGC.Item(at.Pgc);
}

template <class AnyProject>
auto PgcAt(AnyProject& project, const DiscPlace& at) -> decltype(&project.FirstPlay) {
  if (at.PgcOf() == FirstPlayPlace) {
    return &project.FirstPlay;
  }
  auto* entry = project.Disc.Item(at.Entry);
  if (entry == nullptr) {
    return nullptr;
  }
  return at.InTitles ? PgcOf(entry->Title.Item(at.Unit), at) : PgcOf(entry->Lang.Item(at.Unit), at);
}

template <class Pgc>
auto ButtonsAt(Pgc& pgc, const DiscPlace& at, std::size_t play) -> decltype(&pgc.PreCommands) {
  auto* program = pgc.PG.Item(at.Program);
  auto* cell = program == nullptr ? nullptr : program->Cell.Item(at.Cell);
  const bool there = cell != nullptr && play < cell->ButtonCommands.size();
  return there ? &cell->ButtonCommands[play].Commands : nullptr;
}

template <class AnyProject>
auto CommandsAt(AnyProject& project, const CommandPlace& place) -> decltype(&project.FirstPlay.PreCommands) {
  const std::optional<DiscPlace> at = PlaceOfKey(place.Key);
  auto* pgc = at ? PgcAt(project, *at) : nullptr;
  if (pgc == nullptr) {
    return nullptr;
  }
  switch (place.List) {
    case ListKind::Pre:
      return &pgc->PreCommands;
    case ListKind::Post:
      return &pgc->PostCommands;
    case ListKind::Cell:
      return &pgc->CellCommands;
    default:
      return ButtonsAt(*pgc, *at, place.Play);
  }
}

template <class List>
auto CommandAt(List* list, std::size_t position) -> decltype(list->data()) {
  return list != nullptr && position < list->size() ? list->data() + position : nullptr;
}

}  // namespace

CommandList* FindCommands(Project& project, const CommandPlace& place) {
  return CommandsAt(project, place);
}

const CommandList* FindCommands(const Project& project, const CommandPlace& place) {
  return CommandsAt(project, place);
}

VMICommand_P* FindCommand(Project& project, const CommandPlace& place) {
  return CommandAt(CommandsAt(project, place), place.Position);
}

const VMICommand_P* FindCommand(const Project& project, const CommandPlace& place) {
  return CommandAt(CommandsAt(project, place), place.Position);
}

std::string WordsOf(const Project& project, const CommandPlace& place) {
  const VMICommand_P* command = FindCommand(project, place);
  return command == nullptr ? place.Key : fmt::format("{} {}", place.Key, command->Key);
}

}  // namespace quorvelant
