#include "verify/set_check.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <utility>

#include "disc/pgc_layout.h"
#include "disc/vtsi_layout.h"
#include "player/nav_words.h"
#include "verify/nav_check.h"
#include "verify/time_map_check.h"

namespace quorvelant {
namespace {

class DomainCheck {
 public:
  DomainCheck(const IfoTables& tables, bool menus, const VobSetFacts& facts, const IfoTeller& teller)
      : tables_(&tables), menus_(menus), facts_(&facts), teller_(&teller) {
    name_ = tables.IsManager() ? "VMGM" : menus ? "VTSM" : "VTS";
  }

  void Run() {
    CheckVobuMap();
    CheckCellAddresses();
    for (const auto& [chains, name] : Lists()) {
      for (const IfoChain& chain : *chains) {
        CheckChain(chain, fmt::format("{} PGC {}", name, chain.Number), chains->size());
      }
    }
    CheckUnusedStreams();
    if (!menus_ && tables_->TimeMaps) {
      CheckTimeMaps(*tables_, *facts_, *teller_);
    }
  }

 private:
  using ChainList = std::pair<const std::vector<IfoChain>*, std::string>;

  [[nodiscard]] std::vector<ChainList> Lists() const {
    if (!menus_) {
      return {{&tables_->Chains, "VTS_PGCIT"}};
    }
    std::vector<ChainList> lists;
    for (const IfoLanguage& unit : tables_->Languages) {
      lists.emplace_back(&unit.Chains, fmt::format("{}_PGCI_UT {}", name_, LanguageLetters(unit.Language)));
    }
    return lists;
  }
  [[nodiscard]] const IfoStreams& Streams() const { return menus_ ? tables_->Menus : tables_->TitleStreams; }
  [[nodiscard]] const auto& Addresses() const { return menus_ ? tables_->MenuCells : tables_->TitleCells; }
  // Where a table of this domain begins.
  [[nodiscard]] std::uint32_t Table(const disc::Field<disc::Sectors, 4>& menu,
                                    const disc::Field<disc::Sectors, 4>& title) const {
    const std::size_t pointer = menus_ ? menu.Offset : title.Offset;
    return static_cast<std::uint32_t>(GetBytes(tables_->Data, pointer, 4) * SectorBytes);
  }

  [[nodiscard]] const VobuFacts* VobuAt(std::uint32_t sector) const {
    const auto found = std::ranges::lower_bound(facts_->Vobus, sector, {}, &VobuFacts::Sector);
    return found != facts_->Vobus.end() && found->Sector == sector ? &*found : nullptr;
  }

  void CheckVobuMap() const {
    const auto& map = menus_ ? tables_->MenuVobus : tables_->TitleVobus;
    if (!map) {
      return;
    }
    const std::uint32_t at = Table(vtsi::MenuVobus, vtsi::TitleVobus) + 4;
    const std::string name = name_ + "_VOBU_ADMAP";
    const std::size_t both = std::min(map->size(), facts_->Vobus.size());
    for (std::size_t i = 0; i < both; ++i) {
      if ((*map)[i] != facts_->Vobus[i].Sector) {
        teller_->Tell(message::AddressMapWrong, at + static_cast<std::uint32_t>(4 * i), name,
                      fmt::format("VOBU_SA {}", i + 1), facts_->Vobus[i].Sector, (*map)[i]);
      }
    }
    if (map->size() != facts_->Vobus.size()) {
      teller_->Tell(message::AddressMapWrong, at + static_cast<std::uint32_t>(4 * both), name, "entries",
                    facts_->Vobus.size(), map->size());
    }
  }

  // Pieces of a cell that lie apart have a row each.
  void CheckCellAddresses() const {
    if (!Addresses()) {
      return;
    }
    std::vector<IfoCellAddress> found;
    for (const VobuFacts& vobu : facts_->Vobus) {
      const bool goesOn = !found.empty() && found.back().VobId == vobu.VobId &&
                          found.back().CellId == vobu.CellId && found.back().Last + 1 == vobu.Sector;
      if (goesOn) {
        found.back().Last = vobu.Last;
      } else {
        found.push_back({vobu.VobId, vobu.CellId, vobu.Sector, vobu.Last});
      }
    }
    const std::set<IfoCellAddress> there(found.begin(), found.end());
    const std::uint32_t at = Table(vtsi::MenuCells, vtsi::TitleCells) + 8;
    for (std::size_t i = 0; i < Addresses()->size(); ++i) {
      const IfoCellAddress& row = (*Addresses())[i];
      if (!there.contains(row)) {
        teller_->Tell(message::AddressMapWrong, at + static_cast<std::uint32_t>(12 * i), name_ + "_C_ADT",
                      fmt::format("entry {}", i + 1), NearestText(found, row), Text(row));
      }
    }
    const std::set<IfoCellAddress> said(Addresses()->begin(), Addresses()->end());
    for (const IfoCellAddress& row : there) {
      if (!said.contains(row)) {
        teller_->Tell(message::AddressMapWrong, at, name_ + "_C_ADT", "entries", Text(row), "no such entry");
      }
    }
  }

