#include "player/nav_walk.h"

#include <algorithm>

#include "player/nav_lookup.h"

namespace quorvelant {

namespace {

constexpr std::array Arrows{NavKey::Up, NavKey::Down, NavKey::Left, NavKey::Right};

bool IsArrow(NavKey key) {
  return std::ranges::find(Arrows, key) != Arrows.end();
}

// To another button of the page. One that acts as it is chosen may have done more.
bool MovedOnly(const NavState& from, NavState to) {
  to.Registers.PutButton(from.Registers.Button());
  return to == from;
}

bool WaitsOn(const NavEvent& event, const NavState& from, const NavState& to) {
  return event.Key == NavKey::Wait && ChainPoint(from.At) == ChainPoint(to.At) &&
         to.Phase != NavPhase::Stopped;
}

}  // namespace

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
      mixed = (mixed ^ (value + std::uint64_t{i} * 0x10001U)) * 0x9E3779B97F4A7C15;
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
  EachOutcome(0, std::nullopt, [this](const NavRandom& random) {
    return InsertDisc(disc_, FreshRegisters(language_), random, NavRedraws::Stop);
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
      if (!IsBeyond() && !nodes_[node].IsDone && nodes_[node].Cost == now) {
        nodes_[node].IsDone = true;
        Expand(node);
      }
    }
    if (IsBeyond()) {
      isWhole_ = false;
      return;
    }
  }
}

template <class Step>
void NavWalk::EachOutcome(std::size_t node, const std::optional<NavEvent>& event, Step step) {
  constexpr std::size_t MostOutcomes = 512;
  // What is drawn first; after it, the least numbers are. Those that differ early are tried first.
  std::vector<std::vector<std::uint16_t>> tries(1);
  std::optional<NavOutcome> redrawn;
  bool leadsOn = false;
  bool isCut = false;
  for (std::size_t i = 0; i < tries.size(); ++i) {
    std::vector<std::uint16_t> drawn = tries[i];
    std::vector<std::uint16_t> bounds;
    NavOutcome outcome = step([&](std::uint16_t bound) {
      if (bound > bounds_.Draws) {
        isCut = true;
        isWhole_ = false;
      }
      bounds.push_back(std::min(std::max<std::uint16_t>(bound, 1), bounds_.Draws));
      drawn.resize(std::max(drawn.size(), bounds.size()), 1);
      return drawn[bounds.size() - 1];
    });
    isCut = isCut || bounds.size() >= MostNavDraws;
    for (std::size_t at = tries[i].size(); at < bounds.size(); ++at) {
      std::vector<std::uint16_t> other(drawn.begin(), drawn.begin() + static_cast<std::ptrdiff_t>(at + 1));
      while (++other.back() <= bounds[at] && tries.size() < MostOutcomes) {
        tries.push_back(other);
      }
      isWhole_ = isWhole_ && other.back() > bounds[at];
    }
    if (!outcome.IsRedrawn) {
      leadsOn = true;
      Take(node, event, outcome);
    } else if (!redrawn) {
      redrawn = std::move(outcome);
    }
  }
  if (redrawn && !leadsOn && !isCut) {
    Take(node, event, *redrawn);
  }
}

std::vector<NavEvent> NavWalk::EventsIn(const Node& node) const {
  const NavState& state = node.State;
  std::vector<NavEvent> events{{NavKey::Wait, 0}};
  const NavPage* page = PageAt(disc_, state);
  if (page != nullptr) {
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
    EachOutcome(node, event, [&](const NavRandom& random) {
      ++steps_;
      return NavStep(disc_, NavState(nodes_[node].State), event, random, NavRedraws::Stop);
    });
  }
}

void NavWalk::Take(std::size_t node, const std::optional<NavEvent>& event, const NavOutcome& outcome) {
  const auto isRefused = [](const NavHappening& one) { return one.What == NavHappening::Kind::Refused; };
  if (std::ranges::any_of(outcome.Happened, isRefused)) {
    return;
  }
  const NavState before = event ? nodes_[node].State : NavState();
  Choice chosen = event ? nodes_[node].Chosen : Choice();
  const NavMoment moment{node, event, outcome.State};
  Record(moment, before, outcome, chosen);
  Reach(node, event, outcome.State, chosen);
}

void NavWalk::Reach(std::size_t from, const std::optional<NavEvent>& event, const NavState& state,
                    const Choice& chosen) {
  const bool isFree = event && WaitsOn(*event, nodes_[from].State, state);
  const std::uint32_t cost = event ? nodes_[from].Cost + (isFree ? 0 : 1) : 0;
  const auto next = static_cast<std::uint32_t>(nodes_.size());
  const auto [known, isNew] = known_.try_emplace(KeyOf(state, chosen), next);
  const std::uint32_t to = known->second;
  if (event) {
    edges_.push_back({static_cast<std::uint32_t>(from), to, *event});
  }
  const bool byArrow = event && IsArrow(event->Key) && MovedOnly(nodes_[from].State, state);
  if (isNew) {
    nodes_.push_back({.State = state,
                      .From = static_cast<std::uint32_t>(from),
                      .Event = event,
                      .Cost = cost,
                      .IsDone = false,
                      .ByArrow = byArrow,
                      .Chosen = chosen});
    open_[static_cast<int>(cost)].push_back(to);
  } else if (!nodes_[to].IsDone && cost < nodes_[to].Cost) {
    Node& node = nodes_[to];
    node = {.State = state,
            .From = static_cast<std::uint32_t>(from),
            .Event = event,
            .Cost = cost,
            .IsDone = false,
            .ByArrow = byArrow,
            .Chosen = chosen};
    open_[static_cast<int>(cost)].push_back(to);
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
