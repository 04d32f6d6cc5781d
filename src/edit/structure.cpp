#include "edit/structure.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "disc/limits.h"
#include "edit/change.h"
#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "edit/messages.h"
#include "edit/source_paths.h"
#include "model/cls_dvd.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoMenuType = "None";

Outcome NoSuch(std::string_view what, std::string_view key) {
  return Outcome::Refused(MessageOf(message::NoSuchElement, key, what, key));
}

template <class List>
std::size_t LiveCount(const List& list) {
  return static_cast<std::size_t>(std::ranges::count_if(list, IsLive));
}

// Players take 999 PGCs of a language, and of all titles of a set together.
std::size_t PgcsBeside(const Project& project, std::string_view parent) {
  if (const Lang_P* language = LiveLanguage(project, parent)) {
    return LiveCount(language->PGC);
  }
  std::size_t count = 0;
  for (const Title_P* title : Live(FindEntry(project.Disc, parent)->Title)) {
    count += LiveCount(title->PGC);
  }
  return count;
}

std::size_t TitlesOf(const Project& project) {
  std::size_t count = 0;
  for (const VTS_P* entry : Live(project.Disc)) {
    count += LiveCount(entry->Title);
  }
  return count;
}

std::string_view UsualMenu(int entry) {
  return entry == 1 ? "TitleMenu" : "Root";
}

PGC_P ChainOf(std::string_view parent, std::size_t number, std::string name) {
  return MakePgc(std::move(name), TitleSetEntry(parent), LanguageNumber(parent), TitleNumber(parent),
                 PgcKey(parent, static_cast<int>(number)));
}

std::string NextPgcName(const EditSession& session, std::string_view unitName, std::size_t count) {
  return FreeName(session, ElementKind::Pgc, fmt::format("{}_PGC", unitName), count + 1);
}

std::string LanguageUnitOf(const Lang_P& language) {
  return LanguageUnitName(TitleSetEntry(language.Key), CLsDVD::LangCodeToLangName(language.Language));
}

template <class Element, class Find, class FindLive>
Outcome SetFields(EditSession& session, std::string_view key, const FieldSetter<Element>& set,
                  std::string_view what, FindLive findLive, Find find) {
  if (findLive(session.Work(), key) == nullptr) {
    return NoSuch(what, key);
  }
  Change change(session, fmt::format("Change {}", key));
  Outcome outcome = set(find(change));
  return outcome.IsDone() ? change.Commit(std::string(key)) : outcome;
}

std::size_t EntryNumber(std::string_view key) {
  return static_cast<std::size_t>(TitleSetEntry(key));
}

Outcome AddPgc(EditSession& session, std::string_view parent, std::string name) {
  Change change(session, "New PGC");
  VTS_P& entry = change.EditEntry(EntryNumber(parent));
  Collection<PGC_P>* chains = nullptr;
  std::string_view menuType;
  if (InTitleDomain(parent)) {
    chains = &entry.Title.Item(static_cast<std::size_t>(TitleNumber(parent)))->PGC;
  } else {
    chains = &entry.Lang.Item(static_cast<std::size_t>(LanguageNumber(parent)))->PGC;
    menuType = std::ranges::none_of(*chains, IsLive) ? UsualMenu(TitleSetEntry(parent)) : NoMenuType;
  }
  PGC_P chain = ChainOf(parent, chains->Count() + 1, std::move(name));
  chain.MenuType = menuType;
  return change.Commit(chains->Add(std::move(chain)).Key);
}

// The usual name of a new element may be one that the user gave to another.
void KeepOrFree(const EditSession& session, ElementKind kind, std::string& name) {
  if (session.Aims().HasName(name)) {
    name = FreeName(session, kind, name + "_", 2);
  }
}

}  // namespace

Message NameQuestion(NewLevel level) {
  switch (level) {
    case NewLevel::Pgc:
      return MessageOf(message::AskPgcName, {});
    case NewLevel::Program:
      return MessageOf(message::AskProgramName, {});
    case NewLevel::Title:
      return MessageOf(message::AskTitleName, {});
  }
  return {};
}

