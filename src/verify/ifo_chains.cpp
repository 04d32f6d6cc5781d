#include "verify/ifo_chains.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "disc/limits.h"
#include "disc/pgc_layout.h"
#include "disc/table_layout.h"
#include "verify/command_check.h"

namespace quorvelant {
namespace {

constexpr std::size_t CommandBytes = 8;

using Span = std::pair<std::size_t, std::size_t>;

// One chain under reading.
class ChainReader {
 public:
  ChainReader(const IfoView& view, int number, std::string name, const IfoTeller& teller)
      : view_(view), name_(std::move(name)), teller_(&teller) {
    chain_.At = view.At();
    chain_.Number = number;
  }

  ReadChain Read() {
    ReadHead();
    ReadCommands();
    ReadCells();
    CheckSpans();
    CheckBlocks();
    CheckTime();
    const auto last = std::ranges::max_element(spans_, {}, &Span::second);
    return {std::move(chain_), last->second};
  }

 private:
  template <class Expected, class Seen>
  void Bad(std::size_t offset, std::string_view field, const Expected& expected, const Seen& seen) const {
    teller_->Tell(message::ChainBroken, view_.At(offset), name_, field, expected, seen);
  }

  void ReadHead() {
    chain_.Time = {view_.Long(pgc::PlaybackTime.Offset)};
    chain_.UserOperations = view_.Long(pgc::UserOperations.Offset);
    for (std::size_t i = 0; i < chain_.Audio.size(); ++i) {
      chain_.Audio.at(i) = view_.Word(pgc::AudioControl.Offset + 2 * i);
    }
    for (std::size_t i = 0; i < chain_.Subpictures.size(); ++i) {
      chain_.Subpictures.at(i) = view_.Long(pgc::SubControl.Offset + 4 * i);
    }
    chain_.Next = view_.Word(pgc::Next.Offset);
    chain_.Previous = view_.Word(pgc::Previous.Offset);
    chain_.GoUp = view_.Word(pgc::GoUp.Offset);
    chain_.Playback = static_cast<std::uint8_t>(view_.Byte(pgc::PlaybackMode.Offset));
    chain_.StillTime = static_cast<std::uint8_t>(view_.Byte(pgc::StillTime.Offset));
    teller_->CheckReserved(pgc::Rows, view_, name_);
    for (std::size_t i = 0; i < 16; ++i) {
      const std::size_t at = pgc::Palette.Offset + 4 * i;
      if (view_.Byte(at) != 0) {
        teller_->Tell(message::ReservedSet, view_.At(at), name_, "PGC_SP_PLT", 0, view_.Byte(at));
      }
    }
    if (!chain_.Time.IsValid()) {
      Bad(pgc::PlaybackTime.Offset, "PGC_PB_TM", "a time", chain_.Time.Text());
    }
  }

  void ReadCommands() {
    const std::size_t at = view_.Word(pgc::Commands.Offset);
    if (at == 0) {
      return;
    }
    std::array<std::size_t, 3> counts{};
    for (std::size_t i = 0; i < counts.size(); ++i) {
      counts.at(i) = view_.Word(at + 2 * i);
    }
    const std::size_t all = counts[0] + counts[1] + counts[2];
    const std::size_t bytes = pgc_commands::Size + CommandBytes * all;
    if (all > MostCommands || !view_.Has(at, bytes)) {
      Bad(at, "PGC_CMDT", "at most 128 commands within the table", all);
      return;
    }
    if (view_.Word(at + pgc_commands::Last.Offset) != bytes - 1) {
      Bad(at + pgc_commands::Last.Offset, "PGC_CMDT_EA", bytes - 1,
          view_.Word(at + pgc_commands::Last.Offset));
    }
    std::size_t next = at + pgc_commands::Size;
    std::array lists{&chain_.Pre, &chain_.Post, &chain_.CellCommands};
    for (std::size_t i = 0; i < counts.size(); ++i) {
      for (std::size_t k = 0; k < counts.at(i); ++k, next += CommandBytes) {
        IfoCommand& command = lists.at(i)->emplace_back();
        PutBytes(command, 0, CommandBytes, view_.Get(next, CommandBytes));
        constexpr std::array Names{"PRE_CMD", "POST_CMD", "C_CMD"};
        CheckCommand(command, next, fmt::format("{} {}", Names.at(i), k + 1));
      }
    }
    spans_.emplace_back(at, at + bytes);
  }

  void CheckCommand(const IfoCommand& command, std::size_t at, const std::string& field) const {
    if (const auto fault = FaultOf(command)) {
      teller_->Tell(KindOf(*fault, teller_->IsOurs()), view_.At(at + fault->Byte), name_, field,
                    fault->Expected, fault->Seen);
    }
  }

