#include "verify/ifo_small_tables.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <tuple>

#include "disc/limits.h"
#include "disc/table_layout.h"
#include "player/nav_words.h"
#include "verify/ifo_chains.h"

namespace quorvelant {
namespace {

// The count of a table whose entries of `width` bytes follow its head; no more than there is room for.
std::size_t CountOf(const IfoView& table, std::size_t width, std::size_t most, const std::string& name,
                    const IfoTeller& teller) {
  const std::size_t count = table.Word(0);
  teller.CheckReserved(table_head::Rows, table, name);
  if (count < 1 || count > most || !table.Has(table_head::Size, width * count)) {
    teller.Tell(message::TableBroken, table.At(), name, "count",
                fmt::format("1 to {}, within the table", most), count);
    return std::min({count, most, (table.Size() - std::min(table.Size(), table_head::Size)) / width});
  }
  return count;
}

// Bits of PGCI_LU_EXIST by the menu that an entry chain is.
unsigned ExistenceBit(unsigned menu, bool ofManager) {
  if (ofManager) {
    return menu == 2 ? 0x80 : 0;
  }
  return menu >= 3 && menu <= 7 ? 0x80U >> (menu - 3) : 0;
}

void CheckEntries(const IfoLanguage& unit, const std::string& name, bool ofManager, const IfoTeller& teller) {
  unsigned bits = 0;
  std::set<unsigned> seen;
  for (const IfoChain& chain : unit.Chains) {
    if (!chain.IsEntry()) {
      continue;
    }
    const unsigned menu = chain.Category & 15U;
    const unsigned bit = ExistenceBit(menu, ofManager);
    if (bit == 0 || !seen.insert(menu).second) {
      teller.Tell(message::ChainBroken, chain.At, fmt::format("{} PGC {}", name, chain.Number), "PGC_CAT",
                  "a menu of this domain, once", menu);
    }
    bits |= bit;
  }
  if (unit.Existence != bits) {
    // Players look for the menu itself.
    teller.Tell(teller.IsOurs() ? message::TableBroken : message::TableLoose,
                unit.At + language_unit::Existence.Offset, name, "PGCI_LU_EXIST",
                fmt::format("0x{:02X}", bits), fmt::format("0x{:02X}", unit.Existence));
  }
}

}  // namespace

std::vector<IfoTitle> ReadTitleSearch(const IfoView& table, const IfoTeller& teller) {
  using namespace title_entry;  // NOLINT(google-build-using-namespace): the rows of one record
  const std::size_t count = CountOf(table, Size, MostTitles, "TT_SRPT", teller);
  std::vector<IfoTitle> titles;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = table_head::Size + Size * i;
    titles.push_back({.At = table.At(at),
                      .PlaybackType = static_cast<std::uint8_t>(table.Byte(at)),
                      .Angles = static_cast<int>(table.Byte(at + Angles.Offset)),
                      .Parts = table.Word(at + Chapters.Offset),
                      .Set = static_cast<int>(table.Byte(at + TitleSet.Offset)),
                      .InSet = static_cast<int>(table.Byte(at + TitleInSet.Offset)),
                      .SetStart = table.Long(at + SetStart.Offset)});
    if ((titles.back().PlaybackType & 0x80U) != 0) {
      teller.Tell(message::ReservedSet, table.At(at), fmt::format("TT_SRPT title {}", i + 1), "TT_PB_TY",
                  "bit 7 clear", "set");
    }
  }
  teller.CheckEnd(table, table_head::Last.Offset, table_head::Size + Size * table.Word(0), "TT_SRPT");
  return titles;
}

std::vector<std::vector<IfoPart>> ReadParts(const IfoView& table, const IfoTeller& teller) {
  constexpr std::size_t PartBytes = 4;
  const std::size_t count = CountOf(table, 4, MostTitles, "VTS_PTT_SRPT", teller);
  std::vector<std::vector<IfoPart>> titles;
  const auto startOf = [&](std::size_t i) {
    return i < count ? std::size_t{table.Long(table_head::Size + 4 * i)}
                     : std::min<std::size_t>(std::size_t{table.Long(4)} + 1, table.Size());
  };
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t start = startOf(i);
    const std::size_t end = startOf(i + 1);
    const std::size_t least = table_head::Size + 4 * count;
    auto& parts = titles.emplace_back();
    if (start < least || (i == 0 && start != least) || end < start + PartBytes ||
        (end - start) % PartBytes != 0 || !table.Has(start, end - start)) {
      teller.Tell(message::TableBroken, table.At(table_head::Size + 4 * i), "VTS_PTT_SRPT",
                  fmt::format("TTU_SA {}", i + 1), "parts of 4 bytes, one title after the other",
                  fmt::format("{} to {}", start, end));
      continue;
    }
    for (std::size_t at = start; at < end && parts.size() < MostParts; at += PartBytes) {
      parts.push_back({table.Word(at), table.Word(at + 2)});
    }
  }
  return titles;
}

