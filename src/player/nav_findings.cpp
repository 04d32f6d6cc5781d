#include "player/nav_findings.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <set>

#include "player/nav_lookup.h"

namespace quorvelant {

namespace {

constexpr std::uint16_t NoLanguage = 0x656E;  // of a disc without menus: English
constexpr std::uint32_t AudioForbidden = 1U << 20U;
constexpr std::uint32_t SubpictureForbidden = 1U << 21U;
constexpr int FirstSubpicture = 100;

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

NavPoint ChainPoint(NavPoint at) {
  at.Program = at.Cell = 0;
  return at;
}

// The findings of one language.
class WalkJudge {
 public:
  WalkJudge(const NavWalk& walk, std::vector<NavFinding>& findings) : walk_(walk), findings_(findings) {}

  void Judge() {
    Targets();
    Loops();
    Buttons();
    Traps();
    Stops();
    Streams();
  }

 private:
  std::string WayOf(const NavMoment& moment) { return WayWords(walk_.WayTo(moment)); }

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
      const bool leads = facts.Lead.LeavesList() && facts.Lead.What != NavLead::Kind::NoLink &&
                         facts.Lead.What != NavLead::Kind::Unknown;
      // What sets a register may set it to what it is.
      if (facts.Writes == 0 && (!leads || walk_.IsWhole())) {
        AddCommand(Kind::ButtonIdle, at, activation.First);
      }
    }
    for (const auto& [page, moment] : walk_.Pages()) {
      const NavPage* shown = PageAt(walk_.Disc(), moment.After);
      if (shown != nullptr && !shown->Shows) {
        Add(Kind::ButtonsHidden, page.At, moment);
      }
    }
  }

  // States from which no way leads out of their chain.
  void Traps() {
    const std::size_t count = walk_.Count();
    std::vector<bool> leaves(count);
    std::vector<std::vector<std::uint32_t>> into(count);
    std::vector<std::uint32_t> open;
    for (const NavWalk::Edge& edge : walk_.Edges()) {
      const NavState& from = walk_.StateOf(edge.From);
      const NavState& to = walk_.StateOf(edge.To);
      const bool isOut = ChainPoint(from.At) != ChainPoint(to.At) || to.Phase == NavPhase::Stopped;
      if (!isOut) {
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
      const bool isPage = state.Phase != NavPhase::Stopped && state.Page != 0;
      if (isPage && !leaves[node] && told.insert(ChainPoint(state.At)).second) {
        Add(Kind::PageTrap, state.At, walk_.MomentAt(node));
      }
    }
  }

  void Stops() {
    for (const auto& [at, moment] : walk_.Stops()) {
      NavFinding& finding = Add(Kind::DiscStops, at, moment);
      finding.Number = moment.After.Registers.Of(Sprm::Title);
    }
  }

  void Streams() {
    for (const auto& [chosen, moment] : walk_.MissingStreams()) {
      const auto& [command, chain, stream] = chosen;
      if (walk_.Meets(command, stream)) {  // it is meant for a title that has it
        continue;
      }
      const bool isAudio = stream < FirstSubpicture;
      NavFinding& finding =
          AddCommand(isAudio ? Kind::AudioMissing : Kind::SubpictureMissing, command, moment);
      finding.Number = isAudio ? stream : stream - FirstSubpicture;
      finding.At = chain;
    }
  }

  const NavWalk& walk_;
  std::vector<NavFinding>& findings_;
};

using Walks = std::vector<std::unique_ptr<NavWalk>>;

// What no walk came to.
class ReachJudge {
 public:
  ReachJudge(const NavDisc& disc, const Walks& walks, std::vector<NavFinding>& findings)
      : disc_(disc), walks_(walks), findings_(findings) {}

  void Judge() {
    for (std::size_t i = 0; i < disc_.Titles.size(); ++i) {
      Title(i);
    }
    Menus();
    Keys();
  }

 private:
  void Add(Kind what, std::string name, const NavPoint& at, int number) {
    NavFinding& finding = findings_.emplace_back();
    finding.What = what;
    finding.Name = std::move(name);
    finding.At = at;
    finding.Number = number;
  }

  [[nodiscard]] bool Plays(const NavPoint& at, std::size_t cell) const {
    return std::ranges::any_of(walks_, [&](const auto& walk) {
      const std::size_t chain = walk->Chains().IndexOf(at);
      return chain != NavChains::None && walk->Plays(chain, cell);
    });
  }
  [[nodiscard]] bool PlaysAny(const NavPoint& at, const NavChain& chain) const {
    for (std::size_t cell = 1; cell <= chain.Cells.size(); ++cell) {
      if (Plays(at, cell)) {
        return true;
      }
    }
    return false;
  }

