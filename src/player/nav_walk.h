// Every way through a disc: what a viewer can come to by its own means.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "player/nav_live.h"
#include "player/nav_machine.h"
#include "player/nav_words.h"

namespace quorvelant {

// A command of the disc.
struct NavCommandAt {
  NavPoint At;  // of domain, set and chain; of buttons with the cell
  NavList List = NavList::Pre;
  std::uint16_t Page = 0;  // of buttons
  std::uint16_t Number = 0;
  auto operator<=>(const NavCommandAt&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};

// A key in a state, as the last stride of a way.
struct NavMoment {
  std::size_t Node = 0;
  std::optional<NavEvent> Event;  // nothing for the insertion of the disc
  NavState After;
};

// Numbers of subpicture streams among those of both kinds.
inline constexpr int FirstSubpicture = 100;

struct NavBounds {
  std::size_t Nodes = 400000;
  std::size_t Steps = 4000000;  // keys tried, each outcome of random numbers for itself
  std::uint16_t Draws = 255;    // of a random number: so many outcomes are tried
};

// The walk of one menu language. States are remembered by what matters of them, and the first way to each is
// a shortest one.
class NavWalk {
 public:
  NavWalk(const NavDisc& disc, std::uint16_t language, const NavBounds& bounds = {});

  struct Edge {
    std::uint32_t From = 0;
    std::uint32_t To = 0;
    NavEvent Event;
  };
  struct Activation {
    bool HasEffect = false;
    NavMoment First;
  };
  struct Page {
    NavPoint At;
    std::uint16_t Number = 0;
    auto operator<=>(const Page&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
  };

  [[nodiscard]] const NavDisc& Disc() const { return disc_; }
  [[nodiscard]] std::uint16_t Language() const { return language_; }
  [[nodiscard]] const NavChains& Chains() const { return chains_; }
  // False where a bound ended it.
  [[nodiscard]] bool IsWhole() const { return isWhole_; }
  [[nodiscard]] std::size_t Count() const { return nodes_.size(); }
  [[nodiscard]] std::size_t Steps() const { return steps_; }
  [[nodiscard]] const NavState& StateOf(std::size_t node) const { return nodes_[node].State; }
  [[nodiscard]] const std::vector<Edge>& Edges() const { return edges_; }
  // Cells that play on some way: by the number of their chain and their own.
  [[nodiscard]] bool Plays(std::size_t chain, std::size_t cell) const { return played_[chain].at(cell); }
  [[nodiscard]] bool Enters(std::size_t chain) const { return entered_[chain]; }
  [[nodiscard]] const std::map<NavCommandAt, std::pair<NavLead, NavMoment>>& Missing() const {
    return missing_;
  }
  [[nodiscard]] const std::map<NavCommandAt, NavMoment>& Loops() const { return loops_; }
  [[nodiscard]] const std::map<NavPoint, NavMoment>& Stops() const { return stops_; }
  [[nodiscard]] const std::map<NavCommandAt, Activation>& Buttons() const { return buttons_; }
  [[nodiscard]] const std::map<Page, NavMoment>& Pages() const { return pages_; }
  // Streams that a command chose for a title without them: command, chain of the title, stream (subpictures
  // from 100 on).
  using Chosen = std::tuple<NavCommandAt, NavPoint, int>;
  [[nodiscard]] const std::map<Chosen, NavMoment>& MissingStreams() const { return missingStreams_; }
  // Whether some title that plays after the command has the stream that it chose.
  [[nodiscard]] bool Meets(const NavCommandAt& command, int stream) const {
    return metStreams_.contains({command, stream});
  }
  // Streams that some command that runs chooses; nothing where one chooses by a register.
  [[nodiscard]] const std::optional<std::set<int>>& ChosenStreams() const { return chosenStreams_; }

  [[nodiscard]] std::vector<NavStride> WayTo(const NavMoment& moment) const;
  [[nodiscard]] NavMoment MomentAt(std::size_t node) const;

 private:
  // Streams that commands chose since a title played last.
  struct Choice {
    std::optional<NavCommandAt> Audio;
    std::optional<NavCommandAt> Subpicture;
  };
  struct Node {
    NavState State;
    std::uint32_t From = 0;
    std::optional<NavEvent> Event;  // nothing at the insertion
    std::uint32_t Cost = 0;
    bool IsDone = false;
    bool ByArrow = false;
    Choice Chosen;
  };
  using Key = std::array<std::uint64_t, 7>;

  void Run();
  [[nodiscard]] bool IsBeyond() const { return nodes_.size() > bounds_.Nodes || steps_ > bounds_.Steps; }
  void Expand(std::size_t node);
  [[nodiscard]] std::vector<NavEvent> EventsIn(const Node& node) const;
  // Takes every outcome of random numbers. One that draws on and on is a hang where all do.
  template <class Step>
  void EachOutcome(std::size_t node, const std::optional<NavEvent>& event, Step step);
  void Take(std::size_t node, const std::optional<NavEvent>& event, const NavOutcome& outcome);
  void Reach(std::size_t from, const std::optional<NavEvent>& event, const NavState& state,
             const Choice& chosen);
  void Record(const NavMoment& moment, const NavState& before, const NavOutcome& outcome, Choice& chosen);
  void RecordCommand(const NavHappening& ran, std::uint16_t page, Choice& chosen);
  void RecordButton(const NavMoment& moment, const NavState& before, const NavOutcome& outcome);
  void RecordStop(const NavMoment& moment, const NavOutcome& outcome);
  void CheckStreams(const NavMoment& moment, const Choice& chosen);
  [[nodiscard]] Key KeyOf(const NavState& state, const Choice& chosen) const;

  const NavDisc& disc_;
  std::uint16_t language_;
  NavBounds bounds_;
  NavChains chains_;
  NavLive live_;
  std::vector<Node> nodes_;
  std::vector<Edge> edges_;
  std::map<int, std::vector<std::uint32_t>> open_;  // by cost
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };
  std::unordered_map<Key, std::uint32_t, KeyHash> known_;
  bool isWhole_ = true;
  std::size_t steps_ = 0;
  std::vector<std::vector<bool>> played_;
  std::vector<bool> entered_;
  std::map<NavCommandAt, std::pair<NavLead, NavMoment>> missing_;
  std::map<NavCommandAt, NavMoment> loops_;
  std::map<NavPoint, NavMoment> stops_;
  std::map<NavCommandAt, Activation> buttons_;
  std::map<Page, NavMoment> pages_;
  std::map<Chosen, NavMoment> missingStreams_;
  std::set<std::pair<NavCommandAt, int>> metStreams_;
  std::optional<std::set<int>> chosenStreams_{std::set<int>()};
};

// Of a command; nullptr where the disc has none such.
[[nodiscard]] const NavCommand* FindNavCommand(const NavChains& chains, const NavCommandAt& at);

}  // namespace quorvelant
