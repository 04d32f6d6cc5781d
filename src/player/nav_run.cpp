#include "player/nav_run.h"

#include <algorithm>
#include <utility>

namespace quorvelant {

namespace {

std::uint8_t Byte(std::size_t value) {
  return static_cast<std::uint8_t>(value);
}

// Of a block of angles the one that is chosen, or its first.
std::uint8_t CellOfAngle(const NavChain& chain, std::uint8_t cell, std::uint16_t angle) {
  if (chain.Cells[cell - 1U].Angle != 1 || angle < 1) {
    return cell;
  }
  const std::size_t wanted = std::size_t{cell} + angle - 1U;
  return wanted <= chain.Cells.size() && chain.Cells[wanted - 1U].Angle == angle ? Byte(wanted) : cell;
}

// The last cell of the block that a cell is in: itself where it is in none.
std::uint8_t LastOfBlock(const NavChain& chain, std::uint8_t cell) {
  while (cell < chain.Cells.size() && chain.Cells[cell - 1U].Angle != 0 && chain.Cells[cell].Angle > 1) {
    ++cell;
  }
  return cell;
}

}  // namespace

// Marks at doubling distances are enough to close any circle (Brent).
bool NavCircle::Closes(const NavState& state, NavList list, std::size_t place) {
  if (steps_ == nextMark_) {
    mark_ = {.At = state.At, .List = list, .Place = place, .Registers = state.Registers};
    nextMark_ = 2 * steps_ + 1;
    ++steps_;
    return false;
  }
  ++steps_;
  const bool closes =
      mark_.Place == place &&
      mark_ == Mark{.At = state.At, .List = list, .Place = place, .Registers = state.Registers};
  rounds_ += closes ? 1 : 0;
  return rounds_ > 1;
}

void NavRun::Note(NavHappening::Kind what) {
  out_.Happened.push_back(
      {.What = what, .At = State().At, .List = NavList::Pre, .Number = 0, .Lead = {}, .Page = State().Page});
}

void NavRun::SelectButton(int number) {
  State().Registers.PutButton(number);
}

// --- lists of commands ---

NavLead NavRun::RunList(std::span<const NavCommand> commands, NavList list, std::uint16_t& number,
                        std::size_t before) {
  std::size_t at = 0;
  while (at < commands.size() && MayGoOn(list, at)) {
    number = static_cast<std::uint16_t>(before + at + 1);
    const NavLead lead = RunNavCommand(commands[at], State().Registers, random_);
    out_.Happened.push_back({.What = NavHappening::Kind::Ran,
                             .At = State().At,
                             .List = list,
                             .Number = number,
                             .Lead = lead,
                             .Page = State().Page});
    if (lead.What == NavLead::Kind::GoTo && lead.Number >= 1) {
      at = lead.Number - 1U;
    } else if (lead.What == NavLead::Kind::Break) {
      break;
    } else if (IsEmptyResume(lead)) {
      out_.Happened.push_back({.What = NavHappening::Kind::Missing,
                               .At = State().At,
                               .List = list,
                               .Number = number,
                               .Lead = {.What = NavLead::Kind::Resume},
                               .Page = State().Page});
      ++at;
    } else if (lead.Leads()) {
      return lead;
    } else if (lead.What == NavLead::Kind::NoLink && lead.Button != 0) {
      SelectButton(lead.Button);
      ++at;
    } else {
      ++at;
    }
  }
  return {};
}

bool NavRun::IsEmptyResume(const NavLead& lead) const {
  const NavChain* chain = Chain();
  const bool goesUp = lead.What == NavLead::Kind::GoUpChain && chain != nullptr && chain->GoUp == GoUpResumes;
  return (goesUp || lead.What == NavLead::Kind::Resume) && !State().Resume &&
         MayRunIn(State().At.Domain, NavLead::Kind::Resume);
}

// --- the road ---

void NavRun::Go(Next next) {
  while (next != Next::Done) {
    if (!MayGoOn(NavList::Post, ~static_cast<std::size_t>(next))) {
      next = Stop(NavStop::Loop);
      continue;
    }
    switch (next) {
      case Next::Chain:
        next = StartChain();
        break;
      case Next::Program:
        next = StartProgram();
        break;
      case Next::Cell:
        next = StartCell();
        break;
      case Next::Tail:
        next = RunTail();
        break;
      case Next::Done:
        break;
    }
  }
}

bool NavRun::MayGoOn(NavList list, std::size_t place) {
  now_ = {list, place};
  isLooping_ = isLooping_ || ++commands_ > NavBudget || circle_.Closes(State(), list, place);
  return !isLooping_;
}

bool NavRun::IsRedraw() {
  const NavCircle::Mark draw{
      .At = State().At, .List = now_.first, .Place = now_.second, .Registers = State().Registers};
  const bool isAgain = draws_.size() >= MostNavDraws || std::ranges::find(draws_, draw) != draws_.end();
  draws_.push_back(draw);
  out_.IsRedrawn = out_.IsRedrawn || isAgain;
  isLooping_ = isLooping_ || isAgain;
  return isAgain;
}

// A shuffle takes each program once before any comes again.
std::uint8_t NavRun::DrawProgram(const NavChain& chain) {
  constexpr unsigned Shuffles = 0x80;
  if ((chain.Playback & Shuffles) == 0) {
    return Byte(random_(static_cast<std::uint16_t>(chain.Programs.size())));
  }
  auto& drawn = State().Drawn;
  const std::size_t count = std::min(chain.Programs.size(), drawn.size());
  if (drawn.count() >= count) {
    drawn.reset();
  }
  std::size_t left = random_(static_cast<std::uint16_t>(count - drawn.count()));
  std::size_t program = 0;
  while (drawn.test(program) || --left > 0) {
    ++program;
  }
  drawn.set(program);
  return Byte(program + 1);
}

NavRun::Next NavRun::Stop(NavStop why) {
  State().Phase = NavPhase::Stopped;
  State().Stop = why;
  State().Page = 0;
  Note(NavHappening::Kind::Stopped);
  return Next::Done;
}

NavRun::Next NavRun::Missing(const NavLead& lead, NavList list, std::uint16_t number) {
  out_.Happened.push_back({.What = NavHappening::Kind::Missing,
                           .At = State().At,
                           .List = list,
                           .Number = number,
                           .Lead = lead,
                           .Page = State().Page});
  return Stop(NavStop::Missing);
}

NavRun::Next NavRun::StartChain() {
  const NavChain* chain = Chain();
  if (chain == nullptr) {
    return Stop(NavStop::Missing);
  }
  NavState& state = State();
  const std::uint8_t entry = std::exchange(entry_, std::uint8_t{1});
  state.At.Program = 1;
  state.At.Cell = 0;
  state.Page = 0;
  state.Drawn.reset();
  state.Repeats =
      chain->Playback == 0 ? std::uint16_t{0} : static_cast<std::uint16_t>(chain->Playback & 0x7FU);
  if (state.At.Domain == NavDomain::Title) {
    state.Registers.Put(Sprm::TitleChain, state.At.Chain);
  }
  Note(NavHappening::Kind::Entered);
  std::uint16_t number = 0;
  const NavLead lead = RunList(chain->Pre, NavList::Pre, number);
  if (lead.What != NavLead::Kind::None) {
    return Obey(lead, NavList::Pre, number);
  }
  if (isLooping_) {
    return Stop(NavStop::Loop);
  }
  if (entry > 1) {
    state.At.Program = entry;
  } else if (chain->Playback != 0 && !chain->Programs.empty()) {
    state.At.Program = DrawProgram(*chain);
  }
  return Next::Program;
}

NavRun::Next NavRun::StartProgram() {
  const NavChain* chain = Chain();
  NavState& state = State();
  if (chain == nullptr || state.At.Program < 1 || state.At.Program > chain->Programs.size()) {
    return Next::Tail;
  }
  state.At.Cell = chain->Programs[state.At.Program - 1U];
  return Next::Cell;
}

NavRun::Next NavRun::StartCell() {
  const NavChain* chain = Chain();
  NavState& state = State();
  if (chain == nullptr || state.At.Cell < 1 || state.At.Cell > chain->Cells.size()) {
    return Next::Tail;
  }
  state.At.Cell = CellOfAngle(*chain, state.At.Cell, state.Registers.Of(Sprm::Angle));
  const auto after = std::ranges::upper_bound(chain->Programs, state.At.Cell);
  state.At.Program = Byte(static_cast<std::size_t>(std::distance(chain->Programs.begin(), after)));
  state.Phase = NavPhase::Playing;
  state.Stop = NavStop::None;
  TellPart();
  Note(NavHappening::Kind::Plays);
  state.Page = 0;
  const NavCell& cell = chain->Cells[state.At.Cell - 1U];
  if (!cell.Pages.empty() && cell.Pages.front().Start == 0) {
    EnterPage(1);
  }
  return Next::Done;
}

// The register of the part, from the last one that begins at or before the program.
void NavRun::TellPart() {
  NavState& state = State();
  const NavSet* set = state.At.Domain == NavDomain::Title ? SetOf(disc_, state.At.Set) : nullptr;
  const std::size_t title = state.Registers.Of(Sprm::TitleOfSet);
  if (set == nullptr || title < 1 || title > set->Parts.size()) {
    return;
  }
  const std::vector<NavPart>& parts = set->Parts[title - 1];
  for (std::size_t i = parts.size(); i-- > 0;) {
    if (parts[i].Chain == state.At.Chain && parts[i].Program <= state.At.Program) {
      state.Registers.Put(Sprm::Part, static_cast<std::uint16_t>(i + 1));
      return;
    }
  }
}

void NavRun::EnterPage(std::uint16_t page) {
  constexpr std::uint8_t KeepsSelected = 63;
  State().Page = page;
  const NavPage* shown = PageAt(disc_, State());
  if (shown == nullptr) {
    return;
  }
  if (shown->ForcedSelect >= 1 && shown->ForcedSelect != KeepsSelected) {
    SelectButton(shown->ForcedSelect);
  }
  const int most = static_cast<int>(shown->Buttons.size());
  SelectButton(std::clamp(State().Registers.Button(), 1, most));
}

void NavRun::NextPage() {
  const NavCell* cell = Cell();
  const NavPage* shown = PageAt(disc_, State());
  if (shown != nullptr && shown->ForcedAction >= 1 && shown->ForcedAction <= shown->Buttons.size()) {
    SelectButton(shown->ForcedAction);
    RunButton(*shown, shown->ForcedAction);
    return;
  }
  if (cell != nullptr && State().Page < cell->Pages.size()) {
    EnterPage(static_cast<std::uint16_t>(State().Page + 1));
    return;
  }
  if (cell != nullptr && cell->StillTime != 0) {
    State().Phase = NavPhase::CellStill;
    return;
  }
  EndCell();
}

void NavRun::EndCell() {
  const NavChain* chain = Chain();
  const NavCell* cell = Cell();
  if (chain == nullptr || cell == nullptr) {
    Go(Next::Tail);
    return;
  }
  if (cell->Command >= 1 && cell->Command <= chain->CellCommands.size()) {
    std::uint16_t number = 0;
    const NavLead lead = RunList(std::span(chain->CellCommands).subspan(cell->Command - 1U, 1), NavList::Cell,
                                 number, cell->Command - 1U);
    if (lead.What != NavLead::Kind::None) {
      Go(Obey(lead, NavList::Cell, cell->Command));
      return;
    }
  }
  NavState& state = State();
  state.At.Cell = LastOfBlock(*chain, state.At.Cell);
  const bool endsProgram = state.At.Cell >= chain->Cells.size() ||
                           std::ranges::binary_search(chain->Programs, Byte(state.At.Cell + 1U));
  if (endsProgram && chain->Playback != 0 && !chain->Programs.empty()) {
    if (state.Repeats > 0) {
      --state.Repeats;
      state.At.Program = DrawProgram(*chain);
      Go(Next::Program);
      return;
    }
    state.At.Cell = Byte(chain->Cells.size());
  }
  if (state.At.Cell < chain->Cells.size()) {
    ++state.At.Cell;
    Go(Next::Cell);
    return;
  }
  if (chain->StillTime != 0) {
    state.Phase = NavPhase::ChainStill;
    return;
  }
  Go(Next::Tail);
}

void NavRun::EndChain() {
  Go(Next::Tail);
}

NavRun::Next NavRun::RunTail() {
  const NavChain* chain = Chain();
  if (chain == nullptr) {
    return Stop(NavStop::Missing);
  }
  std::uint16_t number = 0;
  const NavLead lead = RunList(chain->Post, NavList::Post, number);
  if (lead.What != NavLead::Kind::None) {
    return Obey(lead, NavList::Post, number);
  }
  if (isLooping_) {
    return Stop(NavStop::Loop);
  }
  if (chain->Next == NoChain) {
    return Stop(NavStop::NoWay);
  }
  return ToChain(State().At.Domain, State().At.Set, chain->Next);
}

void NavRun::RunButton(const NavPage& page, int number) {
  const auto place = static_cast<std::size_t>(number) - 1;
  std::uint16_t ran = 0;
  const NavCommand command = page.Buttons.at(place).Command;
  const NavLead lead = RunList(std::span(&command, 1), NavList::Button, ran, place);
  if (lead.What != NavLead::Kind::None) {
    Follow(lead, NavList::Button, static_cast<std::uint16_t>(number));
  }
}

void NavRun::Follow(NavLead lead, NavList list, std::uint16_t number) {
  Go(Obey(lead, list, number));
}

}  // namespace quorvelant