  static NavPoint TitlePoint(std::size_t set, std::size_t chain) {
    return {.Domain = NavDomain::Title,
            .Set = static_cast<std::uint8_t>(set),
            .Chain = static_cast<std::uint16_t>(chain),
            .Program = 0,
            .Cell = 0};
  }

  void Title(std::size_t index) {
    const NavTitle& title = disc_.Titles[index];
    const NavSet* set = SetOf(disc_, title.Set);
    if (set == nullptr || title.Number < 1 || title.Number > set->Parts.size()) {
      return;
    }
    const auto number = static_cast<int>(index + 1);
    std::set<std::size_t> chains;
    for (const NavPart& part : set->Parts[title.Number - 1U]) {
      if (part.Chain >= 1 && part.Chain <= set->Titles.size()) {
        chains.insert(part.Chain);
      }
    }
    const bool isReached = std::ranges::any_of(chains, [&](std::size_t chain) {
      return PlaysAny(TitlePoint(title.Set, chain), set->Titles[chain - 1]);
    });
    if (!isReached) {
      if (!chains.empty()) {
        Add(Kind::TitleUnreachable, title.Name, TitlePoint(title.Set, *chains.begin()), number);
      }
      return;
    }
    Parts(title, *set);
    Streams(title, *set, chains);
  }

  void Parts(const NavTitle& title, const NavSet& set) {
    int number = 0;
    for (const NavPart& part : set.Parts[title.Number - 1U]) {
      ++number;
      const bool isThere = part.Chain >= 1 && part.Chain <= set.Titles.size() && part.Program >= 1 &&
                           part.Program <= set.Titles[part.Chain - 1U].Programs.size();
      if (!isThere) {
        continue;
      }
      const NavChain& chain = set.Titles[part.Chain - 1U];
      const std::size_t cell = chain.Programs[part.Program - 1U];
      NavPoint at = TitlePoint(title.Set, part.Chain);
      if (cell >= 1 && cell <= chain.Cells.size() && !Plays(at, cell)) {
        at.Cell = static_cast<std::uint8_t>(cell);
        Add(Kind::PartUnreachable, chain.Cells[cell - 1].Name, at, number);
      }
    }
  }

  // Without the keys for them, a stream other than the first is chosen by commands alone.
  void Streams(const NavTitle& title, const NavSet& set, const std::set<std::size_t>& chains) {
    std::set<int> chosen;
    for (const auto& walk : walks_) {
      if (!walk->ChosenStreams()) {
        return;
      }
      chosen.insert(walk->ChosenStreams()->begin(), walk->ChosenStreams()->end());
    }
    const auto forbids = [&](std::uint32_t key) {
      return std::ranges::all_of(
          chains, [&](std::size_t chain) { return (set.Titles[chain - 1].UserOperations & key) != 0; });
    };
    const NavChain& first = set.Titles[*chains.begin() - 1];
    const NavPoint at = TitlePoint(title.Set, *chains.begin());
    for (int i = 1; forbids(AudioForbidden) && std::cmp_less(i, first.Audio.size()); ++i) {
      if ((first.Audio.at(static_cast<std::size_t>(i)) & 0x8000U) != 0 && !chosen.contains(i)) {
        Add(Kind::AudioUnreachable, title.Name, at, i);
      }
    }
    for (int i = 0; forbids(SubpictureForbidden) && std::cmp_less(i, first.Subpictures.size()); ++i) {
      if ((first.Subpictures.at(static_cast<std::size_t>(i)) & 0x80000000U) != 0 &&
          !chosen.contains(FirstSubpicture + i)) {
        Add(Kind::SubpictureUnreachable, title.Name, at, i);
      }
    }
  }

  void Menus() {
    for (const auto& walk : walks_) {
      const NavChains& chains = walk->Chains();
      for (std::size_t i = 0; i < chains.All().size(); ++i) {
        const NavChains::Placed& placed = chains.All()[i];
        const bool isMenu =
            placed.Point.Domain == NavDomain::ManagerMenu || placed.Point.Domain == NavDomain::SetMenu;
        // A set without units of this language shows another's, which its own walk judges.
        if (isMenu && IsOwn(placed.Point, walk->Language())) {
          Menu(*walk, i, placed);
        }
      }
    }
  }

  [[nodiscard]] bool IsOwn(const NavPoint& point, std::uint16_t language) const {
    const NavSet* set = SetOf(disc_, point.Set);
    const auto& units = point.Domain == NavDomain::ManagerMenu ? disc_.Menus : set->Menus;
    const NavMenus* unit = MenusIn(units, language);
    return unit != nullptr && unit->Language == language;
  }