std::vector<IfoLanguage> ReadLanguages(const IfoView& table, const std::string& name, bool ofManager,
                                       const IfoTeller& teller) {
  const std::size_t count = CountOf(table, language_unit::Size, MostLanguages, name, teller);
  std::vector<IfoLanguage> units;
  std::size_t end = table_head::Size + language_unit::Size * count;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = table_head::Size + language_unit::Size * i;
    const std::size_t start = table.Long(at + language_unit::Start.Offset);
    IfoLanguage unit{
        .At = table.At(at),
        .Language = table.Word(at),
        .Existence = static_cast<std::uint8_t>(table.Byte(at + language_unit::Existence.Offset))};
    const std::string unitName = fmt::format("{} {}", name, LanguageLetters(unit.Language));
    teller.CheckReserved(language_unit::Rows, table.Sub(at, language_unit::Size),
                         fmt::format("{} unit {}", name, i + 1));
    const bool letters = std::islower(unit.Language >> 8) != 0 && std::islower(unit.Language & 0xFF) != 0;
    if (!letters) {
      teller.Tell(message::TableLoose, table.At(at), fmt::format("{} unit {}", name, i + 1), "PGCI_LU_LCD",
                  "two small letters", fmt::format("0x{:04X}", unit.Language));
    }
    if (start < table_head::Size + language_unit::Size * count || !table.Has(start, table_head::Size)) {
      teller.Tell(message::TableBroken, table.At(at + language_unit::Start.Offset), name, "PGCI_LU_SA",
                  "an offset within the table", start);
    } else {
      const std::size_t size = std::size_t{table.Long(start + table_head::Last.Offset)} + 1;
      end = std::max(end, start + size);
      unit.Chains = ReadIfoChains(table.Sub(start, size), letters ? unitName : name, teller);
      CheckEntries(unit, letters ? unitName : name, ofManager, teller);
    }
    units.push_back(std::move(unit));
  }
  teller.CheckEnd(table, table_head::Last.Offset, end, name);
  return units;
}

std::vector<IfoTimeMap> ReadTimeMaps(const IfoView& table, const IfoTeller& teller) {
  constexpr std::size_t MostEntries = 2048;
  const std::size_t count = CountOf(table, 4, MostPgcs, "VTS_TMAPT", teller);
  std::vector<IfoTimeMap> maps;
  std::size_t end = table_head::Size + 4 * count;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t start = table.Long(table_head::Size + 4 * i);
    IfoTimeMap map{.At = table.At(start), .UnitSeconds = static_cast<int>(table.Byte(start))};
    const std::size_t entries = table.Word(start + time_map::Entries.Offset);
    const std::string name = fmt::format("VTS_TMAP {}", i + 1);
    if (start < table_head::Size + 4 * count || !table.Has(start, time_map::Size + 4 * entries) ||
        entries > MostEntries || (entries > 0 && map.UnitSeconds == 0)) {
      teller.Tell(message::TableBroken, table.At(table_head::Size + 4 * i), name, "TMAP_SA, TMU or MAP_EN_Ns",
                  "a map within the table",
                  fmt::format("{} entries of {} s at {}", entries, map.UnitSeconds, start));
      maps.push_back(map);
      continue;
    }
    teller.CheckReserved(time_map::Rows, table.Sub(start, time_map::Size), name);
    for (std::size_t k = 0; k < entries; ++k) {
      map.Entries.push_back(table.Long(start + time_map::Size + 4 * k));
    }
    end = std::max(end, start + time_map::Size + 4 * entries);
    maps.push_back(std::move(map));
  }
  teller.CheckEnd(table, table_head::Last.Offset, end, "VTS_TMAPT");
  return maps;
}