  static std::string Text(const IfoCellAddress& row) {
    return fmt::format("VOB {} cell {} at {} to {}", row.VobId, row.CellId, row.Start, row.Last);
  }
  static std::string NearestText(const std::vector<IfoCellAddress>& found, const IfoCellAddress& row) {
    for (const IfoCellAddress& each : found) {
      if (each.Start == row.Start || (each.VobId == row.VobId && each.CellId == row.CellId)) {
        return Text(each);
      }
    }
    return "a cell that is there";
  }

  void CheckChain(const IfoChain& chain, const std::string& name, std::size_t chains) {
    for (const auto& [field, value, offset] : {std::tuple{"NEXT_PGCN", chain.Next, pgc::Next.Offset},
                                               std::tuple{"PREV_PGCN", chain.Previous, pgc::Previous.Offset},
                                               std::tuple{"GOUP_PGCN", chain.GoUp, pgc::GoUp.Offset}}) {
      const bool resumes = offset == pgc::GoUp.Offset && value == pgc::GoUpResumes;
      if (value > chains && !resumes) {
        teller_->Tell(message::ChainBroken, chain.At + static_cast<std::uint32_t>(offset), name, field,
                      fmt::format("at most {}", chains), value);
      }
    }
    const VobuFacts* before = nullptr;
    for (const IfoCell& cell : chain.Cells) {
      const VobuFacts* last = CheckCell(cell, fmt::format("{} cell {}", name, cell.Number), before);
      if (cell.BlockMode() < 2) {  // the first angle stands for its block
        before = last;
      }
    }
    CheckStreams(chain, name);
  }

  // Gives the last VOBU of the cell.
  const VobuFacts* CheckCell(const IfoCell& cell, const std::string& name, const VobuFacts* before) const {
    using namespace cell_playback;  // NOLINT(google-build-using-namespace): the rows of one record
    const auto bad = [&](std::size_t offset, std::string_view field, const auto& expected, const auto& seen) {
      teller_->Tell(message::CellWrong, cell.At + static_cast<std::uint32_t>(offset), name, field, expected,
                    seen);
    };
    CheckCellRow(cell, name);
    const VobuFacts* first = VobuAt(cell.First);
    const VobuFacts* last = VobuAt(cell.LastVobu);
    if (first == nullptr) {
      bad(FirstVobu.Offset, FirstVobu.Name, "the head of a VOBU", cell.First);
    } else if (first->VobId != cell.VobId || first->CellId != cell.CellId) {
      bad(0, "C_POSI", fmt::format("VOB {} cell {}", first->VobId, first->CellId),
          fmt::format("VOB {} cell {}", cell.VobId, cell.CellId));
    }
    if (last == nullptr) {
      bad(LastVobu.Offset, LastVobu.Name, "the head of a VOBU", cell.LastVobu);
    } else if (last->Last != cell.Last) {
      bad(LastSector.Offset, LastSector.Name, last->Last, cell.Last);
    }
    if (!cell.IsInterleaved() && cell.FirstIlvuEnd != 0) {
      bad(FirstIlvuEnd.Offset, FirstIlvuEnd.Name, "0 in a cell that is not interleaved", cell.FirstIlvuEnd);
    }
    if (first == nullptr || last == nullptr) {
      return nullptr;
    }
    CheckCellTime(cell, name, *first, *last);
    CheckClock(cell, name, *first, before);
    return last;
  }

  void CheckCellRow(const IfoCell& cell, const std::string& name) const {
    if (!Addresses()) {
      return;
    }
    const IfoCellAddress* first = nullptr;
    const IfoCellAddress* last = nullptr;
    for (const IfoCellAddress& row : *Addresses()) {
      if (row.VobId == cell.VobId && row.CellId == cell.CellId) {
        first = first != nullptr ? first : &row;
        last = &row;
      }
    }
    if (first == nullptr || first->Start != cell.First || last->Last != cell.Last) {
      teller_->Tell(message::CellWrong, cell.At + cell_playback::FirstVobu.Offset, name,
                    "C_FVOBU_SA, C_LVOBU_EA",
                    first == nullptr ? std::string("a cell of the C_ADT")
                                     : fmt::format("{} to {} as C_ADT", first->Start, last->Last),
                    fmt::format("{} to {}", cell.First, cell.Last));
    }
  }

