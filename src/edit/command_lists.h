#pragma once

// The command lists of PGCs and the button commands of cells, edited.

#include <cstddef>
#include <optional>
#include <string>

#include "edit/outcome.h"
#include "edit/session.h"
#include "model/my_dvd.h"
#include "vm/command_place.h"

namespace quorvelant {

// nullptr where there is no such list, or what holds it is removed.
[[nodiscard]] const CommandList* CommandsAt(const Project& project, const CommandPlace& place);

// Why the list takes no more commands. One that was loaded longer than that stays as it is.
[[nodiscard]] std::optional<Message> RefuseNewCommand(const EditSession& session, const CommandPlace& place);

// Each gives the key of the list's PGC or cell and that of the command ("VTS1.TITLE1.PGC1 Pre2"); the
// commands of a list are numbered anew. GoTo and SetTmpPML go on to lead to the command that they led to, and
// cells have the cell command that they had.

// A no-operation before the command at the position. A play one past the cell's last is added.
Outcome InsertCommand(EditSession& session, const CommandPlace& place);
// Another text; an empty one is a no-operation. What is no command is refused. Its digits follow when the
// session's commands are next resolved.
Outcome SetCommand(EditSession& session, const CommandPlace& place, const std::string& text);
// To where it will stand, from 0.
Outcome MoveCommand(EditSession& session, const CommandPlace& place, std::size_t to);
// Lines that led to it lead to the command after it; cells that had it have none.
Outcome RemoveCommand(EditSession& session, const CommandPlace& place);

}  // namespace quorvelant
