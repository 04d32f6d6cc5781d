#include "ui/simulation.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "check/nav_of.h"
#include "edit/element_names.h"
#include "player/nav_lookup.h"
#include "player/nav_words.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr std::size_t MostSteps = 5000;  // then the log begins anew
constexpr double TicksASecond = 90000;
constexpr std::uint16_t English = 0x656E;
constexpr std::uint16_t SubpictureShows = 0x40;

QString ListWords(NavList list) {
  switch (list) {
    case NavList::Pre:
      return Simulation::tr("pre");
    case NavList::Post:
      return Simulation::tr("post");
    case NavList::Cell:
      return Simulation::tr("cell");
    default:
      return Simulation::tr("button");
  }
}

// Registers that tell something to people, by their numbers.
struct NamedRegister {
  Sprm Number;
  const char* Name;
};
constexpr std::array NamedRegisters{NamedRegister{Sprm::Audio, "SPRM1 audio"},
                                    NamedRegister{Sprm::Subpicture, "SPRM2 subtitles"},
                                    NamedRegister{Sprm::Angle, "SPRM3 angle"},
                                    NamedRegister{Sprm::Title, "SPRM4 title"},
                                    NamedRegister{Sprm::TitleOfSet, "SPRM5 of the set"},
                                    NamedRegister{Sprm::TitleChain, "SPRM6 PGC"},
                                    NamedRegister{Sprm::Part, "SPRM7 chapter"},
                                    NamedRegister{Sprm::Button, "SPRM8 button"},
                                    NamedRegister{Sprm::Timer, "SPRM9 timer"}};

// How many streams a chain has, by its table of them.
template <typename Table>
std::uint16_t StreamsOf(const Table& table) {
  return static_cast<std::uint16_t>(std::ranges::count_if(table, [](auto entry) { return entry != 0; }));
}

}  // namespace

Simulation::Simulation(Document& document, Selection& selection, Viewer& viewer, QObject* parent)
    : QObject(parent), document_(document), selection_(selection), viewer_(viewer) {
  connect(&document, qOverload<const ChangeEvent&>(&Document::Changed), this, &Simulation::Eject);
}

void Simulation::Insert() {
  EditSession& session = document_.Session();
  session.Commands();  // their digits are those of the disc
  disc_ = NavOf(session.Work(), session.RulesInForce());
  steps_.clear();
  Take(InsertDisc(*disc_, FreshRegisters(English), Draw()));
}

void Simulation::Eject() {
  if (disc_) {
    disc_.reset();
    state_ = {};
    emit StateChanged();
  }
}

void Simulation::Press(const NavEvent& event) {
  if (!disc_) {
    return;
  }
  Take(NavStep(*disc_, state_, event, Draw()));
}

NavRandom Simulation::Draw() {
  return [this](std::uint16_t bound) {
    return static_cast<std::uint16_t>(std::uniform_int_distribution<unsigned>(1, bound)(dice_));
  };
}

void Simulation::PressNext(NavKey key) {
  const NavChain* const chain = Chain();
  if (chain == nullptr) {
    return;
  }
  const bool isAudio = key == NavKey::Audio;
  const std::uint16_t count = isAudio ? StreamsOf(chain->Audio) : StreamsOf(chain->Subpictures);
  const std::uint16_t now = state_.Registers.Of(isAudio ? Sprm::Audio : Sprm::Subpicture);
  if (count == 0) {
    Press({key, now});
    return;
  }
  const auto next = static_cast<std::uint16_t>(((now & (SubpictureShows - 1U)) + 1U) % count);
  Press({key, isAudio ? next : static_cast<std::uint16_t>(next | SubpictureShows)});
}

void Simulation::Take(NavOutcome outcome) {
  if (steps_.size() > MostSteps) {
    steps_.clear();
  }
  const NavState before = std::exchange(state_, std::move(outcome.State));
  std::ranges::for_each(outcome.Happened, [&](const NavHappening& one) { Log(one, before); });
  Show();
  emit StateChanged();
}

NavCommandWords Simulation::CommandOf(const NavHappening& happening, const NavState& before) const {
  const NavChain* const chain = ChainAt(*disc_, happening.At, state_.Registers.Of(Sprm::MenuLanguage));
  NavFinding named;
  named.At = happening.At;
  named.Command = NavCommandAt{happening.At, happening.List, before.Page, happening.Number};
  named.Name = chain == nullptr ? std::string() : chain->Name;
  const NavPage* const page = PageAt(*disc_, before);
  if (happening.List == NavList::Button && page != nullptr && happening.Number >= 1 &&
      happening.Number <= page->Buttons.size()) {
    const NavButton& button = page->Buttons[happening.Number - 1U];
    named.Name = button.Name;
    named.Bytes = button.Command;
  }
  return NamingOf(document_.Work())(named);
}