  void Menu(const NavWalk& walk, std::size_t index, const NavChains::Placed& placed) {
    const auto& cells = placed.Chain->Cells;
    bool any = false;
    for (std::size_t cell = 1; cell <= cells.size(); ++cell) {
      any = any || walk.Plays(index, cell);
    }
    if (!any && !cells.empty()) {
      Add(Kind::PageUnreachable, placed.Chain->Name, placed.Point, placed.Point.Chain);
      findings_.back().Language = walk.Language();
    }
    for (std::size_t cell = 1; any && cell <= cells.size(); ++cell) {
      if (!walk.Plays(index, cell) && !cells[cell - 1].Pages.empty()) {
        NavPoint at = placed.Point;
        at.Cell = static_cast<std::uint8_t>(cell);
        Add(Kind::PageUnreachable, cells[cell - 1].Name, at, placed.Point.Chain);
        findings_.back().Language = walk.Language();
      }
    }
  }

  void Keys() {
    const NavWalk& walk = *walks_.front();
    const NavPoint nowhere;
    std::set<std::uint8_t> sets;
    for (const NavTitle& title : disc_.Titles) {
      const NavSet* set = SetOf(disc_, title.Set);
      if (set == nullptr || !sets.insert(title.Set).second) {
        continue;
      }
      if (walk.Chains().EntryOf(nowhere, NavDomain::SetMenu, title.Set, RootMenuId) == NavChains::None) {
        Add(Kind::RootKeyDead, title.Name, TitlePoint(title.Set, 0), title.Set);
      }
    }
    if (!disc_.Titles.empty() &&
        walk.Chains().EntryOf(nowhere, NavDomain::ManagerMenu, 0, TitleMenuId) == NavChains::None) {
      Add(Kind::TitleKeyDead, disc_.FirstPlay ? disc_.FirstPlay->Name : std::string(), nowhere, 0);
    }
  }

  const NavDisc& disc_;
  const Walks& walks_;
  std::vector<NavFinding>& findings_;
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

void AddArrows(const NavChains& chains, std::size_t from, std::span<const NavCommand> commands,
               std::set<NavMapArrow>& arrows) {
  for (const NavCommand& command : commands) {
    const std::size_t to = chains.TargetOf(chains.All()[from].Point, LeadOf(command));
    if (to != NavChains::None && to != from) {
      arrows.insert({from, to});
    }
  }
}

NavMap MapOf(const NavWalk& walk) {
  NavMap map;
  std::set<NavMapArrow> arrows;
  const NavChains& chains = walk.Chains();
  for (std::size_t i = 0; i < chains.All().size(); ++i) {
    const NavChain& chain = *chains.All()[i].Chain;
    NavState state;
    state.At = chains.All()[i].Point;
    state.At.Cell = 1;
    state.Phase = NavPhase::Playing;
    state.Registers = FreshRegisters(walk.Language());
    const bool isTitle = state.At.Domain == NavDomain::Title;
    std::string words =
        isTitle ? fmt::format("set {}, title {}", state.At.Set, chain.Title) : PlaceWords(walk.Disc(), state);
    bool pages = false;
    for (const NavCell& cell : chain.Cells) {
      pages = pages || !cell.Pages.empty();
      for (const NavPage& page : cell.Pages) {
        for (const NavButton& button : page.Buttons) {
          AddArrows(chains, i, std::span(&button.Command, 1), arrows);
        }
      }
    }
    AddArrows(chains, i, chain.Pre, arrows);
    AddArrows(chains, i, chain.CellCommands, arrows);
    AddArrows(chains, i, chain.Post, arrows);
    const std::size_t next = chains.TargetOf(chains.All()[i].Point, {.What = NavLead::Kind::NextChain});
    if (next != NavChains::None) {
      arrows.insert({i, next});
    }
    map.Chains.push_back({.Name = chain.Name,
                          .At = chains.All()[i].Point,
                          .Words = std::move(words),
                          .Language = walk.Language(),
                          .IsReached = walk.Enters(i),
                          .HasPages = pages});
  }
  map.Arrows.assign(arrows.begin(), arrows.end());
  return map;
}

}  // namespace

NavSurvey SurveyOf(const NavDisc& disc, const NavBounds& bounds) {
  NavSurvey survey;
  Walks walks;
  for (const std::uint16_t language : LanguagesOf(disc)) {
    const NavWalk& walk = *walks.emplace_back(std::make_unique<NavWalk>(disc, language, bounds));
    WalkJudge(walk, survey.Findings).Judge();
    survey.States += walk.Count();
    survey.IsWhole = survey.IsWhole && walk.IsWhole();
  }
  // Of a disc that stops as it goes in, or that was not walked to its end, nobody can say what is not
  // reached.
  const auto starts = [](const auto& walk) {
    return walk->Count() > 0 && walk->StateOf(0).Phase != NavPhase::Stopped;
  };
  if (survey.IsWhole && std::ranges::all_of(walks, starts)) {
    ReachJudge(disc, walks, survey.Findings).Judge();
  }
  OnceEach(survey.Findings);
  survey.Map = MapOf(*walks.front());
  return survey;
}

}  // namespace quorvelant
