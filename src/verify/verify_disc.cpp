#include "verify/verify_disc.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "disc/disc_files.h"
#include "disc/start_codes.h"
#include "verify/disc_layout.h"
#include "verify/disc_source.h"
#include "verify/ifo_reader.h"
#include "verify/ifo_view.h"
#include "verify/sector_stream.h"
#include "verify/set_check.h"
#include "verify/title_check.h"
#include "verify/video_headers.h"
#include "verify/vob_scan.h"

namespace quorvelant {
namespace {

class DiscVerifier {
 public:
  DiscVerifier(const std::string& path, UserInterface& ui, Disk& disk)
      : ui_(&ui), source_(OpenDisc(path, result_.Findings, disk)), reader_(source_->NewReader()) {}

  VerifyResult Run() {
    if (source_->Files().empty() && result_.Findings.Count(Severity::Error) > 0) {
      return std::move(result_);  // an image that cannot be understood
    }
    domains_ = DomainsOf(*source_, result_.Findings);
    for (const DiscSourceFile& file : source_->Files()) {
      total_ += file.Size;
    }
    for (std::size_t i = 0; i < domains_.size(); ++i) {
      ReadTables(domains_[i]);
      if (i == 0) {
        AddLostSets();
      }
    }
    for (std::size_t i = 0; i < domains_.size() && !result_.Stopped; ++i) {
      VerifiedSet& set = result_.Sets[i];
      set.Menus = Scan(domains_[i].Menus, set.Tables, true);
      set.Titles = Scan(domains_[i].Titles, set.Tables, false);
      if (!set.Tables.Data.empty() && !result_.Stopped) {
        CheckSet(domains_[i], set);
      }
    }
    CheckManager();
    if (result_.Stopped) {
      result_.Findings = {};  // half a disc fits nothing that is said of it
    }
    return std::move(result_);
  }

 private:
  // Nothing where there is no file, or where it cannot be read, which is told.
  [[nodiscard]] std::optional<Bytes> ReadTable(const DiscSourceFile* file) {
    if (file == nullptr) {
      return std::nullopt;
    }
    Bytes bytes(static_cast<std::size_t>(std::min(file->Size, MostIfoBytes)));
    try {
      bytes.resize(reader_->Read(*file, 0, bytes));
    } catch (const FileError& error) {
      AddUnread(*file, WhyUnread(error));
      return std::nullopt;
    }
    if (bytes.size() < std::min(file->Size, MostIfoBytes)) {
      AddUnread(*file, "the end of the file");
    }
    done_ += bytes.size();
    result_.Bytes += bytes.size();
    return bytes;
  }

  void AddUnread(const DiscSourceFile& file, const std::string& why) {
    result_.Findings.Add(message::Unread, {.File = file.Name}, "reading", "", "data", why);
  }

  // Sets that titles name and no file is left of.
  void AddLostSets() {
    const IfoTables& manager = result_.Sets.front().Tables;
    int sets = 0;
    for (const IfoTitle& title : manager.Titles) {
      sets = std::max(sets, std::min(title.Set, manager.TitleSets));
    }
    for (int set = static_cast<int>(domains_.size()); set <= sets; ++set) {
      domains_.push_back(DomainOf(set, *source_, result_.Findings));
    }
  }

  // From the backup where there is no IFO, or none that can be read as one: as players do.
  void ReadTables(const DiscDomain& domain) {
    VerifiedSet& set = result_.Sets.emplace_back();
    set.Tables.Set = domain.Set;
    const std::array files{domain.Ifo, domain.Bup};
    std::array bytes{ReadTable(domain.Ifo), ReadTable(domain.Bup)};
    if (bytes[0] && bytes[1]) {
      CompareBackup(*bytes[0], *bytes[1], *domain.Bup);
    }
    for (std::size_t i = 0; i < files.size() && set.Tables.Data.empty(); ++i) {
      if (!bytes.at(i)) {
        continue;
      }
      result_.IsOurs = domain.Set == 0 ? IsOurManager(*bytes.at(i)) : result_.IsOurs;
      if (auto tables = ReadIfoTables(files.at(i)->Name, domain.Set, result_.IsOurs, std::move(*bytes.at(i)),
                                      result_.Findings)) {
        set.Tables = std::move(*tables);
      }
    }
  }