std::string ProposedName(const EditSession& session, std::string_view parent) {
  const Project& project = session.Work();
  if (const Lang_P* language = LiveLanguage(project, parent)) {
    return NextPgcName(session, LanguageUnitOf(*language), language->PGC.Count());
  }
  if (const Title_P* title = LiveTitle(project, parent)) {
    return NextPgcName(session, title->TitleName, title->PGC.Count());
  }
  if (const PGC_P* chain = LivePgc(project, parent)) {
    return FreeName(session, ElementKind::Program, chain->PGCName + "_Pgm", chain->PG.Count() + 1);
  }
  const VTS_P* set = LiveEntry(project, parent);
  return set == nullptr
             ? std::string()
             : FreeName(session, ElementKind::Title, set->VTSName + "_Title", set->Title.Count() + 1);
}

Outcome NewPgc(EditSession& session, std::string_view parent, std::string name) {
  const Project& project = session.Work();
  if (LiveLanguage(project, parent) == nullptr && LiveTitle(project, parent) == nullptr) {
    return NoSuch("language or title", parent);
  }
  if (PgcsBeside(project, parent) >= MostPgcs) {
    return Outcome::Refused(MessageOf(message::MostPgcsReached, parent));
  }
  if (auto refusal = RefuseName(project, ElementKind::Pgc, name)) {
    return Outcome::Refused(std::move(*refusal));
  }
  return AddPgc(session, parent, std::move(name));
}

Outcome NewProgram(EditSession& session, std::string_view pgc, std::string name) {
  const PGC_P* chain = pgc == FirstPgcKey ? nullptr : LivePgc(session.Work(), pgc);
  if (chain == nullptr) {
    return NoSuch("PGC", pgc);
  }
  if (LiveCount(chain->PG) >= MostPrograms) {
    return Outcome::Refused(MessageOf(message::MostProgramsReached, pgc));
  }
  if (auto refusal = RefuseName(session.Work(), ElementKind::Program, name)) {
    return Outcome::Refused(std::move(*refusal));
  }
  Change change(session, "New Program");
  change.EditEntry(EntryNumber(pgc));
  PGC_P* changed = FindPgc(change.Touch({}).Disc, pgc);
  PG_P program;
  program.Key = ProgramKey(pgc, static_cast<int>(changed->PG.Count() + 1));
  program.PGName = std::move(name);
  return change.Commit(changed->PG.Add(std::move(program)).Key);
}

Outcome NewTitle(EditSession& session, std::string_view set, std::string name) {
  const VTS_P* entry = LiveEntry(session.Work(), set);
  if (entry == nullptr) {
    return NoSuch("title set", set);
  }
  if (TitleSetEntry(set) == 1) {
    return Outcome::Refused(MessageOf(message::ManagerHasNoTitles, set));
  }
  if (TitlesOf(session.Work()) >= MostTitles) {
    return Outcome::Refused(MessageOf(message::MostTitlesReached, set));
  }
  if (auto refusal = RefuseName(session.Work(), ElementKind::Title, name)) {
    return Outcome::Refused(std::move(*refusal));
  }
  Change change(session, "New Title");
  Title_P title;
  title.Key = TitleKey(set, static_cast<int>(entry->Title.Count() + 1));
  title.TitleName = std::move(name);
  const std::string key = change.EditEntry(EntryNumber(set)).Title.Add(std::move(title)).Key;
  const Outcome chain = NewPgc(session, key, ProposedName(session, key));
  return chain.IsDone() ? change.Commit(key) : chain;
}

