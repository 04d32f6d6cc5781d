#include "player/nav_findings.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <set>

#include "player/nav_lookup.h"
#include "player/nav_reach.h"

namespace quorvelant {

namespace {

constexpr std::uint16_t NoLanguage = 0x656E;  // of a disc without menus: English

using Kind = NavFinding::Kind;

std::string NameOf(const NavChains& chains, const NavPoint& at) {
  const std::size_t index = chains.IndexOf(at);
  if (index == NavChains::None) {
    return {};
  }
  const NavChain& chain = *chains.All()[index].Chain;
  return at.Cell >= 1 && at.Cell <= chain.Cells.size() ? chain.Cells[at.Cell - 1U].Name : chain.Name;
}

const NavButton* ButtonAt(const NavChains& chains, const NavCommandAt& at) {
  const std::size_t index = chains.IndexOf(at.At);
  const bool isThere = at.List == NavList::Button && FindNavCommand(chains, at) != nullptr;
  return isThere
             ? &chains.All()[index].Chain->Cells[at.At.Cell - 1U].Pages[at.Page - 1U].Buttons[at.Number - 1U]
             : nullptr;
}

// The findings of one language.
class WalkJudge {
 public:
  // `isOther`: not the first language, so ways say for which player they are.
  WalkJudge(const NavWalk& walk, std::vector<NavFinding>& findings, bool isOther)
      : walk_(walk), findings_(findings), language_(isOther ? walk.Language() : std::uint16_t{0}) {}

  void Judge() {
    Targets();
    Loops();
    Buttons();
    Traps();
    EndedButtons();
    Stops();
    Streams();
  }

 private:
  std::string WayOf(const NavMoment& moment) { return WayWords(walk_.WayTo(moment), language_); }

  NavFinding& Add(Kind what, const NavPoint& at, const NavMoment& moment) {
    NavFinding& finding = findings_.emplace_back();
    finding.What = what;
    finding.Name = NameOf(walk_.Chains(), at);
    finding.Language = walk_.Language();
    finding.At = at;
    finding.Way = WayOf(moment);
    return finding;
  }

  NavFinding& AddCommand(Kind what, const NavCommandAt& at, const NavMoment& moment) {
    NavFinding& finding = Add(what, at.At, moment);
    if (const NavCommand* command = FindNavCommand(walk_.Chains(), at)) {
      finding.Command = at;
      finding.Bytes = *command;
      const NavButton* button = ButtonAt(walk_.Chains(), at);
      finding.Name = button != nullptr && !button->Name.empty() ? button->Name : finding.Name;
    }
    return finding;
  }

  void Targets() {
    for (const auto& [at, missing] : walk_.Missing()) {
      if (FindNavCommand(walk_.Chains(), at) != nullptr) {
        const bool may = MayRunIn(at.At.Domain, missing.first.What);
        AddCommand(may ? Kind::TargetMissing : Kind::TargetForbidden, at, missing.second).Lead =
            missing.first.What;
      }
    }
  }

  void Loops() {
    for (const auto& [at, moment] : walk_.Loops()) {
      AddCommand(Kind::CommandLoop, at, moment);
    }
  }

  void Buttons() {
    for (const auto& [at, activation] : walk_.Buttons()) {
      const NavCommand* command = FindNavCommand(walk_.Chains(), at);
      if (command == nullptr || activation.HasEffect) {
        continue;
      }
      const NavFacts facts = FactsOf(*command);
      // What sets a register may set it to what it is.
      if (facts.Writes == 0 && (!facts.Lead.Leads() || walk_.IsWhole())) {
        AddCommand(Kind::ButtonIdle, at, activation.First);
      }
    }
    for (const auto& [page, moment] : walk_.Pages()) {
      const NavPage* shown = PageAt(walk_.Disc(), moment.After);
      // What acts as soon as it is chosen need not show that it is.
      if (shown != nullptr && !shown->Shows &&
          !std::ranges::all_of(shown->Buttons, &NavButton::ActsWhenSelected)) {
        Add(Kind::ButtonsHidden, page.At, moment);
      }
    }
  }

  // Out of the chain of a menu; on from where a title stands, which may be meant to go round for ever.
  static bool IsWayOut(const NavState& from, const NavState& to) {
    const bool goesOn = from.At.Domain == NavDomain::Title ? from.At != to.At || from.Phase != to.Phase
                                                           : ChainPoint(from.At) != ChainPoint(to.At);
    return goesOn || to.Phase == NavPhase::Stopped;
  }

  // Whether a viewer is waited for.
  [[nodiscard]] bool Waits(const NavState& state) const {
    if (PageAt(walk_.Disc(), state) != nullptr) {
      return true;
    }
    const bool isStill = state.Phase == NavPhase::CellStill || state.Phase == NavPhase::ChainStill;
    return isStill && (state.At.Domain != NavDomain::Title || StandsForEver(state));
  }

  // In a still that no time ends.
  [[nodiscard]] bool StandsForEver(const NavState& state) const {
    const NavCell* cell = CellAt(walk_.Disc(), state);
    const NavChain* chain = ChainAt(walk_.Disc(), state.At, walk_.Language());
    return (state.Phase == NavPhase::CellStill && cell != nullptr && cell->StillTime == StillForEver) ||
           (state.Phase == NavPhase::ChainStill && chain != nullptr && chain->StillTime == StillForEver);
  }