  void ReadCells() {
    const std::size_t programs = view_.Byte(pgc::Programs.Offset);
    const std::size_t cells = view_.Byte(pgc::Cells.Offset);
    if (cells == 0) {
      if (programs != 0) {
        Bad(pgc::Programs.Offset, "PGC_CNT.PG_Ns", "0 without cells", programs);
      }
      for (const std::size_t at :
           {pgc::ProgramMap.Offset, pgc::CellPlayback.Offset, pgc::CellPosition.Offset}) {
        if (view_.Word(at) != 0 && (view_.Word(at) < pgc::Size || view_.Word(at) > view_.Size())) {
          Bad(at, "PGC_PGMAP_SA, C_PBIT_SA, C_POSIT_SA", "0, or an offset within the table", view_.Word(at));
        }
      }
      return;
    }
    const std::size_t map = view_.Word(pgc::ProgramMap.Offset);
    const std::size_t playback = view_.Word(pgc::CellPlayback.Offset);
    const std::size_t position = view_.Word(pgc::CellPosition.Offset);
    const std::array tables{Span{map, programs}, Span{playback, cell_playback::Size * cells},
                            Span{position, cell_position::Size * cells}};
    constexpr std::array Names{"PGC_PGMAP_SA", "C_PBIT_SA", "C_POSIT_SA"};
    for (std::size_t i = 0; i < tables.size(); ++i) {
      const auto [start, bytes] = tables.at(i);
      if (start < pgc::Size || !view_.Has(start, bytes)) {
        Bad(pgc::ProgramMap.Offset + 2 * i, Names.at(i), "an offset within the table", start);
        return;
      }
      spans_.emplace_back(start, start + bytes);
    }
    for (std::size_t i = 0; i < programs; ++i) {
      chain_.Programs.push_back(static_cast<std::uint8_t>(view_.Byte(map + i)));
    }
    for (std::size_t i = 0; i < cells; ++i) {
      ReadCell(i, playback + cell_playback::Size * i, position + cell_position::Size * i);
    }
    CheckPrograms(map, cells);
  }

  // Programs begin with the first cell, and each at a later one.
  void CheckPrograms(std::size_t map, std::size_t cells) const {
    const auto& programs = chain_.Programs;
    if (programs.empty() || programs.front() != 1) {
      Bad(map, "PGC_PGMAP", 1, programs.empty() ? 0 : programs.front());
      return;
    }
    for (std::size_t i = 0; i < programs.size(); ++i) {
      const int least = i == 0 ? 1 : programs[i - 1] + 1;
      if (programs[i] < least || programs[i] > cells) {
        Bad(map + i, "PGC_PGMAP", fmt::format("a cell from {} to {}", least, cells), programs[i]);
      }
    }
  }

  void ReadCell(std::size_t index, std::size_t play, std::size_t position) {
    using namespace cell_playback;  // NOLINT(google-build-using-namespace): the rows of one record
    const IfoCell cell{
        .At = view_.At(play),
        .Number = static_cast<int>(index) + 1,
        .Category = static_cast<std::uint8_t>(view_.Byte(play)),
        .StillTime = static_cast<std::uint8_t>(view_.Byte(play + StillTime.Offset)),
        .Command = static_cast<std::uint8_t>(view_.Byte(play + Command.Offset)),
        .Time = {view_.Long(play + PlaybackTime.Offset)},
        .First = view_.Long(play + FirstVobu.Offset),
        .FirstIlvuEnd = view_.Long(play + FirstIlvuEnd.Offset),
        .LastVobu = view_.Long(play + LastVobu.Offset),
        .Last = view_.Long(play + LastSector.Offset),
        .VobId = view_.Word(position),
        .CellId = static_cast<std::uint8_t>(view_.Byte(position + cell_position::CellId.Offset))};
    const std::string name = fmt::format("{} cell {}", name_, cell.Number);
    teller_->CheckReserved(cell_position::Rows, view_.Sub(position, cell_position::Size), name);
    const auto bad = [&](std::size_t offset, const char* field, const auto& expected, const auto& seen) {
      teller_->Tell(message::ChainBroken, cell.At + static_cast<std::uint32_t>(offset), name, field, expected,
                    seen);
    };
    if (!cell.Time.IsValid() || cell.Time.Raw == 0) {
      bad(PlaybackTime.Offset, "C_PBTM", "a time", cell.Time.Text());
    }
    if (cell.Command > chain_.CellCommands.size()) {
      bad(Command.Offset, "C_CAT.CMD_N", fmt::format("at most {}", chain_.CellCommands.size()), cell.Command);
    }
    if (cell.BlockType() > 1 || (cell.BlockMode() == 0) != (cell.BlockType() == 0)) {
      bad(0, "C_CAT", "block mode and type of an angle block, or of none",
          fmt::format("0x{:02X}", cell.Category));
    }
    constexpr unsigned OfAngles = 0xF5;  // block mode and type, interleaving, change of angles
    if (teller_->IsOurs() && (cell.Category & OfAngles) != 0) {  // this program makes none
      bad(0, "C_CAT", "no angles", fmt::format("0x{:02X}", cell.Category));
    }
    chain_.Cells.push_back(cell);
  }

