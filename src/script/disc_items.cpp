// Items of the disc's structure.
#include <array>
#include <utility>

#include "model/default_structure.h"
#include "model/keys.h"
#include "script/item_names.h"
#include "script/vocabulary.h"

namespace quorvelant {

namespace {

// What no disc holds more of. They keep a hostile script from filling the memory.
constexpr std::size_t MostEntries = 100;  // the Video Manager and 99 title sets
constexpr std::size_t MostPgcs = 65535;
constexpr std::string_view TooManyTitleSets = "title sets";
constexpr std::string_view TooManyPgcs = "program chains";

int Number(std::size_t count) {
  return static_cast<int>(count);
}

void ClosePlaces(ReaderState& state) {
  state.ClosePalette();
  state.Data.Listed = false;
  state.Disc.Language = nullptr;
  state.Disc.Title = nullptr;
  state.Disc.Pgc = nullptr;
  state.Disc.Program = nullptr;
  state.Disc.Cell = nullptr;
  state.Disc.Commands = {};
}
bool OpenManager(ReaderState& state, std::size_t /*number*/) {
  state.Enter(Segment::Entry);
  ClosePlaces(state);
  state.Disc.Entry = state.Target.Disc.Item(1);
  return true;
}
bool AddTitleSet(ReaderState& state, std::size_t /*number*/) {
  if (state.Target.Disc.Count() == MostEntries) {
    state.Outcome.TooMany = TooManyTitleSets;
    return false;
  }
  state.Enter(Segment::Entry);
  ClosePlaces(state);
  const int entry = Number(state.Target.Disc.Count()) + 1;
  VTS_P set;
  set.Key = EntryKey(entry);
  set.VTSName = EntryName(entry);
  state.Disc.Entry = &state.Target.Disc.Add(std::move(set));
  return true;
}
bool OpenFirstPlay(ReaderState& state, std::size_t /*number*/) {
  state.Enter(Segment::FirstPlay);
  ClosePlaces(state);
  state.Disc.Pgc = &state.Target.FirstPlay;
  return true;
}
bool AddTitle(ReaderState& state, std::size_t /*number*/) {
  if (state.Disc.Entry == nullptr) {
    return false;
  }
  state.Enter(Segment::Title);
  ClosePlaces(state);
  Title_P title;
  title.AudioAssignments.fill(state.Rules.UnnamedStreamsAvailable);
  title.SubAssignments.fill(state.Rules.UnnamedStreamsAvailable);
  title.Key = TitleKey(state.Disc.Entry->Key, Number(state.Disc.Entry->Title.Count()) + 1);
  state.Disc.Title = &state.Disc.Entry->Title.Add(std::move(title));
  return true;
}
bool AddLanguage(ReaderState& state, std::size_t /*number*/) {
  if (state.Disc.Entry == nullptr) {
    return false;
  }
  state.Enter(Segment::Language);
  ClosePlaces(state);
  Lang_P language;
  language.Key = LanguageKey(state.Disc.Entry->Key, Number(state.Disc.Entry->Lang.Count()) + 1);
  state.Disc.Language = &state.Disc.Entry->Lang.Add(std::move(language));
  return true;
}
// The open entry is the Video Manager or the last title set.
int EntryNumber(const ReaderState& state) {
  return state.Disc.Entry == state.Target.Disc.Item(1) ? 1 : Number(state.Target.Disc.Count());
}
bool AddPgc(ReaderState& state, std::size_t /*number*/) {
  if (state.Disc.Title == nullptr && state.Disc.Language == nullptr) {
    return false;
  }
  if (++state.Disc.PgcCount > MostPgcs) {
    state.Outcome.TooMany = TooManyPgcs;
    return false;
  }
  state.Enter(Segment::Pgc);
  const bool ofTitle = state.Disc.Title != nullptr;
  Collection<PGC_P>& pgcs = ofTitle ? state.Disc.Title->PGC : state.Disc.Language->PGC;
  const std::string& parent = ofTitle ? state.Disc.Title->Key : state.Disc.Language->Key;
  state.Disc.Pgc = &pgcs.Add(MakePgc(
      {}, EntryNumber(state), ofTitle ? 0 : Number(state.Disc.Entry->Lang.Count()),
      ofTitle ? Number(state.Disc.Entry->Title.Count()) : 0, PgcKey(parent, Number(pgcs.Count()) + 1)));
  state.Disc.Program = nullptr;
  state.Disc.Cell = nullptr;
  state.Disc.Commands = {};
  return true;
}
bool AddProgram(ReaderState& state, std::size_t /*number*/) {
  if (state.Disc.Pgc == nullptr || state.Disc.Pgc == &state.Target.FirstPlay) {
    return false;
  }
  state.Enter(Segment::Program);
  PG_P program;
  program.Key = ProgramKey(state.Disc.Pgc->Key, Number(state.Disc.Pgc->PG.Count()) + 1);
  state.Disc.Program = &state.Disc.Pgc->PG.Add(std::move(program));
  state.Disc.Cell = nullptr;
  return true;
}
bool AddCell(ReaderState& state, std::size_t /*number*/) {
  if (state.Disc.Program == nullptr) {
    return false;
  }
  state.Enter(Segment::Cell);
  Cell_P cell;
  cell.Key = CellKey(state.Disc.Program->Key, Number(state.Disc.Program->Cell.Count()) + 1);
  state.Disc.Cell = &state.Disc.Program->Cell.Add(std::move(cell));
  return true;
}

// --- what stands within a place ---

bool OpenTitleUops(ReaderState& state, std::size_t /*number*/) {
  state.Disc.TitleUops = state.Disc.Title != nullptr;
  return state.Disc.TitleUops;
}
bool OpenPgcUops(ReaderState& state, std::size_t /*number*/) {
  state.Disc.Uops = state.Disc.Pgc == nullptr ? UopPlace::None : UopPlace::Pgc;
  return state.Disc.Pgc != nullptr;
}
// The bare word opens the operations of whatever is open.
bool OpenUops(ReaderState& state, std::size_t number) {
  switch (state.Open) {
    case Segment::Scene:
      state.Disc.Uops = UopPlace::Scene;
      return true;
    case Segment::Cell:
      state.Disc.Uops = UopPlace::Cell;
      return true;
    case Segment::Title:
      return OpenTitleUops(state, number);
    default:
      return OpenPgcUops(state, number);
  }
}
bool OpenCommands(ReaderState& state, CommandList PGC_P::*list, std::string_view word) {
  if (state.Disc.Pgc == nullptr) {
    return false;
  }
  const bool ofFirstPlay = state.Disc.Pgc == &state.Target.FirstPlay;
  state.Disc.Commands = {.OfPgc = list, .OfCell = nullptr, .Word = ofFirstPlay ? FirstPgcKey : word};
  return true;
}
bool OpenPreCommands(ReaderState& state, std::size_t /*number*/) {
  return OpenCommands(state, &PGC_P::PreCommands, "Pre");
}
bool OpenPostCommands(ReaderState& state, std::size_t /*number*/) {
  return OpenCommands(state, &PGC_P::PostCommands, "Post");
}
bool OpenCellCommands(ReaderState& state, std::size_t /*number*/) {
  return OpenCommands(state, &PGC_P::CellCommands, "Cell");
}
bool OpenButtonCommands(ReaderState& state, std::size_t /*number*/) {
  if (state.Disc.Cell == nullptr) {
    return false;
  }
  state.Disc.Cell->ButtonCommands.emplace_back();
  state.Disc.Commands = {.OfPgc = nullptr, .OfCell = state.Disc.Cell, .Word = "Button"};
  return true;
}
bool OpenPalette(ReaderState& state, std::size_t /*number*/) {
  state.ClosePalette();
  state.Enter(Segment::Palette);
  state.Overlay.Palette.emplace();
  return true;
}
constexpr std::array Items{
    ItemWord{item::Manager, OpenManager},
    ItemWord{"video manager=video manager", OpenManager},
    ItemWord{item::TitleSet, AddTitleSet},
    ItemWord{item::FirstPlay, OpenFirstPlay},
    ItemWord{"first pgc=first pgc", OpenFirstPlay},
    ItemWord{item::Title, AddTitle, 0, 1, ItemWord::FewUses},
    ItemWord{item::Language, AddLanguage, 0, 1, ItemWord::FewUses},
    ItemWord{item::TitleUops, OpenTitleUops},
    ItemWord{item::PgcUops, OpenPgcUops},
    ItemWord{item::FirstPlayUops, OpenPgcUops},
    ItemWord{item::Uops, OpenUops},
    ItemWord{"uop", OpenUops},
    ItemWord{item::Pgc, AddPgc},
    ItemWord{item::Program, AddProgram},
    ItemWord{item::Cell, AddCell},
    ItemWord{"item=menu", OpenButtonCommands},
    ItemWord{item::ButtonCommands, OpenButtonCommands},
    ItemWord{item::PreCommands, OpenPreCommands},
    ItemWord{"pre command=list", OpenPreCommands},
    ItemWord{item::PostCommands, OpenPostCommands},
    ItemWord{"post command=list", OpenPostCommands},
    ItemWord{item::CellCommands, OpenCellCommands},
    ItemWord{"cell command=list", OpenCellCommands},
    ItemWord{"command list=list"},
    ItemWord{item::ButtonCommandList},
    ItemWord{"item=command"},
    ItemWord{"object=list"},
    ItemWord{item::Palette, OpenPalette},
    ItemWord{"item=color palette", OpenPalette},
    ItemWord{item::AudioMap},
    ItemWord{item::AudioPolicy},
    ItemWord{item::SubPolicy},
};

}  // namespace

std::span<const ItemWord> DiscItems() {
  return Items;
}

}  // namespace quorvelant