  void CheckCellTime(const IfoCell& cell, const std::string& name, const VobuFacts& first,
                     const VobuFacts& last) const {
    const bool ntsc = Streams().Video.IsNtsc();
    const std::int64_t ticks = std::int64_t{last.EndPtm} - first.StartPtm;
    const TimeAgreement agrees =
        cell.Time.IsValid() ? Agreement(cell.Time, ticks, ntsc) : TimeAgreement::None;
    const bool wrongRate = cell.Time.Rate() != (ntsc ? 30 : 25);
    if (agrees == TimeAgreement::None || wrongRate) {
      teller_->Tell(
          message::PlayTimeWrong, cell.At + cell_playback::PlaybackTime.Offset, name, "C_PBTM",
          fmt::format("{:.3f} s at {} frames/s", static_cast<double>(ticks) / 90000, ntsc ? 30 : 25),
          cell.Time.Text());
    } else if (agrees == TimeAgreement::RealSeconds) {
      teller_->Tell(message::PlayTimeLoose, cell.At + cell_playback::PlaybackTime.Offset, name, "C_PBTM",
                    "frames counted", "real seconds");
    }
  }

  // The clock restarts where the times do not go on.
  void CheckClock(const IfoCell& cell, const std::string& name, const VobuFacts& first,
                  const VobuFacts* before) const {
    if (before == nullptr || cell.BlockMode() >= 2) {
      return;
    }
    constexpr std::int64_t Rounding = 3;
    const std::int64_t gap = std::int64_t{first.StartPtm} - before->EndPtm;
    const bool goesOn = std::abs(gap) <= Rounding;
    if (!goesOn && !cell.ClockRestarts()) {
      teller_->Tell(message::CellWrong, cell.At, name, "C_CAT", "the flag of a new system time clock",
                    "none");
    }
  }

  // The streams that a chain has on, in the VOBs that it plays.
  void CheckStreams(const IfoChain& chain, const std::string& name) {
    if (chain.Cells.empty()) {
      return;
    }
    std::set<unsigned> vobs;
    for (const IfoCell& cell : chain.Cells) {
      vobs.insert(cell.VobId);
    }
    for (std::size_t i = 0; i < chain.Audio.size(); ++i) {
      CheckAudioControl(chain, i, vobs, name);
    }
    for (std::size_t i = 0; i < chain.Subpictures.size(); ++i) {
      CheckSubControl(chain, i, vobs, name);
    }
  }

  [[nodiscard]] std::set<unsigned> VobsWith(unsigned id, const std::set<unsigned>& among) const {
    std::set<unsigned> vobs;
    for (const StreamFacts& stream : facts_->Streams) {
      if (stream.Id == id && among.contains(stream.VobId)) {
        vobs.insert(stream.VobId);
      }
    }
    return vobs;
  }

  void CheckAudioControl(const IfoChain& chain, std::size_t index, const std::set<unsigned>& vobs,
                         const std::string& name) {
    const unsigned word = chain.Audio.at(index);
    const auto at = static_cast<std::uint32_t>(chain.At + pgc::AudioControl.Offset + 2 * index);
    const std::string field = fmt::format("PGC_AST_CTL {}", index);
    if ((word & 0x8000U) == 0) {
      if (word != 0) {
        teller_->Tell(message::StreamLoose, at, name, field, "0 for a stream that is off",
                      fmt::format("0x{:04X}", word));
      }
      return;
    }
    if ((word & 0x78FFU) != 0) {
      teller_->Tell(message::ReservedSet, at, name, field, "reserved bits clear",
                    fmt::format("0x{:04X}", word));
    }
    if (index >= Streams().Audio.size()) {
      teller_->Tell(message::StreamLoose, at, name, field,
                    fmt::format("off, with {} audio streams", Streams().Audio.size()), "on");
      return;
    }
    const IfoAudio& attributes = Streams().Audio[index];
    const unsigned id = attributes.FirstStream() + (word >> 8U & 7U);
    used_.insert(id);
    const std::set<unsigned> found = VobsWith(id, vobs);
    if (found.size() < vobs.size()) {
      // Others have what one title of the set has on in all of them.
      const bool absent = found.empty() && tables_->IsOurs;
      teller_->Tell(absent ? message::StreamAbsent : message::StreamLoose, at, name, field,
                    fmt::format("stream 0x{:02X} in every VOB of the chain", id),
                    fmt::format("in {} of {}", found.size(), vobs.size()));
    }
    for (const StreamFacts& stream : facts_->Streams) {
      if (stream.Id == id && vobs.contains(stream.VobId)) {
        CheckAudioTraits(attributes, stream, index);
      }
    }
  }

