#include "edit/removal.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "edit/change.h"
#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "edit/messages.h"
#include "model/keys.h"
#include "model/walk.h"
#include "vm/command_aims.h"
#include "vm/command_place.h"
#include "vm/pgc_links.h"
#include "vm/references.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoLink = "none";
constexpr std::size_t ManagerEntry = 1;

std::size_t EntryNumber(std::string_view key) {
  return static_cast<std::size_t>(TitleSetEntry(key));
}

// The word for an element in questions; empty where the key names no live element that can be removed.
std::string_view WordOf(const Project& project, std::string_view key) {
  if (LiveEntry(project, key) != nullptr) {
    return "VTS";
  }
  if (LiveLanguage(project, key) != nullptr) {
    return "LANGUAGE";
  }
  if (LiveTitle(project, key) != nullptr) {
    return "TITLE";
  }
  if (LivePgc(project, key) != nullptr) {
    return "PGC";
  }
  if (LiveProgram(project, key) != nullptr) {
    return "PROGRAM";
  }
  return LiveCell(project, key) != nullptr ? "CELL" : "";
}

std::optional<Message> RefuseRemoval(const Project& project, std::string_view key) {
  const std::string_view word = WordOf(project, key);
  if (word.empty()) {
    return MessageOf(message::NoSuchElement, key, "element of the structure", key);
  }
  if (key == FirstPgcKey || (word == "VTS" && EntryNumber(key) == ManagerEntry)) {
    return MessageOf(message::NotRemovable, key);
  }
  constexpr std::size_t ManagerAndOneSet = 2;
  if (word == "VTS" && Live(project.Disc).size() <= ManagerAndOneSet) {
    return MessageOf(message::LastSetStays, key);
  }
  return std::nullopt;
}

void Mark(Cell_P& cell) {
  cell.Removed = true;
}
void Mark(PG_P& program) {
  program.Removed = true;
  std::ranges::for_each(program.Cell, [](Cell_P& cell) { Mark(cell); });
}
void Mark(PGC_P& chain) {
  chain.Removed = true;
  std::ranges::for_each(chain.PG, [](PG_P& program) { Mark(program); });
}
void Mark(Lang_P& language) {
  language.Removed = true;
  std::ranges::for_each(language.PGC, [](PGC_P& chain) { Mark(chain); });
}
void Mark(Title_P& title) {
  title.Removed = true;
  std::ranges::for_each(title.PGC, [](PGC_P& chain) { Mark(chain); });
}
void Mark(VTS_P& entry) {
  entry.Removed = true;
  std::ranges::for_each(entry.Lang, [](Lang_P& language) { Mark(language); });
  std::ranges::for_each(entry.Title, [](Title_P& title) { Mark(title); });
}

void MarkRemoved(MyDVD& disc, std::string_view key, std::string_view word) {
  if (word == "VTS") {
    Mark(*FindEntry(disc, key));
  } else if (word == "LANGUAGE") {
    Mark(*FindLanguage(disc, key));
  } else if (word == "TITLE") {
    Mark(*FindTitle(disc, key));
  } else if (word == "PGC") {
    Mark(*FindPgc(disc, key));
  } else if (word == "PROGRAM") {
    Mark(*FindProgram(disc, key));
  } else {
    Mark(*FindCell(disc, key));
  }
}

std::string& NameIn(Project& project, std::string_view key, ElementKind kind) {
  switch (kind) {
    case ElementKind::Title:
      return FindTitle(project.Disc, key)->TitleName;
    case ElementKind::Pgc:
      return FindPgc(project.Disc, key)->PGCName;
    case ElementKind::Program:
      return FindProgram(project.Disc, key)->PGName;
    case ElementKind::Cell:
      break;
  }
  return FindCell(project.Disc, key)->CellName;
}

std::optional<ElementKind> NamedKind(const Project& project, std::string_view key) {
  const std::string_view word = key == FirstPgcKey ? std::string_view() : WordOf(project, key);
  if (word == "TITLE") {
    return ElementKind::Title;
  }
  if (word == "PGC") {
    return ElementKind::Pgc;
  }
  if (word == "PROGRAM") {
    return ElementKind::Program;
  }
  return word == "CELL" ? std::optional(ElementKind::Cell) : std::nullopt;
}

void SetLinks(Change& change, const std::vector<PgcLink>& links, std::string_view name) {
  for (const PgcLink& link : links) {
    Project& project = change.Touch({Part::OfEntry(EntryNumber(link.Pgc))});
    LinkOf(*FindPgc(project.Disc, link.Pgc), link.Kind) = name;
  }
}

}  // namespace

RemovalEffect EffectOfRemoval(EditSession& session, std::string_view key) {
  RemovalEffect effect{.Refusal = RefuseRemoval(session.Work(), key), .Commands = {}, .Links = {}};
  if (!effect.Refusal) {
    for (const CommandPlace& place : session.Aims().To(key)) {
      effect.Commands.push_back(WordsOf(session.Work(), place));
    }
    for (const PgcLink& link : LinksTo(session.Work(), key, true)) {
      effect.Links.push_back(link.Pgc);
    }
  }
  return effect;
}

void TakeAway(Change& change, const EditSession& session, std::string_view key) {
  SetLinks(change, LinksTo(change.Work(), key, true), NoLink);
  for (const CommandPlace& place : session.Aims().To(key)) {
    ResetToNop(change.EditCommand(place));
  }
  Project& project = change.Touch({Part::OfEntry(EntryNumber(key))});
  MarkRemoved(project.Disc, key, WordOf(project, key));
}

Outcome Remove(EditSession& session, std::string_view key, Consent consent) {
  const Project& work = session.Work();
  if (auto refusal = RefuseRemoval(work, key)) {
    return Outcome::Refused(std::move(*refusal));
  }
  const std::string_view word = WordOf(work, key);
  const std::vector<CommandPlace> commands = session.Aims().To(key);
  if (consent == Consent::None) {
    return Outcome::Asks(commands.empty() ? MessageOf(message::AskRemoval, key, NameOfElement(work, key))
                                          : MessageOf(message::AskRemovalOfTarget, key, word));
  }
  try {
    Change change(session, "Remove " + NameOfElement(work, key));
    TakeAway(change, session, key);
    return change.Commit(std::string(key));
  } catch (const std::exception&) {
    return Outcome::Refused(MessageOf(message::RemovalFault, key));
  }
}

Outcome Rename(EditSession& session, std::string_view key, std::string name) {
  const Project& work = session.Work();
  const auto kind = NamedKind(work, key);
  if (!kind) {
    return Outcome::Refused(MessageOf(message::NoSuchElement, key, "title, PGC, program or cell", key));
  }
  if (auto refusal = RefuseName(work, *kind, name, key)) {
    return Outcome::Refused(std::move(*refusal));
  }
  const auto edits = session.Aims().Renamed(work, key, name);
  if (!edits) {
    return Outcome::Refused(MessageOf(message::CommandCannotName, key, name));
  }
  Change change(session, "Rename");
  if (*kind == ElementKind::Pgc) {
    SetLinks(change, LinksTo(work, key, false), name);
  }
  for (const CommandEdit& edit : *edits) {
    change.EditCommand(edit.Place).FullCommand = edit.Text;
  }
  NameIn(change.Touch({Part::OfEntry(EntryNumber(key))}), key, *kind) = std::move(name);
  return change.Commit(std::string(key));
}

}  // namespace quorvelant
