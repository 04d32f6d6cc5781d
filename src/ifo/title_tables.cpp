#include "ifo/title_tables.h"

#include "disc/table_layout.h"
#include "ifo/pgc_writer.h"

namespace quorvelant {

std::vector<std::vector<Chapter>> ChaptersOf(const VTS_P& entry, const DomainRecords& titles) {
  std::vector<std::vector<Chapter>> all;
  std::uint16_t pgcNumber = 0;
  for (const Title_P* title : Live(entry.Title)) {
    std::vector<Chapter>& chapters = all.emplace_back();
    for (const PGC_P* chain : Live(title->PGC)) {
      ++pgcNumber;
      std::uint16_t programNumber = 0;
      for (const PG_P* program : Live(chain->PG)) {
        if (!WrittenCells(*program, titles).empty()) {
          chapters.push_back({pgcNumber, ++programNumber});
        }
      }
    }
  }
  return all;
}

Bytes BuildChapterTable(const EntryRecords& records) {
  const auto titles = ChaptersOf(records.Entry, records.Title);
  if (titles.empty()) {
    return {};
  }
  Bytes bytes(table_head::Size + 4 * titles.size());
  Put(bytes, table_head::Count, disc::Number{titles.size()});
  for (std::size_t i = 0; i < titles.size(); ++i) {
    PutBytes(bytes, table_head::Size + 4 * i, 4, bytes.size());
    for (const Chapter& chapter : titles[i]) {
      bytes.resize(bytes.size() + 4);
      PutBytes(bytes, bytes.size() - 4, 2, chapter.Pgc);
      PutBytes(bytes, bytes.size() - 2, 2, chapter.Program);
    }
  }
  Put(bytes, table_head::Last, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size() - 1)});
  return bytes;
}

Bytes BuildTitlePgcTable(const EntryRecords& records) {
  struct Row {
    const Title_P* Title;
    const PGC_P* Chain;
    std::uint8_t Category;
  };
  std::vector<Row> rows;
  std::uint8_t titleNumber = 0;
  for (const Title_P* title : Live(records.Entry.Title)) {
    ++titleNumber;
    std::uint8_t entryBit = pgc_entry::EntryPgc;
    for (const PGC_P* chain : Live(title->PGC)) {
      rows.push_back({title, chain, static_cast<std::uint8_t>(entryBit | titleNumber)});
      entryBit = 0;
    }
  }
  if (rows.empty()) {
    return {};
  }
  const PgcNumbers numbers = PgcNumbers::OfTitles(records.Entry, records.Rules);
  Bytes bytes(table_head::Size + pgc_entry::Size * rows.size());
  Put(bytes, table_head::Count, disc::Number{rows.size()});
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ByteSpan entry = ByteSpan(bytes).subspan(table_head::Size + pgc_entry::Size * i);
    Put(entry, pgc_entry::Category, disc::Number{rows[i].Category});
    Put(entry, pgc_entry::Start, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size())});
    const Bytes chain = BuildPgc(*rows[i].Chain, {records, Domain::Title, numbers, rows[i].Title});
    bytes.insert(bytes.end(), chain.begin(), chain.end());
  }
  Put(bytes, table_head::Last, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size() - 1)});
  return bytes;
}

}  // namespace quorvelant
