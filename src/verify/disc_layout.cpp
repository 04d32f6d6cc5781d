#include "verify/disc_layout.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string_view>

#include "base/text.h"
#include "disc/disc_files.h"
#include "disc/limits.h"
#include "disc/table_layout.h"
#include "disc/vtsi_layout.h"
#include "verify/ifo_view.h"

namespace quorvelant {
namespace {

constexpr std::uint64_t MostVobBytes = std::uint64_t{MostVobSectors} * SectorBytes;

void Wrong(const std::string& file, const char* field, const std::string& expected, const std::string& seen,
           DiscFindings& findings) {
  findings.Add(message::FileWrong, {.File = file}, "VIDEO_TS", field, expected, seen);
}

// The title set that a name belongs to, 0 for the manager; nothing for names that no disc has.
std::optional<int> SetOfName(const std::string& name, DiscFindings& findings) {
  if (!IsDiscFileName(name)) {
    findings.Add(message::FileOdd, {.File = name}, "VIDEO_TS", "name", "names of DVD-Video alone", name);
    return std::nullopt;
  }
  if (name != Upper(name)) {
    Wrong(name, "name", "capital letters", name, findings);
    return std::nullopt;
  }
  if (name.starts_with("VIDEO_TS")) {
    return 0;
  }
  const int set = 10 * (name[4] - '0') + (name[5] - '0');
  const bool isVob = name.ends_with(".VOB");
  if (set == 0 || (!isVob && name[7] != '0')) {
    Wrong(name, "name", "VTS_01 to VTS_99, with IFO and BUP at 0", name, findings);
    return std::nullopt;
  }
  return set;
}

void AddVob(VobSetFiles& files, const DiscSourceFile* file, DiscFindings& findings) {
  if (file->Size > MostVobBytes) {
    Wrong(file->Name, "size", fmt::format("at most {} bytes", MostVobBytes), std::to_string(file->Size),
          findings);
  }
  files.Files.push_back({file, files.Sectors(), static_cast<std::uint32_t>(file->Size / SectorBytes)});
}

std::uint32_t SectorsOf(const DiscSourceFile* file) {
  return file != nullptr ? static_cast<std::uint32_t>(file->Size / SectorBytes) : 0;
}

// Tables count sectors from a file on, so those that they place come behind it. False where one does not,
// which is told: the image was not laid out as one of DVD-Video.
bool ComesBehind(const DiscSourceFile& file, const DiscSourceFile& first, DiscFindings& findings) {
  if (!file.FirstSector || !first.FirstSector || *file.FirstSector > *first.FirstSector) {
    return true;
  }
  findings.Add(message::LayoutWrong, {.File = file.Name}, "image", "first sector",
               fmt::format("behind {}, at {}", first.Name, *first.FirstSector),
               std::to_string(*file.FirstSector));
  return false;
}

// In an image the title VOBs follow on one another, and the backup is out of reach of a scratch on the IFO.
void CheckAdjacency(const DiscDomain& domain, bool isBackupBehind, DiscFindings& findings) {
  for (const VobFile& file : domain.Titles.Files) {
    const auto first = domain.Titles.Files.front().File->FirstSector;
    if (first && *file.File->FirstSector != *first + file.First) {
      findings.Add(message::LayoutWrong, {.File = file.File->Name}, "image", "first sector",
                   std::to_string(*first + file.First), std::to_string(*file.File->FirstSector));
    }
  }
  const bool placedInImage =
      isBackupBehind && domain.Ifo->FirstSector && domain.Bup != nullptr && domain.Bup->FirstSector;
  if (placedInImage && *domain.Bup->FirstSector / EccSectors <=
                           (*domain.Ifo->FirstSector + SectorsOf(domain.Ifo) - 1) / EccSectors) {
    findings.Add(message::LayoutLoose, {.File = domain.Bup->Name}, "image", "ECC block",
                 "a block after that of the IFO", "the same");
  }
}

}  // namespace

DiscDomain DomainOf(int set, const DiscSource& source, DiscFindings& findings) {
  const std::string base = IfoBaseName(static_cast<std::size_t>(set));
  DiscDomain domain{.Set = set,
                    .Ifo = source.Find(base + ".IFO"),
                    .Bup = source.Find(base + ".BUP"),
                    .Menus = {},
                    .Titles = {}};
  const bool isAny = std::ranges::any_of(source.Files(), [&](const DiscSourceFile& file) {
    return file.Name.starts_with(base.substr(0, base.size() - 1));
  });
  if (set > 0 && !isAny) {
    Wrong(base + ".IFO", "", "the files of the title set", "none", findings);
    return domain;
  }
  for (const auto& [file, extension] : {std::pair{domain.Ifo, ".IFO"}, std::pair{domain.Bup, ".BUP"}}) {
    if (file == nullptr) {
      Wrong(base + extension, "", "the file", "none", findings);
    }
  }
  if (const DiscSourceFile* menu = source.Find(base + ".VOB")) {
    AddVob(domain.Menus, menu, findings);
  }
  bool gap = false;
  for (int number = 1; set > 0 && number <= MostTitleVobs; ++number) {
    const std::string name = fmt::format("VTS_{:02}_{}.VOB", set, number);
    const DiscSourceFile* vob = source.Find(name);
    if (vob != nullptr && gap) {
      Wrong(name, "name", "VOBs numbered in a row from 1", name, findings);
    } else if (vob != nullptr) {
      AddVob(domain.Titles, vob, findings);
    }
    gap = gap || vob == nullptr;
  }
  if (set > 0 && domain.Titles.Files.empty()) {
    Wrong(fmt::format("VTS_{:02}_1.VOB", set), "", "the file", "none", findings);
  }
  return domain;
}

std::vector<DiscDomain> DomainsOf(const DiscSource& source, DiscFindings& findings) {
  int sets = 0;
  for (const DiscSourceFile& file : source.Files()) {
    const auto set = SetOfName(file.Name, findings);
    sets = std::max(sets, set.value_or(0));
    if (set && (file.Size == 0 || file.Size % SectorBytes != 0)) {
      Wrong(file.Name, "size", "sectors of 2048 bytes", std::to_string(file.Size), findings);
    }
  }
  std::vector<DiscDomain> domains;
  for (int set = 0; set <= sets; ++set) {
    domains.push_back(DomainOf(set, source, findings));
  }
  return domains;
}

void CheckLayout(const DiscDomain& domain, const IfoTables& tables, DiscFindings& findings) {
  const IfoTeller teller(tables.Name, findings);
  const std::string table = tables.IsManager() ? "VMGI_MAT" : "VTSI_MAT";
  const std::uint32_t ifo = SectorsOf(domain.Ifo);
  const std::uint32_t menus = domain.Menus.Sectors();
  const std::uint32_t titles = domain.Titles.Sectors();
  const auto compare = [&](std::size_t offset, const char* field, std::uint32_t expected,
                           std::uint32_t seen) {
    if (seen != expected) {
      // Room between the files is filled up when an image is made.
      const bool padded = seen > expected && !tables.IsOurs && !domain.Ifo->FirstSector;
      teller.Tell(padded ? message::LayoutLoose : message::LayoutWrong, static_cast<std::uint32_t>(offset),
                  table, field, expected, seen);
    }
  };
  const auto isBehind = [&](const DiscSourceFile* file) {
    return file == nullptr || ComesBehind(*file, *domain.Ifo, findings);
  };
  const auto placed = [&](const DiscSourceFile* file, std::uint32_t inFolder) {
    return file != nullptr && file->FirstSector ? *file->FirstSector - *domain.Ifo->FirstSector : inFolder;
  };
  const DiscSourceFile* menu = domain.Menus.Files.empty() ? nullptr : domain.Menus.Files.front().File;
  const char* const menuField = tables.IsManager() ? "VMGM_VOBS_SA" : "VTSM_VOBS_SA";
  if (menu == nullptr && !tables.IsOurs && tables.MenuStart != 0) {  // where they would be
    teller.Tell(message::LayoutLoose, static_cast<std::uint32_t>(vtsi::MenuVobs.Offset), table, menuField, 0,
                tables.MenuStart);
  } else if (menu == nullptr || tables.MenuStart == 0) {
    compare(vtsi::MenuVobs.Offset, menuField, menu == nullptr ? 0 : ifo, tables.MenuStart);
  } else if (isBehind(menu)) {
    compare(vtsi::MenuVobs.Offset, menuField, placed(menu, ifo), tables.MenuStart);
  }
  if (!tables.IsManager() && !domain.Titles.Files.empty() && isBehind(domain.Titles.Files.front().File)) {
    compare(vtsi::TitleVobs.Offset, "VTSTT_VOBS_SA", placed(domain.Titles.Files.front().File, ifo + menus),
            tables.TitleStart);
  }
  const bool isBackupBehind = isBehind(domain.Bup);
  if (domain.Bup != nullptr && isBackupBehind) {
    compare(vtsi::SetLast.Offset, tables.IsManager() ? "VMG_EA" : "VTS_EA",
            placed(domain.Bup, ifo + menus + titles) + SectorsOf(domain.Bup) - 1, tables.LastSector);
  }
  CheckAdjacency(domain, isBackupBehind, findings);
}

void CheckPlaces(const std::vector<DiscDomain>& domains, const IfoTables& manager, DiscFindings& findings) {
  const IfoTeller teller(manager.Name, findings);
  const DiscSourceFile* first = domains.front().Ifo;
  std::vector<const DiscSourceFile*> ifos;  // that come behind the manager's
  for (const DiscDomain& domain : domains) {
    const bool isPlaced = &domain != &domains.front() && first != nullptr && first->FirstSector &&
                          domain.Ifo != nullptr && domain.Ifo->FirstSector &&
                          ComesBehind(*domain.Ifo, *first, findings);
    ifos.push_back(isPlaced ? domain.Ifo : nullptr);
  }
  for (const IfoTitle& title : manager.Titles) {
    const bool known = title.Set >= 1 && title.Set < static_cast<int>(ifos.size());
    const DiscSourceFile* ifo = known ? ifos[static_cast<std::size_t>(title.Set)] : nullptr;
    if (ifo != nullptr && *ifo->FirstSector != *first->FirstSector + title.SetStart) {
      teller.Tell(message::LayoutWrong, title.At + static_cast<std::uint32_t>(title_entry::SetStart.Offset),
                  "TT_SRPT", "VTS_SA", *ifo->FirstSector - *first->FirstSector, title.SetStart);
    }
  }
}

}  // namespace quorvelant
