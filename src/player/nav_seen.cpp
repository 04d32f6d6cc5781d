// What is seen on the ways of a walk.
#include <algorithm>

#include "player/nav_lookup.h"
#include "player/nav_walk.h"

namespace quorvelant {

namespace {

constexpr std::uint8_t ShowsSubpicture = 0x40;

NavCommandAt PlaceOf(const NavHappening& ran, std::uint16_t page) {
  const bool isButton = ran.List == NavList::Button;
  NavPoint at = ChainPoint(ran.At);
  at.Cell = isButton ? ran.At.Cell : std::uint8_t{0};
  return {.At = at, .List = ran.List, .Page = isButton ? page : std::uint16_t{0}, .Number = ran.Number};
}

}  // namespace

const NavCommand* FindNavCommand(const NavChains& chains, const NavCommandAt& at) {
  const std::size_t index = chains.IndexOf(at.At);
  if (index == NavChains::None || at.Number == 0) {
    return nullptr;
  }
  const NavChain& chain = *chains.All()[index].Chain;
  const auto of = [&at](const std::vector<NavCommand>& list) {
    return at.Number <= list.size() ? &list[at.Number - 1U] : nullptr;
  };
  switch (at.List) {
    case NavList::Pre:
      return of(chain.Pre);
    case NavList::Post:
      return of(chain.Post);
    case NavList::Cell:
      return of(chain.CellCommands);
    case NavList::Button:
      break;
  }
  if (at.At.Cell < 1 || at.At.Cell > chain.Cells.size()) {
    return nullptr;
  }
  const auto& pages = chain.Cells[at.At.Cell - 1U].Pages;
  const bool isThere =
      at.Page >= 1 && at.Page <= pages.size() && at.Number <= pages[at.Page - 1U].Buttons.size();
  return isThere ? &pages[at.Page - 1U].Buttons[at.Number - 1U].Command : nullptr;
}

void NavWalk::Record(const NavMoment& moment, const NavState& before, const NavOutcome& outcome,
                     Choice& chosen) {
  for (const NavHappening& one : outcome.Happened) {
    const std::size_t chain = chains_.IndexOf(one.At);
    switch (one.What) {
      case NavHappening::Kind::Ran:
        RecordCommand(one, before.Page, chosen);
        break;
      case NavHappening::Kind::Entered:
        if (chain != NavChains::None) {
          entered_[chain] = true;
        }
        break;
      case NavHappening::Kind::Plays:
        if (chain != NavChains::None && one.At.Cell < played_[chain].size()) {
          entered_[chain] = true;
          played_[chain][one.At.Cell] = true;
        }
        break;
      case NavHappening::Kind::Missing:
        missing_.try_emplace(PlaceOf(one, before.Page), one.Lead, moment);
        break;
      case NavHappening::Kind::Refused:
      case NavHappening::Kind::Stopped:
        break;
    }
  }
  RecordButton(moment, before, outcome);
  const NavState& after = outcome.State;
  if (after.Phase == NavPhase::Stopped) {
    RecordStop(moment, outcome);
    return;
  }
  if (after.At.Domain == NavDomain::Title) {
    CheckStreams(moment, chosen);
    chosen = {};
  }
  if (PageAt(disc_, after) != nullptr) {
    pages_.try_emplace({after.At, after.Page}, moment);
  }
}

void NavWalk::RecordCommand(const NavHappening& ran, std::uint16_t page, Choice& chosen) {
  const NavCommandAt place = PlaceOf(ran, page);
  const NavCommand* command = FindNavCommand(chains_, place);
  constexpr std::uint8_t SystemSet = 2;
  constexpr unsigned Streams = 1;
  if (command == nullptr || (*command)[0] >> 5U != SystemSet || ((*command)[0] & 0x0FU) != Streams) {
    return;
  }
  constexpr std::uint8_t IsSet = 0x80;
  const NavFacts facts = FactsOf(*command);
  const bool setsAudio = ((*command)[3] & IsSet) != 0;
  const bool setsSubpicture = ((*command)[4] & IsSet) != 0;
  if (setsAudio) {
    chosen.Audio = place;
  }
  if (setsSubpicture) {
    chosen.Subpicture = place;
  }
  if (!facts.SetsByNumber && (setsAudio || setsSubpicture)) {
    chosenStreams_.reset();
  } else if (chosenStreams_) {
    if (setsAudio) {
      chosenStreams_->insert((*command)[3] & 0x0F);
    }
    if (setsSubpicture) {
      chosenStreams_->insert(FirstSubpicture + ((*command)[4] & 0x1F));
    }
  }
}

void NavWalk::RecordButton(const NavMoment& moment, const NavState& before, const NavOutcome& outcome) {
  const auto first = std::ranges::find_if(outcome.Happened, [](const NavHappening& one) {
    return one.What == NavHappening::Kind::Ran && one.List == NavList::Button;
  });
  if (first == outcome.Happened.end()) {
    return;
  }
  Activation& activation =
      buttons_.try_emplace(PlaceOf(*first, before.Page), Activation{false, moment}).first->second;
  const bool selects = first->Lead.What == NavLead::Kind::NoLink && first->Lead.Button != 0 &&
                       first->Lead.Button != first->Number;
  NavState chosen = before;  // a number key chooses the button first
  chosen.Registers.PutButton(outcome.State.Registers.Button());
  activation.HasEffect = activation.HasEffect || first->Lead.Leads() || selects || !(outcome.State == chosen);
}

void NavWalk::RecordStop(const NavMoment& moment, const NavOutcome& outcome) {
  const NavPoint chain = ChainPoint(outcome.State.At);
  const bool isAsked =
      moment.Event && (moment.Event->Key == NavKey::NextPart || moment.Event->Key == NavKey::StopStill);
  const auto isOfCommand = [this, &moment](const NavHappening& one) {
    const NavCommandAt place = PlaceOf(one, moment.Event ? nodes_[moment.Node].State.Page : std::uint16_t{0});
    return one.What == NavHappening::Kind::Missing && FindNavCommand(chains_, place) != nullptr;
  };
  const bool endsNowhere = outcome.State.Stop == NavStop::NoWay && !isAsked;
  // A link of the chain itself, or a chain for the timer, that is not there: no command is to blame.
  const bool linksNowhere =
      outcome.State.Stop == NavStop::Missing && std::ranges::none_of(outcome.Happened, isOfCommand);
  if (endsNowhere || linksNowhere) {
    stops_.try_emplace(chain, moment);
  }
  if (outcome.State.Stop != NavStop::Loop) {
    return;
  }
  // A circle is known by the least command in it that leads on, wherever it was entered: one that ran twice.
  std::map<NavCommandAt, int> ran;
  for (const NavHappening& one : outcome.Happened) {
    if (one.What == NavHappening::Kind::Ran && one.Lead.What != NavLead::Kind::None) {
      ++ran[PlaceOf(one, 0)];
    }
  }
  const auto least = std::ranges::find_if(ran, [](const auto& entry) { return entry.second > 1; });
  loops_.try_emplace(least == ran.end() ? NavCommandAt{.At = chain} : least->first, moment);
}

void NavWalk::CheckStreams(const NavMoment& moment, const Choice& chosen) {
  const NavState& state = moment.After;
  const NavChain* chain = ChainAt(disc_, state.At, language_);
  if (chain == nullptr) {
    return;
  }
  const auto judge = [&](const NavCommandAt& command, int stream, bool has) {
    if (has) {
      metStreams_.insert({command, stream});
    } else {
      missingStreams_.try_emplace({command, ChainPoint(state.At), stream}, moment);
    }
  };
  constexpr std::uint16_t NoAudio = 15;
  const std::uint16_t audio = state.Registers.Of(Sprm::Audio);
  if (chosen.Audio && audio != NoAudio) {
    judge(*chosen.Audio, audio, audio < chain->Audio.size() && (chain->Audio.at(audio) & 0x8000U) != 0);
  }
  const auto subpicture = static_cast<std::size_t>(state.Registers.Of(Sprm::Subpicture) & 0x3FU);
  const bool shows = (state.Registers.Of(Sprm::Subpicture) & ShowsSubpicture) != 0;
  if (chosen.Subpicture && shows && subpicture < chain->Subpictures.size()) {
    judge(*chosen.Subpicture, FirstSubpicture + static_cast<int>(subpicture),
          (chain->Subpictures.at(subpicture) & 0x80000000U) != 0);
  }
}

}  // namespace quorvelant