  // States from which no way leads on.
  void Traps() {
    const std::size_t count = walk_.Count();
    std::vector<bool> leaves(count);
    std::vector<std::vector<std::uint32_t>> into(count);
    std::vector<std::uint32_t> open;
    for (const NavWalk::Edge& edge : walk_.Edges()) {
      if (!IsWayOut(walk_.StateOf(edge.From), walk_.StateOf(edge.To))) {
        into[edge.To].push_back(edge.From);
      } else if (!leaves[edge.From]) {
        leaves[edge.From] = true;
        open.push_back(edge.From);
      }
    }
    while (!open.empty()) {
      const std::uint32_t node = open.back();
      open.pop_back();
      for (const std::uint32_t from : into[node]) {
        if (!leaves[from]) {
          leaves[from] = true;
          open.push_back(from);
        }
      }
    }
    std::set<NavPoint> told;
    for (std::size_t node = 0; walk_.IsWhole() && node < count; ++node) {
      const NavState& state = walk_.StateOf(node);
      if (Waits(state) && !leaves[node] && told.insert(ChainPoint(state.At)).second) {
        Add(Kind::PageTrap, state.At, walk_.MomentAt(node));
      }
    }
  }

  // Pages that stand for ever when their buttons have ended.
  void EndedButtons() {
    std::set<NavPoint> told;
    for (std::size_t node = 0; node < walk_.Count(); ++node) {
      const NavState& state = walk_.StateOf(node);
      const NavCell* cell = CellAt(walk_.Disc(), state);
      const bool hadButtons = cell != nullptr && !cell->Pages.empty();
      if (hadButtons && StandsForEver(state) && PageAt(walk_.Disc(), state) == nullptr &&
          told.insert(state.At).second) {
        Add(Kind::ButtonsEnd, state.At, walk_.MomentAt(node));
      }
    }
  }

  void Stops() {
    for (const auto& [at, moment] : walk_.Stops()) {
      NavFinding& finding = Add(Kind::DiscStops, at, moment);
      finding.Number = moment.After.Registers.Of(Sprm::Title);
    }
    // An Exit before anything has played is hardly meant.
    bool isBlack = walk_.Count() > 0 && walk_.StateOf(0).Stop == NavStop::Exit;
    for (std::size_t node = 0; isBlack && node < walk_.Count(); ++node) {
      isBlack = walk_.StateOf(node).Phase == NavPhase::Stopped;
    }
    if (isBlack) {
      Add(Kind::DiscStops, walk_.StateOf(0).At, walk_.MomentAt(0));
    }
  }

  void Streams() {
    std::set<std::pair<NavCommandAt, int>> told;
    for (const auto& [chosen, moment] : walk_.MissingStreams()) {
      const auto& [command, chain, stream] = chosen;
      // It is meant for a title that has it, or told of another that has it not.
      if (walk_.Meets(command, stream) || !told.insert({command, stream}).second) {
        continue;
      }
      const bool isAudio = stream < FirstSubpicture;
      NavFinding& finding =
          AddCommand(isAudio ? Kind::AudioMissing : Kind::SubpictureMissing, command, moment);
      finding.Number = isAudio ? stream : stream - FirstSubpicture;
      finding.Title = moment.After.Registers.Of(Sprm::Title);
      finding.At = chain;
    }
  }

  const NavWalk& walk_;
  std::vector<NavFinding>& findings_;
  std::uint16_t language_;
};

std::vector<std::uint16_t> LanguagesOf(const NavDisc& disc) {
  std::vector<std::uint16_t> languages;
  const auto add = [&languages](const std::vector<NavMenus>& units) {
    for (const NavMenus& unit : units) {
      if (std::ranges::find(languages, unit.Language) == languages.end()) {
        languages.push_back(unit.Language);
      }
    }
  };
  add(disc.Menus);
  for (const NavSet& set : disc.Sets) {
    add(set.Menus);
  }
  if (languages.empty()) {
    languages.push_back(NoLanguage);
  }
  return languages;
}

// Of equal findings in several languages on what all languages share, the first is enough.
void OnceEach(std::vector<NavFinding>& findings) {
  std::set<std::tuple<Kind, std::string, NavPoint, int, std::optional<NavCommandAt>>> told;
  std::erase_if(findings, [&told](const NavFinding& finding) {
    const bool menu = finding.At.Domain == NavDomain::ManagerMenu || finding.At.Domain == NavDomain::SetMenu;
    const std::string name =
        menu && finding.Name.empty() ? fmt::format("{}", finding.Language) : finding.Name;
    return !told.insert({finding.What, name, finding.At, finding.Number, finding.Command}).second;
  });
}

}  // namespace

NavSurvey SurveyOf(const NavDisc& disc, const NavBounds& bounds) {
  NavSurvey survey;
  NavWalks walks;
  NavBounds left = bounds;
  for (const std::uint16_t language : LanguagesOf(disc)) {
    const NavWalk& walk = *walks.emplace_back(std::make_unique<NavWalk>(disc, language, left));
    left.Nodes -= std::min(left.Nodes, walk.Count());
    left.Steps -= std::min(left.Steps, walk.Steps());
    WalkJudge(walk, survey.Findings, walks.size() > 1).Judge();
    survey.States += walk.Count();
    survey.IsWhole = survey.IsWhole && walk.IsWhole();
  }
  // Of a disc that was not walked to its end nobody can say what is not reached; where a faulty command stops
  // it as it goes in, that is said.
  const auto starts = [](const auto& walk) {
    return walk->Count() > 0 && walk->StateOf(0).Stop != NavStop::Loop &&
           walk->StateOf(0).Stop != NavStop::Missing;
  };
  if (survey.IsWhole && std::ranges::all_of(walks, starts)) {
    JudgeReach(disc, walks, survey.Findings);
  }
  OnceEach(survey.Findings);
  survey.Map = MapOf(walks);
  return survey;
}

}  // namespace quorvelant
