#include "player/nav_walk.h"

#include <algorithm>

#include "player/nav_lookup.h"

namespace quorvelant {

namespace {

constexpr std::array Arrows{NavKey::Up, NavKey::Down, NavKey::Left, NavKey::Right};
constexpr std::uint8_t ShowsSubpicture = 0x40;

bool IsArrow(NavKey key) {
  return std::ranges::find(Arrows, key) != Arrows.end();
}

// Of a chain alone.
NavPoint ChainOf(const NavPoint& point) {
  NavPoint chain = point;
  chain.Program = chain.Cell = 0;
  return chain;
}

NavCommandAt PlaceOf(const NavHappening& ran, std::uint16_t page) {
  const bool isButton = ran.List == NavList::Button;
  NavPoint at = ChainOf(ran.At);
  at.Cell = isButton ? ran.At.Cell : std::uint8_t{0};
  return {.At = at, .List = ran.List, .Page = isButton ? page : std::uint16_t{0}, .Number = ran.Number};
}

bool WaitsOn(const NavEvent& event, const NavState& from, const NavState& to) {
  return event.Key == NavKey::Wait && ChainOf(from.At) == ChainOf(to.At) && to.Phase != NavPhase::Stopped;
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

std::size_t NavWalk::KeyHash::operator()(const Key& key) const {
  std::uint64_t hash = 0x9E3779B97F4A7C15;
  for (const std::uint64_t part : key) {
    hash = (hash ^ part) * 0xFF51AFD7ED558CCD;
    hash ^= hash >> 32U;
  }
  return static_cast<std::size_t>(hash);
}

NavWalk::NavWalk(const NavDisc& disc, std::uint16_t language, const NavBounds& bounds)
    : disc_(disc), language_(language), bounds_(bounds), chains_(disc, language), live_(chains_) {
  entered_.resize(chains_.All().size());
  for (const NavChains::Placed& placed : chains_.All()) {
    played_.emplace_back(placed.Chain->Cells.size() + 1);
  }
  Run();
}

// --- what matters of a state ---

NavWalk::Key NavWalk::KeyOf(const NavState& state, const Choice& chosen) const {
  const auto pointKey = [](const NavPoint& at) {
    return std::uint64_t{at.Set} << 40U | std::uint64_t{at.Chain} << 24U | std::uint64_t{at.Program} << 16U |
           std::uint64_t{at.Cell} << 8U | static_cast<std::uint64_t>(at.Domain);
  };
  Key key{};
  key[0] = pointKey(state.At) | static_cast<std::uint64_t>(state.Phase) << 56U;
  if (state.Phase == NavPhase::Stopped) {
    key[0] |= static_cast<std::uint64_t>(state.Stop) << 60U;
    return key;
  }
  const bool inTitle = state.At.Domain == NavDomain::Title;
  const std::size_t chain = chains_.IndexOf(state.At);
  const NavRegisterSet live = chain == NavChains::None ? 0 : live_.Standing(chain);
  const bool hasButton = state.Page != 0 || (live & BitOf(Sprm::Button)) != 0;
  key[1] = std::uint64_t{state.Page} << 48U | std::uint64_t{state.Repeats} << 32U |
           (hasButton ? static_cast<std::uint64_t>(state.Registers.Button()) << 16U : 0) |
           (inTitle ? state.Registers.Of(Sprm::TitleOfSet) : std::uint64_t{0});
  std::uint64_t mixed = 0;
  constexpr NavRegisterSet Placed = BitOf(Sprm::Button) | BitOf(Sprm::MenuLanguage);
  for (unsigned i = 0; i < 40; ++i) {
    if ((live & ~Placed & NavRegisterSet{1} << i) != 0) {
      const std::uint64_t value = i < 16 ? state.Registers.General.at(i) : state.Registers.System.at(i - 16);
      mixed = (mixed ^ (value + i * 0x10001U)) * 0x9E3779B97F4A7C15;
      key[2] ^= mixed >> 17U;
    }
  }
  key[3] = mixed;
  if (state.Registers.Of(Sprm::Timer) != 0) {
    key[4] = std::uint64_t{1} << 63U | state.Registers.Of(Sprm::TimerChain);
  }
  // Where nothing matters in a title, coming back to it shows nothing new.
  if (state.Resume) {
    const std::size_t back = chains_.IndexOf(state.Resume->At);
    constexpr NavRegisterSet Kept = BitOf(Sprm::Title) | BitOf(Sprm::TitleOfSet) | BitOf(Sprm::TitleChain) |
                                    BitOf(Sprm::Part) | BitOf(Sprm::Button);
    const bool matters = back != NavChains::None && (live_.Standing(back) & ~Kept) != 0;
    key[5] = matters ? pointKey(state.Resume->At) | std::uint64_t{1} << 63U : std::uint64_t{1} << 62U;
  }
  if (chosen.Audio) {
    key[6] |= std::uint64_t{0x100} | state.Registers.Of(Sprm::Audio);
  }
  if (chosen.Subpicture) {
    key[6] |= (std::uint64_t{0x100} | state.Registers.Of(Sprm::Subpicture)) << 16U;
  }
  return key;
}

// --- the walk ---

void NavWalk::Run() {
  EachOutcome([this](const NavRandom& random) {
    Take(0, std::nullopt, InsertDisc(disc_, FreshRegisters(language_), random));
  });
  while (!open_.empty()) {
    auto& [cost, list] = *open_.begin();
    if (list.empty()) {
      open_.erase(open_.begin());
      continue;
    }
    // In the order in which they were found, so that words of the ways do not hang on chance.
    const std::vector<std::uint32_t> round = std::exchange(list, {});
    const auto now = static_cast<std::uint32_t>(cost);
    for (const std::uint32_t node : round) {
      if (!nodes_[node].IsDone && nodes_[node].Cost == now) {
        nodes_[node].IsDone = true;
        Expand(node);
      }
    }
    if (nodes_.size() > bounds_.Nodes) {
      isWhole_ = false;
      return;
    }
  }
}

template <class Step>
void NavWalk::EachOutcome(Step step) {
  constexpr int MostOutcomes = 512;
  std::vector<std::uint16_t> drawn;
  std::vector<std::uint16_t> bounds;
  for (int i = 0; i < MostOutcomes; ++i) {
    std::size_t at = 0;
    step([&](std::uint16_t bound) {
      if (at == drawn.size()) {
        drawn.push_back(1);
        bounds.push_back(std::min(std::max<std::uint16_t>(bound, 1), bounds_.Draws));
      }
      return drawn[at++];
    });
    while (!drawn.empty() && drawn.back() >= bounds.back()) {
      drawn.pop_back();
      bounds.pop_back();
    }
    if (drawn.empty()) {
      return;
    }
    ++drawn.back();
  }
  isWhole_ = false;
}

std::vector<NavEvent> NavWalk::EventsIn(const Node& node) const {
  const NavState& state = node.State;
  std::vector<NavEvent> events{{NavKey::Wait, 0}};
  const NavPage* page = PageAt(disc_, state);
  if (page != nullptr && !page->Buttons.empty()) {
    events.push_back({NavKey::Activate, 0});
    for (const NavKey arrow : Arrows) {
      events.push_back({arrow, 0});
    }
    for (std::uint16_t i = 1; !node.ByArrow && i <= page->ByNumber; ++i) {
      events.push_back({NavKey::Number, static_cast<std::uint16_t>(i + page->Offset)});
    }
  } else if (state.Phase != NavPhase::Playing) {
    events.push_back({NavKey::StopStill, 0});
  }
  if (!node.ByArrow) {
    if (state.At.Domain == NavDomain::Title) {
      events.push_back({NavKey::NextPart, 0});
      events.push_back({NavKey::PreviousPart, 0});
    }
    for (const NavKey key : {NavKey::RootMenu, NavKey::TitleMenu, NavKey::SubpictureMenu, NavKey::AudioMenu,
                             NavKey::AngleMenu, NavKey::PartMenu, NavKey::Return, NavKey::Resume}) {
      events.push_back({key, 0});
    }
    if (state.Registers.Of(Sprm::Timer) != 0) {
      events.push_back({NavKey::TimeOver, 0});
    }
  }
  return events;
}

void NavWalk::Expand(std::size_t node) {
  if (nodes_[node].State.Phase == NavPhase::Stopped) {
    return;
  }
  for (const NavEvent& event : EventsIn(nodes_[node])) {
    EachOutcome([&](const NavRandom& random) {
      const NavState from = nodes_[node].State;
      Take(node, event, NavStep(disc_, from, event, random));
    });
  }
}

void NavWalk::Take(std::size_t node, const std::optional<NavEvent>& event, NavOutcome outcome) {
  const auto isRefused = [](const NavHappening& one) { return one.What == NavHappening::Kind::Refused; };
  if (std::ranges::any_of(outcome.Happened, isRefused)) {
    return;
  }
  const NavState before = event ? nodes_[node].State : NavState();
  Choice chosen = event ? nodes_[node].Chosen : Choice();
  const NavMoment moment{node, event, outcome.State};
  Record(moment, before, outcome, chosen);
  Reach(node, event, std::move(outcome.State), chosen);
}

void NavWalk::Reach(std::size_t from, const std::optional<NavEvent>& event, NavState state,
                    const Choice& chosen) {
  const bool isFree = event && WaitsOn(*event, nodes_[from].State, state);
  const std::uint32_t cost = event ? nodes_[from].Cost + (isFree ? 0 : 1) : 0;
  const auto next = static_cast<std::uint32_t>(nodes_.size());
  const auto [known, isNew] = known_.try_emplace(KeyOf(state, chosen), next);
  const std::uint32_t to = known->second;
  if (event) {
    edges_.push_back({static_cast<std::uint32_t>(from), to, *event});
  }
  const bool byArrow = event && IsArrow(event->Key) && nodes_[from].State.At == state.At &&
                       nodes_[from].State.Page == state.Page;
  if (isNew) {
    nodes_.push_back({.State = std::move(state),
                      .From = static_cast<std::uint32_t>(from),
                      .Event = event,
                      .Cost = cost,
                      .IsDone = false,
                      .ByArrow = byArrow,
                      .Chosen = chosen});
    open_[static_cast<int>(cost)].push_back(to);
  } else if (!nodes_[to].IsDone && cost < nodes_[to].Cost) {
    Node& node = nodes_[to];
    node = {.State = std::move(state),
            .From = static_cast<std::uint32_t>(from),
            .Event = event,
            .Cost = cost,
            .IsDone = false,
            .ByArrow = byArrow,
            .Chosen = chosen};
    open_[static_cast<int>(cost)].push_back(to);
  }
}

// --- what is seen on the way ---

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
  if (after.Page != 0) {
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
  constexpr int FirstSubpicture = 100;
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
  const bool leads = first->Lead.LeavesList() && first->Lead.What != NavLead::Kind::NoLink &&
                     first->Lead.What != NavLead::Kind::Unknown;
  NavState chosen = before;  // a number key chooses the button first
  chosen.Registers.PutButton(outcome.State.Registers.Button());
  activation.HasEffect = activation.HasEffect || leads || selects || !(outcome.State == chosen);
}

void NavWalk::RecordStop(const NavMoment& moment, const NavOutcome& outcome) {
  const NavPoint chain = ChainOf(outcome.State.At);
  const bool isAsked =
      moment.Event && (moment.Event->Key == NavKey::NextPart || moment.Event->Key == NavKey::StopStill);
  if (outcome.State.Stop == NavStop::NoWay && !isAsked) {
    stops_.try_emplace(chain, moment);
  }
  if (outcome.State.Stop != NavStop::Loop) {
    return;
  }
  // A circle is known by the least command in it, wherever it was entered: one that ran twice.
  std::map<NavCommandAt, int> ran;
  for (const NavHappening& one : outcome.Happened) {
    if (one.What == NavHappening::Kind::Ran) {
      ++ran[PlaceOf(one, 0)];
    }
  }
  const auto least = std::ranges::find_if(ran, [](const auto& entry) { return entry.second > 1; });
  loops_.try_emplace(least == ran.end() ? NavCommandAt{.At = chain} : least->first, moment);
}

void NavWalk::CheckStreams(const NavMoment& moment, const Choice& chosen) {
  constexpr int FirstSubpicture = 100;
  const NavState& state = moment.After;
  const NavChain* chain = ChainAt(disc_, state.At, language_);
  if (chain == nullptr) {
    return;
  }
  const auto judge = [&](const NavCommandAt& command, int stream, bool has) {
    if (has) {
      metStreams_.insert({command, stream});
    } else {
      missingStreams_.try_emplace({command, ChainOf(state.At), stream}, moment);
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

// --- ways ---

std::vector<NavStride> NavWalk::WayTo(const NavMoment& moment) const {
  std::vector<NavStride> way;
  if (!moment.Event) {
    return way;
  }
  way.push_back({nodes_[moment.Node].State, *moment.Event, moment.After});
  for (std::size_t node = moment.Node; nodes_[node].Event;) {
    const std::size_t from = nodes_[node].From;
    way.push_back({nodes_[from].State, *nodes_[node].Event, nodes_[node].State});
    node = from;
  }
  std::ranges::reverse(way);
  return way;
}

NavMoment NavWalk::MomentAt(std::size_t node) const {
  return {nodes_[node].From, nodes_[node].Event, nodes_[node].State};
}

}  // namespace quorvelant