void Simulation::Log(const NavHappening& happening, const NavState& before) {
  using Kind = NavHappening::Kind;
  const NavChain* const chain = ChainAt(*disc_, happening.At, state_.Registers.Of(Sprm::MenuLanguage));
  SimulatedStep step{.Place = chain == nullptr ? std::string() : chain->Name, .Words = {}};
  const bool isMissing = happening.What == Kind::Missing;
  switch (happening.What) {
    case Kind::Entered:
      step.Words = Shown(NameOfElement(document_.Work(), step.Place));
      break;
    case Kind::Plays:
      if (chain != nullptr && happening.At.Cell >= 1 && happening.At.Cell <= chain->Cells.size()) {
        step.Place = chain->Cells[happening.At.Cell - 1U].Name;
      }
      step.Words = tr("plays %1").arg(Shown(NameOfElement(document_.Work(), step.Place)));
      break;
    case Kind::Refused:
      step.Words = tr("this key does nothing here");
      break;
    case Kind::Stopped:
      step.Words = tr("stops");
      break;
    default: {
      const NavCommandWords command = CommandOf(happening, before);
      step.Place = command.Place;
      step.Words = (isMissing ? tr("%1 %2: %3 leads nowhere") : tr("%1 %2: %3"))
                       .arg(ListWords(happening.List))
                       .arg(happening.Number)
                       .arg(Shown(command.Text));
    }
  }
  step.IsFault = isMissing || (happening.What == Kind::Stopped && state_.Stop != NavStop::Exit);
  steps_.push_back(std::move(step));
}

const NavChain* Simulation::Chain() const {
  return disc_ ? ChainAt(*disc_, state_.At, state_.Registers.Of(Sprm::MenuLanguage)) : nullptr;
}

const NavPage* Simulation::Page() const {
  return disc_ && state_.Phase != NavPhase::Stopped ? PageAt(*disc_, state_) : nullptr;
}

// The viewer follows the cell that is chosen.
void Simulation::Show() {
  const NavCell* const cell = state_.Phase == NavPhase::Stopped ? nullptr : CellAt(*disc_, state_);
  if (cell == nullptr) {
    return;
  }
  selection_.Choose(cell->Name);
  const std::uint16_t stream = state_.Registers.Of(Sprm::Subpicture);
  const Track* const track = viewer_.Shown();
  const std::size_t number = state_.At.Domain == NavDomain::Title ? stream & (SubpictureShows - 1U) : 0;
  if (track != nullptr && number < track->SubStreams.size() && !track->SubStreams[number].Removed) {
    viewer_.ToStream(number);
  }
  const NavPage* const page = Page();
  const int button = state_.Registers.Button();
  viewer_.ChooseButton(page != nullptr && button >= 1 && std::cmp_less_equal(button, page->Buttons.size())
                           ? std::optional(static_cast<std::size_t>(button - 1))
                           : std::nullopt);
}

std::optional<double> Simulation::Seconds() const {
  const NavCell* const cell = disc_ && state_.Phase != NavPhase::Stopped ? CellAt(*disc_, state_) : nullptr;
  const NavChain* const chain = Chain();
  if (cell == nullptr || chain == nullptr) {
    return std::nullopt;
  }
  const auto still = [](std::uint8_t seconds) {
    return seconds == StillForEver ? std::nullopt : std::optional(static_cast<double>(seconds));
  };
  switch (state_.Phase) {
    case NavPhase::CellStill:
      return still(cell->StillTime);
    case NavPhase::ChainStill:
      return still(chain->StillTime);
    default:
      return static_cast<double>(cell->Ticks) / TicksASecond;
  }
}

QString Simulation::Words() const {
  return disc_ ? Shown(PlaceWords(*disc_, state_)) : QString();
}

std::vector<SimulatedRegister> Simulation::Registers() const {
  std::vector<SimulatedRegister> all;
  for (std::size_t i = 0; i < state_.Registers.General.size(); ++i) {
    all.push_back({QStringLiteral("GPRM%1").arg(i), state_.Registers.General.at(i)});
  }
  for (const NamedRegister& row : NamedRegisters) {
    all.push_back({QString::fromUtf8(row.Name), row.Number == Sprm::Button
                                                    ? static_cast<std::uint16_t>(state_.Registers.Button())
                                                    : state_.Registers.Of(row.Number)});
  }
  return all;
}

}  // namespace quorvelant