  void CheckAudioTraits(const IfoAudio& attributes, const StreamFacts& stream, std::size_t index) {
    if (!compared_.insert({index, stream.VobId}).second) {
      return;
    }
    const auto at =
        static_cast<std::uint32_t>((menus_ ? vtsi::MenuAudio.Offset : vtsi::TitleAudio.Offset) + 8 * index);
    const SoundTraits& traits = stream.Audio;
    const std::string table = fmt::format("AST_ATR {}", index);
    if (traits.Channels != 0 && traits.Channels != attributes.Channels()) {
      teller_->Tell(tables_->IsOurs ? message::AttributeWrong : message::AttributeLoose, at, table,
                    "channels", fmt::format("{} as in VOB {}", traits.Channels, stream.VobId),
                    attributes.Channels());
    }
    constexpr unsigned Lpcm = 4;
    if (attributes.Format() == Lpcm) {
      const int bits = 16 + 4 * static_cast<int>(attributes.Quantization());
      const int rate = attributes.Frequency() == 1 ? 96000 : 48000;
      if (bits != traits.Bits || rate != traits.Rate) {
        teller_->Tell(message::AttributeWrong, at, table, "quantization and frequency",
                      fmt::format("{} bits at {} Hz as in VOB {}", traits.Bits, traits.Rate, stream.VobId),
                      fmt::format("{} bits at {} Hz", bits, rate));
      }
    }
  }

  void CheckSubControl(const IfoChain& chain, std::size_t index, const std::set<unsigned>& vobs,
                       const std::string& name) {
    const std::uint32_t word = chain.Subpictures.at(index);
    const auto at = static_cast<std::uint32_t>(chain.At + pgc::SubControl.Offset + 4 * index);
    const std::string field = fmt::format("PGC_SPST_CTL {}", index);
    if ((word & 0x80000000U) == 0) {
      if (word != 0) {
        teller_->Tell(message::StreamLoose, at, name, field, "0 for a stream that is off",
                      fmt::format("0x{:08X}", word));
      }
      return;
    }
    if ((word & 0x60E0E0E0U) != 0) {
      teller_->Tell(message::ReservedSet, at, name, field, "reserved bits clear",
                    fmt::format("0x{:08X}", word));
    }
    if (static_cast<int>(index) >= Streams().Subpictures) {
      teller_->Tell(message::StreamLoose, at, name, field,
                    fmt::format("off, with {} subpicture streams", Streams().Subpictures), "on");
      return;
    }
    // Wide, letterbox and pan & scan pictures may have streams of their own.
    const std::vector<unsigned> shifts =
        Streams().Video.IsWide() ? std::vector<unsigned>{16, 8, 0} : std::vector<unsigned>{24};
    bool found = false;
    for (const unsigned shift : shifts) {
      const unsigned id = 0x20 + (word >> shift & 31U);
      used_.insert(id);
      found = found || !VobsWith(id, vobs).empty();
    }
    if (!found) {
      teller_->Tell(message::StreamLoose, at, name, field, "a stream that the chain's VOBs have",
                    fmt::format("0x{:08X}", word));
    }
  }

  void CheckUnusedStreams() const {
    std::set<unsigned> told;
    for (const StreamFacts& stream : facts_->Streams) {
      if (!used_.contains(stream.Id) && told.insert(stream.Id).second) {
        teller_->Tell(message::StreamLoose, 0, name_ + " program chains", "PGC_AST_CTLT, PGC_SPST_CTLT",
                      fmt::format("stream 0x{:02X} of VOB {} in use", stream.Id, stream.VobId),
                      "no chain that has it on");
      }
    }
  }

  const IfoTables* tables_;
  bool menus_;
  const VobSetFacts* facts_;
  const IfoTeller* teller_;
  std::string name_;
  std::set<unsigned> used_;  // streams that chains have on
  std::set<std::pair<std::size_t, unsigned>> compared_;
};

}  // namespace

void CheckAgainstSectors(const IfoTables& tables, bool menus, const VobSetFacts& facts,
                         const IfoTeller& teller) {
  DomainCheck(tables, menus, facts, teller).Run();
}

}  // namespace quorvelant
