// Operations on commands.
#include <array>
#include <optional>

#include "app/edit_words.h"
#include "edit/change.h"
#include "edit/command_lists.h"
#include "vm/command_place.h"

namespace quorvelant {

namespace {

// The list of a line, and the command that it names.
CommandPlace PlaceOf(const EditLine& line) {
  constexpr std::array<std::string_view, 4> Lists{"pre", "post", "cell", "button"};
  return {.Key = line.Text("key"),
          .List = static_cast<ListKind>(line.At("list").OneOf(Lists)),
          .Play = line.Has("play") ? line.IndexOf("play") : 0,
          .Position = line.Has("number") ? line.IndexOf("number") : ListEnd};
}

// A command with its text is one step.
Outcome InsertWithText(EditSession& session, CommandPlace place, const std::optional<std::string>& text) {
  Change change(session, "New Command");
  Outcome inserted = InsertCommand(session, place);
  if (inserted.IsDone() && text) {
    if (place.Position == ListEnd) {
      place.Position = CommandsAt(session.Work(), place)->size() - 1;
    }
    Outcome set = SetCommand(session, place, *text);
    if (!set.IsDone()) {
      return set;
    }
  }
  return inserted.IsDone() ? change.Commit(inserted.Key) : inserted;
}

constexpr std::array Words{
    EditWord{"insert-command", "key list play? number? text?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return InsertWithText(desk.Session, PlaceOf(line), line.TextIf("text"));
             }},
    EditWord{"set-command", "key list play? number text",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return SetCommand(desk.Session, PlaceOf(line), line.Text("text"));
             }},
    EditWord{"move-command", "key list play? number to",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return MoveCommand(desk.Session, PlaceOf(line), line.IndexOf("to"));
             }},
    EditWord{"remove-command", "key list play? number",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return RemoveCommand(desk.Session, PlaceOf(line));
             }},
};

}  // namespace

std::span<const EditWord> CommandWords() {
  return Words;
}

}  // namespace quorvelant