  void CompareBackup(const Bytes& ifo, const Bytes& bup, const DiscSourceFile& file) {
    const auto differs = std::ranges::mismatch(ifo, bup);
    if (differs.in1 == ifo.end() && differs.in2 == bup.end()) {
      return;
    }
    const auto at = static_cast<std::uint32_t>(differs.in1 - ifo.begin());
    const auto text = [](auto place, auto end) {
      return place == end ? std::string("the end") : fmt::format("0x{:02X}", *place);
    };
    result_.Findings.Add(message::BackupUnlike, {.File = file.Name, .Sector = at / SectorBytes, .Offset = at},
                         "BUP", "", text(differs.in1, ifo.end()) + " as in the IFO",
                         text(differs.in2, bup.end()));
  }

  // Of a set without tables its video tells the standard, and nothing the rest.
  [[nodiscard]] IfoStreams StreamsBySectors(const VobSetFiles& files) {
    constexpr std::uint16_t Mpeg2Pal = 0x5000;
    constexpr std::uint16_t Mpeg2Ntsc = 0x4000;
    constexpr unsigned NtscRate = 4;
    constexpr std::size_t RateAt = 7;  // of a sequence header
    Bytes head(64 * SectorBytes);
    try {
      head.resize(reader_->Read(*files.Files.front().File, 0, head));
    } catch (const FileError&) {
      head.clear();  // told with the sectors
    }
    bool isNtsc = false;
    bool isFound = false;
    ForEachHeader(head, 0, head.size() - std::min(RateAt, head.size()), [&](std::size_t at) {
      if (!isFound && head[at + 3] == start_code::Sequence) {
        isFound = true;
        isNtsc = (head[at + RateAt] & 15U) == NtscRate;
      }
    });
    return {.Video = {isNtsc ? Mpeg2Ntsc : Mpeg2Pal}};
  }

  [[nodiscard]] IfoStreams StreamsOf(const VobSetFiles& files, const IfoTables& tables, bool menus) {
    if (tables.Data.empty()) {
      return StreamsBySectors(files);
    }
    return menus ? tables.Menus : tables.TitleStreams;
  }

  VobSetFacts Scan(const VobSetFiles& files, const IfoTables& tables, bool menus) {
    if (files.Files.empty() || result_.Stopped) {
      return {};
    }
    const VobTeller teller(files, result_.Findings);
    VobScan scan(teller, {.Streams = StreamsOf(files, tables, menus),
                          .Known = !tables.Data.empty(),
                          .IsOurs = result_.IsOurs,
                          .Sectors = files.Sectors()});
    StreamSectors(
        *source_, files, result_.IsOurs,
        [&](const PackBlock& packs) {
          scan.Read(packs);
          done_ += packs.Sectors().size();
          result_.Bytes += packs.Sectors().size();
          for (const UnreadSectors& lost : packs.Unread()) {
            result_.Bytes -= std::uint64_t{lost.Count} * SectorBytes;
          }
        },
        [&] {
          ui_->Progress(static_cast<double>(done_), static_cast<double>(total_));
          result_.Stopped = ui_->StopRequested();
          return result_.Stopped;
        });
    return result_.Stopped ? VobSetFacts{} : scan.Finish();
  }

  void CheckSet(const DiscDomain& domain, const VerifiedSet& set) {
    const IfoTeller teller(set.Tables.Name, result_.Findings);
    if (domain.Ifo != nullptr && domain.Ifo->Name == set.Tables.Name) {
      CheckLayout(domain, set.Tables, result_.Findings);
    }
    CheckAgainstSectors(set.Tables, true, set.Menus, teller);
    if (!set.Tables.IsManager()) {
      CheckAgainstSectors(set.Tables, false, set.Titles, teller);
    }
  }

  void CheckManager() {
    if (result_.Stopped || result_.Sets.front().Tables.Data.empty()) {
      return;
    }
    std::vector<const IfoTables*> sets;
    for (std::size_t i = 1; i < result_.Sets.size(); ++i) {
      sets.push_back(result_.Sets[i].Tables.Data.empty() ? nullptr : &result_.Sets[i].Tables);
    }
    CheckTitles(result_.Sets.front().Tables, sets, result_.Findings);
    CheckPlaces(domains_, result_.Sets.front().Tables, result_.Findings);
  }

  VerifyResult result_;
  UserInterface* ui_;
  std::unique_ptr<DiscSource> source_;
  std::unique_ptr<DiscReader> reader_;
  std::vector<DiscDomain> domains_;
  std::uint64_t total_ = 0;  // bytes to read
  std::uint64_t done_ = 0;
};

}  // namespace

VerifyResult VerifyDisc(const std::string& path, UserInterface& ui, Disk& disk) {
  return DiscVerifier(path, ui, disk).Run();
}

}  // namespace quorvelant
