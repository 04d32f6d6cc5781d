#include "edit/element_names.h"

#include <fmt/format.h>

#include <array>

#include "edit/live_elements.h"
#include "model/cls_dvd.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

std::string_view PlainStem(ElementKind kind) {
  constexpr std::array<std::string_view, 4> Stems{"Title_", "PGC_", "Program_", "Cell_"};
  return Stems.at(static_cast<std::size_t>(kind));
}

}  // namespace

std::string FreeName(const EditSession& session, ElementKind kind, std::string_view stem,
                     std::size_t number) {
  if (RefuseNameForm(kind, fmt::format("{}{}", stem, number))) {
    stem = PlainStem(kind);
  }
  std::string name = fmt::format("{}{}", stem, number);
  while (session.Aims().HasName(name)) {
    name = fmt::format("{}{}", stem, ++number);
  }
  return name;
}

std::string NameOfElement(const Project& project, std::string_view key) {
  if (const Cell_P* cell = LiveCell(project, key)) {
    return cell->CellName;
  }
  if (const PG_P* program = LiveProgram(project, key)) {
    return program->PGName;
  }
  if (const PGC_P* chain = LivePgc(project, key)) {
    return chain->PGCName;
  }
  if (const Title_P* title = LiveTitle(project, key)) {
    return title->TitleName;
  }
  if (const Lang_P* language = LiveLanguage(project, key)) {
    return LanguageUnitName(TitleSetEntry(key), CLsDVD::LangCodeToLangName(language->Language));
  }
  const VTS_P* entry = LiveEntry(project, key);
  return entry == nullptr ? std::string() : entry->VTSName;
}

}  // namespace quorvelant
