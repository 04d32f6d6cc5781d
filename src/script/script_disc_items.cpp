// Items of the disc's structure.
#include <array>
#include <utility>

#include "model/default_structure.h"
#include "model/keys.h"
#include "script/script_tables.h"

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
  state.InDataFolder = false;
  state.Language = nullptr;
  state.Title = nullptr;
  state.Pgc = nullptr;
  state.Program = nullptr;
  state.Cell = nullptr;
  state.Commands = nullptr;
}
bool OpenManager(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  Enter(state, Segment::Entry);
  ClosePlaces(state);
  state.Entry = state.Target.Disc.Item(1);
  return true;
}
bool AddTitleSet(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (state.Target.Disc.Count() == MostEntries) {
    state.TooMany = TooManyTitleSets;
    return false;
  }
  Enter(state, Segment::Entry);
  ClosePlaces(state);
  const int entry = Number(state.Target.Disc.Count()) + 1;
  VTS_P set;
  set.Key = EntryKey(entry);
  set.VTSName = EntryName(entry);
  state.Entry = &state.Target.Disc.Add(std::move(set));
  return true;
}
bool OpenFirstPlay(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  Enter(state, Segment::FirstPlay);
  ClosePlaces(state);
  state.Pgc = &state.Target.FirstPlay;
  return true;
}
bool AddTitle(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (state.Entry == nullptr) {
    return false;
  }
  Enter(state, Segment::Title);
  ClosePlaces(state);
  Title_P title;
  title.Key = TitleKey(state.Entry->Key, Number(state.Entry->Title.Count()) + 1);
  state.Title = &state.Entry->Title.Add(std::move(title));
  return true;
}
bool AddLanguage(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (state.Entry == nullptr) {
    return false;
  }
  Enter(state, Segment::Language);
  ClosePlaces(state);
  Lang_P language;
  language.Key = LanguageKey(state.Entry->Key, Number(state.Entry->Lang.Count()) + 1);
  state.Language = &state.Entry->Lang.Add(std::move(language));
  return true;
}
// The open entry is the Video Manager or the last title set.
int EntryNumber(const ReaderState& state) {
  return state.Entry == state.Target.Disc.Item(1) ? 1 : Number(state.Target.Disc.Count());
}
bool AddPgc(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (state.Title == nullptr && state.Language == nullptr) {
    return false;
  }
  if (++state.PgcCount > MostPgcs) {
    state.TooMany = TooManyPgcs;
    return false;
  }
  Enter(state, Segment::Pgc);
  const bool ofTitle = state.Title != nullptr;
  Collection<PGC_P>& pgcs = ofTitle ? state.Title->PGC : state.Language->PGC;
  const std::string& parent = ofTitle ? state.Title->Key : state.Language->Key;
  state.Pgc = &pgcs.Add(MakePgc({}, EntryNumber(state), ofTitle ? 0 : Number(state.Entry->Lang.Count()),
                                ofTitle ? Number(state.Entry->Title.Count()) : 0,
                                PgcKey(parent, Number(pgcs.Count()) + 1)));
  state.Program = nullptr;
  state.Cell = nullptr;
  state.Commands = nullptr;
  return true;
}
bool AddProgram(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (state.Pgc == nullptr || state.Pgc == &state.Target.FirstPlay) {
    return false;
  }
  Enter(state, Segment::Program);
  PG_P program;
  program.Key = ProgramKey(state.Pgc->Key, Number(state.Pgc->PG.Count()) + 1);
  state.Program = &state.Pgc->PG.Add(std::move(program));
  state.Cell = nullptr;
  return true;
}
bool AddCell(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (state.Program == nullptr) {
    return false;
  }
  Enter(state, Segment::Cell);
  Cell_P cell;
  cell.Key = CellKey(state.Program->Key, Number(state.Program->Cell.Count()) + 1);
  state.Cell = &state.Program->Cell.Add(std::move(cell));
  return true;
}

// --- what stands within a place ---

bool OpenTitleUops(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  state.TitleUops = state.Title;
  return state.Title != nullptr;
}
bool OpenPgcUops(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  state.Uops = state.Pgc == nullptr ? nullptr : &state.Pgc->Uops;
  return state.Uops != nullptr;
}
// The bare word opens the operations of whatever is open.
bool OpenUops(ReaderState& state, std::string_view value, std::size_t number) {
  switch (state.Open) {
    case Segment::Scene:
      state.Uops = &state.OpenScene()->Uops;
      return true;
    case Segment::Cell:
      state.Uops = &state.Cell->Uops;
      return true;
    case Segment::Title:
      return OpenTitleUops(state, value, number);
    default:
      return OpenPgcUops(state, value, number);
  }
}
bool OpenCommands(ReaderState& state, CommandList PGC_P::*list, std::string_view word) {
  if (state.Pgc == nullptr) {
    return false;
  }
  state.Commands = &(state.Pgc->*list);
  state.CommandWord = state.Pgc == &state.Target.FirstPlay ? FirstPgcKey : word;
  return true;
}
bool OpenPreCommands(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  return OpenCommands(state, &PGC_P::PreCommands, "Pre");
}
bool OpenPostCommands(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  return OpenCommands(state, &PGC_P::PostCommands, "Post");
}
bool OpenCellCommands(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  return OpenCommands(state, &PGC_P::CellCommands, "Cell");
}
bool OpenButtonCommands(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  if (state.Cell == nullptr) {
    return false;
  }
  state.Commands = &state.Cell->ButtonCommands.emplace_back().Commands;
  state.CommandWord = "Button";
  return true;
}
bool OpenPalette(ReaderState& state, std::string_view /*value*/, std::size_t /*number*/) {
  state.ClosePalette();
  Enter(state, Segment::Palette);
  state.Palette.emplace();
  return true;
}
constexpr std::array Items{
    Word{"item=vmg", OpenManager},
    Word{"video manager=video manager", OpenManager},
    Word{"item=vts", AddTitleSet},
    Word{"item=firstpgc", OpenFirstPlay},
    Word{"first pgc=first pgc", OpenFirstPlay},
    Word{"item=title", AddTitle},
    Word{"item=language", AddLanguage},
    Word{"item=titleuops", OpenTitleUops},
    Word{"item=pgcuops", OpenPgcUops},
    Word{"item=firstpgcuops", OpenPgcUops},
    Word{"uops", OpenUops},
    Word{"uop", OpenUops},
    Word{"item=pgc", AddPgc},
    Word{"item=program", AddProgram},
    Word{"item=cell", AddCell},
    Word{"item=menu", OpenButtonCommands},
    Word{"item=menu play", OpenButtonCommands},
    Word{"item=precommands", OpenPreCommands},
    Word{"pre command=list", OpenPreCommands},
    Word{"item=postcommands", OpenPostCommands},
    Word{"post command=list", OpenPostCommands},
    Word{"item=cellcommands", OpenCellCommands},
    Word{"cell command=list", OpenCellCommands},
    Word{"command list=list", PassOver},
    Word{"item=menu list", PassOver},
    Word{"item=command", PassOver},
    Word{"object=list", PassOver},
    Word{"item=palette", OpenPalette},
    Word{"item=color palette", OpenPalette},
    Word{"item=audio stream decoding", PassOver},
    Word{"item=audio stream policy", PassOver},
    Word{"item=subpicture stream policy", PassOver},
};

}  // namespace

std::span<const Word> DiscItems() {
  return Items;
}

}  // namespace quorvelant
