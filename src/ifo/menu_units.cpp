#include "ifo/menu_units.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "base/text.h"
#include "disc/table_layout.h"
#include "ifo/pgc_writer.h"
#include "model/cls_dvd.h"
#include "model/menu_kind.h"

namespace quorvelant {
namespace {

constexpr std::uint16_t NoLanguage = 0xFFFF;
// The unit of an entry without menus: one PGC of zeros. Traditionally its end fields point one byte
// further than other tables' do.
constexpr std::size_t EmptyPgcBytes = 251;

// A unit names its language by its code or by its name.
disc::LanguageCode CodeOf(std::string_view language) {
  if (EqualNoCase(language, "Not Specified")) {
    return {NoLanguage};
  }
  return disc::LanguageCodeOf(language.size() == 2 ? language : CLsDVD::LangNameToLangCode(language));
}

void PutLast(ByteSpan table, std::size_t last) {
  Put(table, table_head::Last, disc::ByteOffset{static_cast<std::uint32_t>(last)});
}

Bytes BuildUnit(const EntryRecords& records, const Lang_P& language) {
  const auto chains = Live(language.PGC);
  const PgcNumbers numbers = PgcNumbers::OfUnit(records.Entry, language, records.Rules);
  Bytes bytes(table_head::Size + pgc_entry::Size * chains.size());
  Put(bytes, table_head::Count, disc::Number{chains.size()});
  for (std::size_t i = 0; i < chains.size(); ++i) {
    const ByteSpan entry = ByteSpan(bytes).subspan(table_head::Size + pgc_entry::Size * i);
    Put(entry, pgc_entry::Category, disc::Number{MenuKindOf(chains[i]->MenuType).Category});
    Put(entry, pgc_entry::Start, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size())});
    const Bytes chain = BuildPgc(*chains[i], {records, Domain::Menu, numbers});
    bytes.insert(bytes.end(), chain.begin(), chain.end());
  }
  PutLast(bytes, bytes.size() - 1);
  return bytes;
}

Bytes BuildEmptyUnits() {
  constexpr std::size_t UnitStart = table_head::Size + language_unit::Size;
  constexpr std::size_t ChainStart = table_head::Size + pgc_entry::Size;  // within the unit
  Bytes bytes(UnitStart + ChainStart + EmptyPgcBytes);
  Put(bytes, table_head::Count, disc::Number{1});
  PutLast(bytes, bytes.size());
  const ByteSpan unit = ByteSpan(bytes).subspan(table_head::Size);
  Put(unit, language_unit::Language, disc::LanguageCode{NoLanguage});
  Put(unit, language_unit::Start, disc::ByteOffset{UnitStart});
  const ByteSpan table = ByteSpan(bytes).subspan(UnitStart);
  Put(table, table_head::Count, disc::Number{1});
  PutLast(table, table.size());
  Put(table.subspan(table_head::Size), pgc_entry::Start, disc::ByteOffset{ChainStart});
  return bytes;
}

}  // namespace

Bytes BuildMenuUnits(const EntryRecords& records) {
  const auto languages = Live(records.Entry.Lang);
  if (languages.empty()) {
    return BuildEmptyUnits();
  }
  Bytes bytes(table_head::Size + language_unit::Size * languages.size());
  Put(bytes, table_head::Count, disc::Number{languages.size()});
  for (std::size_t i = 0; i < languages.size(); ++i) {
    std::uint8_t existence = 0;
    for (const PGC_P* chain : Live(languages[i]->PGC)) {
      existence |= MenuKindOf(chain->MenuType).Existence;
    }
    const ByteSpan entry = ByteSpan(bytes).subspan(table_head::Size + language_unit::Size * i);
    Put(entry, language_unit::Language, CodeOf(languages[i]->Language));
    Put(entry, language_unit::Existence, disc::Number{existence});
    Put(entry, language_unit::Start, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size())});
    const Bytes unit = BuildUnit(records, *languages[i]);
    bytes.insert(bytes.end(), unit.begin(), unit.end());
  }
  PutLast(bytes, bytes.size() - 1);
  return bytes;
}

}  // namespace quorvelant