Outcome NewLanguage(EditSession& session, std::string_view entry, std::string_view language) {
  const VTS_P* parent = LiveEntry(session.Work(), entry);
  if (parent == nullptr) {
    return NoSuch("Video Manager or title set", entry);
  }
  const auto row = CLsDVD::LanguageCalled(Trim(language));
  const std::string_view code = row ? CLsDVD::SpareLanguage(*row) : std::string_view();
  if (Trim(code).empty()) {  // "None Specified" is no language of a menu
    return Outcome::Refused(MessageOf(message::LanguageUnknown, entry, language));
  }
  const auto isSame = [&code](const Lang_P* unit) { return unit->Language == code; };
  if (std::ranges::any_of(Live(parent->Lang), isSame)) {
    return Outcome::Refused(MessageOf(message::LanguageTaken, entry));
  }
  if (LiveCount(parent->Lang) >= MostLanguages) {
    return Outcome::Refused(MessageOf(message::MostLanguagesReached, entry));
  }
  Change change(session, "New Language");
  Lang_P unit;
  unit.Key = LanguageKey(entry, static_cast<int>(parent->Lang.Count() + 1));
  unit.Language = code;
  const std::string key = change.EditEntry(EntryNumber(entry)).Lang.Add(std::move(unit)).Key;
  const Outcome chain = NewPgc(session, key, ProposedName(session, key));
  return chain.IsDone() ? change.Commit(key) : chain;
}

Outcome NewTitleSet(EditSession& session) {
  const Project& project = session.Work();
  if (LiveCount(project.Disc) > MostTitleSets) {  // the Video Manager is among them
    return Outcome::Refused(MessageOf(message::MostSetsReached, {}));
  }
  if (TitlesOf(project) >= MostTitles) {
    return Outcome::Refused(MessageOf(message::MostTitlesReached, {}));
  }
  Change change(session, "New Title Set");
  const std::size_t number = project.Disc.Count() + 1;
  Project& changed = change.Touch({Part::OfEntry(number)});
  AddNewVTSSet(changed, true, static_cast<std::int32_t>(number - 1));
  VTS_P& set = *changed.Disc.Item(number);
  Title_P& title = *set.Title.Item(1);
  PGC_P& chain = *title.PGC.Item(1);
  PGC_P& menu = *set.Lang.Item(1)->PGC.Item(1);
  KeepOrFree(session, ElementKind::Title, title.TitleName);
  KeepOrFree(session, ElementKind::Pgc, chain.PGCName);
  KeepOrFree(session, ElementKind::Pgc, menu.PGCName);
  menu.PreCommands.clear();
  AddCommand(menu.PreCommands, "Pre", "JumpVTS_TT " + title.TitleName);
  return change.Commit(set.Key);
}

Outcome SetEntry(EditSession& session, std::string_view key, const FieldSetter<VTS_P>& set) {
  return SetFields(session, key, set, "title set", LiveEntry,
                   [key](Change& change) -> VTS_P& { return change.EditEntry(EntryNumber(key)); });
}

Outcome SetTitle(EditSession& session, std::string_view key, const FieldSetter<Title_P>& set) {
  return SetFields(session, key, set, "title", LiveTitle, [key](Change& change) -> Title_P& {
    return *FindTitle(change.Touch({Part::OfEntry(EntryNumber(key))}).Disc, key);
  });
}

Outcome SetPgc(EditSession& session, std::string_view key, const FieldSetter<PGC_P>& set) {
  return SetFields(session, key, set, "PGC", LivePgc, [key](Change& change) -> PGC_P& {
    return key == FirstPgcKey ? change.EditFirstPlay()
                              : *FindPgc(change.Touch({Part::OfEntry(EntryNumber(key))}).Disc, key);
  });
}

Outcome SetCell(EditSession& session, std::string_view key, const FieldSetter<Cell_P>& set) {
  return SetFields(session, key, set, "cell", LiveCell, [key](Change& change) -> Cell_P& {
    return *FindCell(change.Touch({Part::OfEntry(EntryNumber(key))}).Disc, key);
  });
}

Outcome SetDestination(EditSession& session, std::string folder) {
  if (auto refusal = RefusePath(folder)) {
    return Outcome::Refused(std::move(*refusal));
  }
  Change change(session, "Change Destination");
  change.EditDestination() = std::move(folder);
  return change.Commit();
}

}  // namespace quorvelant