std::vector<IfoCellAddress> ReadCellAddresses(const IfoView& table, const std::string& name,
                                              const IfoTeller& teller) {
  std::vector<IfoCellAddress> rows;
  const std::size_t bytes = std::size_t{table.Long(table_head::Last.Offset)} + 1;
  if (bytes < table_head::Size || (bytes - table_head::Size) % cell_address::Size != 0) {
    teller.Tell(message::TableBroken, table.At(table_head::Last.Offset), name, "end_address",
                "whole entries of 12 bytes", bytes - 1);
  }
  teller.CheckReserved(table_head::Rows, table, name);
  std::set<unsigned> vobs;
  for (std::size_t at = table_head::Size; table.Has(at, cell_address::Size); at += cell_address::Size) {
    teller.CheckReserved(cell_address::Rows, table.Sub(at, cell_address::Size), name);
    rows.push_back({table.Word(at), static_cast<std::uint8_t>(table.Byte(at + cell_address::CellId.Offset)),
                    table.Long(at + cell_address::Start.Offset), table.Long(at + cell_address::Last.Offset)});
    vobs.insert(rows.back().VobId);
  }
  if (vobs.size() != table.Word(0)) {
    teller.Tell(message::TableBroken, table.At(), name, "VOB_Ns", vobs.size(), table.Word(0));
  }
  const auto key = [](const IfoCellAddress& row) { return std::tuple(row.VobId, row.CellId, row.Start); };
  if (!std::ranges::is_sorted(rows, {}, key)) {
    teller.Tell(message::TableBroken, table.At(table_head::Size), name, "VOB_IDN, C_IDN", "rising",
                "another order");
  }
  return rows;
}

std::vector<std::uint32_t> ReadVobuMap(const IfoView& table, const std::string& name,
                                       const IfoTeller& teller) {
  const std::size_t bytes = std::size_t{table.Long(0)} + 1;
  if (bytes < 4 || bytes % 4 != 0) {
    teller.Tell(message::TableBroken, table.At(), name, "VOBU_ADMAP_EA", "whole addresses of 4 bytes",
                bytes - 1);
  }
  std::vector<std::uint32_t> sectors;
  for (std::size_t at = 4; table.Has(at, 4); at += 4) {
    sectors.push_back(table.Long(at));
  }
  return sectors;
}

std::vector<std::pair<std::uint32_t, Bytes>> ReadSetAttributes(const IfoView& table,
                                                               const IfoTeller& teller) {
  constexpr std::size_t LeastBytes = 0x164;  // with the counts of the title streams
  const std::size_t count = CountOf(table, 4, MostTitleSets, "VTS_ATRT", teller);
  std::size_t end = table_head::Size + 4 * count;
  std::vector<std::pair<std::uint32_t, Bytes>> records;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t start = table.Long(table_head::Size + 4 * i);
    const std::size_t size = std::size_t{table.Long(start)} + 1;
    auto& [at, bytes] = records.emplace_back(table.At(start), Bytes{});
    if (start < table_head::Size + 4 * count || !table.Has(start, size) || size < LeastBytes) {
      teller.Tell(message::TableBroken, table.At(table_head::Size + 4 * i), fmt::format("VTS_ATR {}", i + 1),
                  "VTS_ATR_SA or VTS_ATR_EA", fmt::format("{} bytes or more within the table", LeastBytes),
                  fmt::format("{} bytes at {}", size, start));
      continue;
    }
    for (std::size_t k = 0; k < size; ++k) {
      bytes.push_back(static_cast<std::uint8_t>(table.Byte(start + k)));
    }
    end = std::max(end, start + size);
  }
  teller.CheckEnd(table, table_head::Last.Offset, end, "VTS_ATRT");
  return records;
}

void CheckVideoAttributes(const IfoVideo& video, std::uint32_t at, const std::string& table,
                          const IfoTeller& teller) {
  const unsigned aspect = video.Raw >> 10U & 3U;
  const unsigned size = video.Raw >> 3U & 7U;
  const bool legal = video.Raw >> 14U <= 1 && (video.Raw >> 12U & 3U) <= 1 && (aspect == 0 || aspect == 3) &&
                     size <= 3 && !(aspect == 3 && size > 1) && (video.IsMpeg2() || size >= 2);
  if (!legal) {
    teller.Tell(message::AttributeWrong, at, table, "V_ATR",
                "a coding, standard, aspect and size of the format", fmt::format("0x{:04X}", video.Raw));
  }
}

void CheckAudioAttributes(const IfoAudio& audio, std::uint32_t at, const std::string& table,
                          const IfoTeller& teller) {
  constexpr unsigned Lpcm = 4;
  const bool legal = audio.FirstStream() != 0 && audio.Frequency() <= 1 &&
                     (audio.Frequency() == 0 || audio.Format() == Lpcm) &&
                     (audio.Format() != Lpcm || audio.Quantization() != 3);
  if (!legal) {
    teller.Tell(message::AttributeWrong, at, table, "AST_ATR", "a coding and a frequency of the format",
                fmt::format("0x{:016X}", audio.Raw));
  }
}

}  // namespace quorvelant
