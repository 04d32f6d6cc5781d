#pragma once

// How the structure of a disc grows, and the fields of its elements. Keys are those of model/keys.h; one that
// names no live element of the kind an operation takes is refused.

#include <functional>
#include <string>
#include <string_view>

#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// The levels below a place of the structure that a user can add.
enum class NewLevel { Pgc, Program, Title };

// The box that asks for a new element's name: "New PGC", "What is the name of the new PGC?".
[[nodiscard]] Message NameQuestion(NewLevel level);
// The name to propose for a new child of a language, title, PGC or title set, free by then:
// "VTS1_Title1_PGC2". Empty where the key names no such parent.
[[nodiscard]] std::string ProposedName(const EditSession& session, std::string_view parent);

// A PGC of a language or title. A menu is of the usual type when its language has no other.
Outcome NewPgc(EditSession& session, std::string_view parent, std::string name);
Outcome NewProgram(EditSession& session, std::string_view pgc, std::string name);
// A title with one PGC, which takes the name that would be proposed.
Outcome NewTitle(EditSession& session, std::string_view set, std::string name);
// A language by its name or code, with one menu PGC.
Outcome NewLanguage(EditSession& session, std::string_view entry, std::string_view language);
// A title set with a title and a root menu, which plays the title.
Outcome NewTitleSet(EditSession& session);

// The plain fields of an element. `set` writes to a copy of the element alone; nothing changes where it
// refuses. What other elements follow by (keys, names, children, commands) it must leave alone; those have
// operations of their own.
template <class Element>
using FieldSetter = std::function<Outcome(Element&)>;
Outcome SetEntry(EditSession& session, std::string_view key, const FieldSetter<VTS_P>& set);
Outcome SetTitle(EditSession& session, std::string_view key, const FieldSetter<Title_P>& set);
Outcome SetPgc(EditSession& session, std::string_view key, const FieldSetter<PGC_P>& set);
Outcome SetCell(EditSession& session, std::string_view key, const FieldSetter<Cell_P>& set);
Outcome SetDestination(EditSession& session, std::string folder);

}  // namespace quorvelant