  void CheckSpans() {
    spans_.emplace_back(0, pgc::Size);
    std::ranges::sort(spans_);
    for (std::size_t i = 1; i < spans_.size(); ++i) {
      if (spans_[i].first < spans_[i - 1].second) {
        Bad(spans_[i].first, "", fmt::format("parts from byte {} on", spans_[i - 1].second), spans_[i].first);
      }
    }
  }

  // Angle blocks: a first cell, inner ones, a last one.
  void CheckBlocks() const {
    bool inside = false;
    for (const IfoCell& cell : chain_.Cells) {
      const bool goesOn = cell.BlockMode() == 2 || cell.BlockMode() == 3;
      if (goesOn != inside) {
        Bad(cell.At - view_.At(), "C_CAT",
            inside ? "a cell of the open block" : "no open block to go on with", cell.BlockMode());
      }
      inside = cell.BlockMode() == 1 || cell.BlockMode() == 2;
    }
    if (inside) {
      Bad(0, "C_CAT", "a last cell of the angle block", "none");
    }
  }

  // The first angle stands for its block.
  void CheckTime() const {
    std::int64_t frames = 0;
    int rate = 0;
    for (const IfoCell& cell : chain_.Cells) {
      frames += cell.BlockMode() < 2 ? cell.Time.Frames() : 0;
      rate = cell.Time.Rate() != 0 ? cell.Time.Rate() : rate;
    }
    const std::int64_t off = std::abs(chain_.Time.Frames() - frames);
    const bool otherRate = frames > 0 && chain_.Time.Rate() != rate;
    if (!chain_.Time.IsValid() || (off == 0 && !otherRate)) {
      return;
    }
    // Others add up real times, of which each cell's was rounded to a frame.
    const bool rounded =
        !teller_->IsOurs() && !otherRate && off <= static_cast<std::int64_t>(chain_.Cells.size());
    teller_->Tell(rounded ? message::PlayTimeLoose : message::ChainBroken, view_.At(pgc::PlaybackTime.Offset),
                  name_, "PGC_PB_TM", fmt::format("{} frames at {}/s as its cells", frames, rate),
                  fmt::format("{} frames at {}/s", chain_.Time.Frames(), chain_.Time.Rate()));
  }

  IfoView view_;
  std::string name_;
  const IfoTeller* teller_;
  IfoChain chain_;
  std::vector<Span> spans_;
};

// A unit without menus is one chain of zeros, of which makers differ how long it is.
bool IsOfNoMenus(const std::vector<IfoChain>& chains) {
  return chains.size() == 1 && chains[0].Cells.empty() && chains[0].Pre.empty() && chains[0].Post.empty();
}

}  // namespace

ReadChain ReadIfoChain(const IfoView& view, int number, const std::string& name, const IfoTeller& teller) {
  return ChainReader(view, number, name, teller).Read();
}

std::vector<IfoChain> ReadIfoChains(const IfoView& table, const std::string& name, const IfoTeller& teller) {
  const std::size_t count = table.Word(0);
  std::size_t end = table_head::Size + pgc_entry::Size * count;
  std::vector<IfoChain> chains;
  if (count > MostPgcs || !table.Has(0, end)) {
    teller.Tell(message::TableBroken, table.At(), name, "count", "chains within the table", count);
    return chains;
  }
  teller.CheckReserved(table_head::Rows, table, name);
  std::vector<Span> spans;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = table_head::Size + pgc_entry::Size * i;
    const std::size_t start = table.Long(at + pgc_entry::Start.Offset);
    const int number = static_cast<int>(i) + 1;
    if (start < table_head::Size + pgc_entry::Size * count || !table.Has(start, pgc::Size)) {
      teller.Tell(message::TableBroken, table.At(at + pgc_entry::Start.Offset), name, "PGCI_SA",
                  "an offset within the table", start);
      chains.push_back({.At = table.At(at), .Number = number});
      continue;
    }
    auto [chain, bytes] =
        ReadIfoChain(table.Sub(start), number, fmt::format("{} PGC {}", name, number), teller);
    chain.Category = static_cast<std::uint8_t>(table.Byte(at));
    chains.push_back(std::move(chain));
    spans.emplace_back(start, start + bytes);
    end = std::max(end, start + bytes);
  }
  std::ranges::sort(spans);  // entries may share a chain
  for (std::size_t i = 1; i < spans.size(); ++i) {
    if (spans[i] != spans[i - 1] && spans[i].first < spans[i - 1].second) {
      teller.Tell(message::TableBroken, table.At(spans[i].first), name, "PGCI_SA",
                  fmt::format("a chain from byte {} on", spans[i - 1].second), spans[i].first);
    }
  }
  if (!IsOfNoMenus(chains) || table.Long(table_head::Last.Offset) + std::uint64_t{1} < end) {
    teller.CheckEnd(table, table_head::Last.Offset, end, name);
  }
  return chains;
}

}  // namespace quorvelant
